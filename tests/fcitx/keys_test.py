#!/usr/bin/python3
"""Types into a text field through fcitx5 and sees what the application and the candidate window get.

usage: keys_test.py BUILD-FOLDER
"""

import os
import sys

from application import FORMATTED_PREEDIT, PASSWORD, PREEDIT, SENSITIVE, InputMethod, TextField

OPEN = "Control+Alt+comma"
STANDARD = [("図", "○●"), ("図／星", "☆★"), ("矢印", "→←"), ("面", "□■△▲▽▼◎◇◆∞≠")]

TOP = "Symbols | *1 図  4  2 矢印  2  3 面  11 | "
SECOND = "Symbols | 1 図  4  *2 矢印  2  3 面  11 | "

# Name, and keys with what came of each; "-" is nothing, "typed" a key that went to the application.
SCRIPTS = [
    (
        "leaves the text as it was",
        [
            ("a", "typed"),
            (OPEN, TOP),
            ("Escape", "-"),
            ("b", "typed"),
            (OPEN, TOP),
            (OPEN, "-"),
            ("c", "typed"),
        ],
    ),
    (
        "goes into titles and back",
        [
            (OPEN, TOP),
            ("Down", SECOND),
            ("Right", "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Right", "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Left", SECOND),
            ("Up", TOP),
            ("Return", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("Return", "標準の記号／図／星 | *1 ☆  白星  2 ★  黒星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
            ("BackSpace", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("BackSpace", TOP),
            ("BackSpace", TOP),
        ],
    ),
    (
        "goes through pages",
        [
            (OPEN, TOP),
            ("3", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
            ("Down", "標準の記号／面 | 1 □  四角  *2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
            ("PageDown", "標準の記号／面 | <  *1 ∞  無限大  2 ≠  等号否定 | kuten 1-71  JIS 2167  Shift_JIS 8187  U+221E"),
            ("Up", "標準の記号／面 | 1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  *9 ◆  黒ひし形  > | kuten 2-1  JIS 2221  Shift_JIS 819F  U+25C6"),
            ("PageUp", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
            ("End", "標準の記号／面 | <  1 ∞  無限大  *2 ≠  等号否定 | kuten 1-66  JIS 2162  Shift_JIS 8182  U+2260"),
            ("Home", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
            ("PageDown", "標準の記号／面 | <  *1 ∞  無限大  2 ≠  等号否定 | kuten 1-71  JIS 2167  Shift_JIS 8187  U+221E"),
            ("5", "標準の記号／面 | <  *1 ∞  無限大  2 ≠  等号否定 | kuten 1-71  JIS 2167  Shift_JIS 8187  U+221E"),
            ("2", "<≠>"),
        ],
    ),
    (
        "goes to the neighbour",
        [
            (OPEN, TOP),
            ("1", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("Tab", "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Tab", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
            ("Tab", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("Shift+Tab", "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Shift+Tab", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
            ("Shift+Tab", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
        ],
    ),
    (
        "takes by number, by Return and by Space",
        [
            (OPEN, TOP),
            ("2", "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("space", "<→> 標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Down", "標準の記号／矢印 | 1 →  右矢印  *2 ←  左矢印 | kuten 2-11  JIS 222B  Shift_JIS 81A9  U+2190"),
            ("space", "<←> 標準の記号／矢印 | 1 →  右矢印  *2 ←  左矢印 | kuten 2-11  JIS 222B  Shift_JIS 81A9  U+2190"),
            ("1", "<→>"),
            ("2", "typed"),
            (OPEN, "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Left", "Symbols | 1 最近  2  2 図  4  *3 矢印  2  4 面  11 | "),
            ("Up", "Symbols | 1 最近  2  *2 図  4  3 矢印  2  4 面  11 | "),
            ("Up", "Symbols | *1 最近  2  2 図  4  3 矢印  2  4 面  11 | "),
            ("Right", "最近 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
            ("Down", "最近 | 1 →  右矢印  *2 ←  左矢印 | kuten 2-11  JIS 222B  Shift_JIS 81A9  U+2190"),
            ("Return", "<←>"),
            ("Return", "typed"),
        ],
    ),
    (
        "begins where it was left",
        [
            (OPEN, TOP),
            ("1", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("1", "標準の記号／図／星 | *1 ☆  白星  2 ★  黒星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
            ("Down", "標準の記号／図／星 | 1 ☆  白星  *2 ★  黒星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
            ("Escape", "-"),
            (OPEN, "標準の記号／図／星 | 1 ☆  白星  *2 ★  黒星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
            ("Left", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
            ("Left", TOP),
            ("1", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
        ],
    ),
    (
        "leaves other keys to the application",
        [
            ("Shift_L", "typed"),
            ("F5", "typed"),
            ("Return", "typed"),
            (OPEN, TOP),
            ("Shift_L", "typed Symbols | *1 図  4  2 矢印  2  3 面  11 | "),
            ("F5", TOP),
            ("Control+c", "typed Symbols | *1 図  4  2 矢印  2  3 面  11 | "),
            ("Alt+Left", "typed Symbols | *1 図  4  2 矢印  2  3 面  11 | "),
            ("9", TOP),
            ("0", TOP),
            ("space", TOP),
            ("Escape", "-"),
            ("Left", "typed"),
        ],
    ),
]


def check(name, rows, field):
    for number, (key, expected) in enumerate(rows):
        got = str(field.press(key))
        if got == expected:
            continue
        before = " ".join(key for key, _ in rows[:number])
        raise AssertionError(f"{name}: {key} behind '{before}'\n  expected {expected}\n  got      {got}")


def check_scripts(build):
    for name, rows in SCRIPTS:
        with InputMethod(build) as fcitx:
            fcitx.put("program", "default.kig", "標準の記号", STANDARD)
            check(name, rows, TextField(fcitx))


def check_fields(build):
    """Where it opens, and what closes it."""
    with InputMethod(build) as fcitx:
        fcitx.put("program", "default.kig", "標準の記号", STANDARD)
        check("not in a password field", [(OPEN, "typed"), ("1", "typed")], TextField(fcitx, PREEDIT | PASSWORD))
        sensitive = TextField(fcitx, PREEDIT | SENSITIVE)
        arrows = "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"
        check("in a sensitive field", [(OPEN, TOP), ("2", arrows), ("1", "<→>")], sensitive)
        field = TextField(fcitx)
        check("nothing was noted", [(OPEN, arrows), ("Left", SECOND)], field)
        assert str(field.focus(False)) == "-", "the focus was lost"
        field.focus(True)
        check("closed with the focus", [("1", "typed"), (OPEN, SECOND)], field)
        other = TextField(fcitx)
        check("in another field", [("a", "typed"), (OPEN, SECOND)], other)
        other.set_capabilities(PREEDIT | PASSWORD)
        check("a field that becomes one for passwords", [("1", "typed"), (OPEN, "typed")], other)
        field.focus(True)
        check("before the field goes", [(OPEN, SECOND)], field)
        field.destroy()
        check("when the field is gone", [("a", "typed"), (OPEN, SECOND)], TextField(fcitx))


def check_compositions(build):
    """What the engine composes is committed before it opens, and only once."""
    with InputMethod(build) as fcitx:
        fcitx.put("program", "default.kig", "標準の記号", STANDARD)
        for capabilities in (PREEDIT | FORMATTED_PREEDIT, 0):
            field = TextField(fcitx, capabilities)
            for key in "Control+Alt+h h e l".split():
                got = field.press(key)
            assert "hel" in (got.preedit, got.composed), got
            check("a composition", [(OPEN, "<hel> " + TOP), ("Escape", "-"), ("Control+Alt+h", "-"), ("a", "typed")], field)


def main():
    build = os.path.abspath(sys.argv[1])
    for test in (check_scripts, check_fields, check_compositions):
        test(build)
        print(test.__name__, "passes")


if __name__ == "__main__":
    main()
