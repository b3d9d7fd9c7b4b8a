#!/usr/bin/python3
"""Types into a text field through fcitx5 and sees what the application and the candidate window get.

usage: keys_test.py FOLDER-OF-MODULE
"""

import dataclasses
import pathlib

from application import FORMATTED_PREEDIT, PASSWORD, PREEDIT, SENSITIVE, SURROUNDING, InputMethod, TextField, run_checks
from dbus import Dictionary

OPEN = "Control+Alt+comma"
STANDARD = [("図", "○●"), ("図／星", "☆★"), ("矢印", "→←"), ("面", "□■△▲▽▼◎◇◆∞≠")]

TOP = "Symbols | *1 図  4  2 矢印  2  3 面  11 | "
ARROWS = "標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"
SECOND = "Symbols | 1 図  4  *2 矢印  2  3 面  11 | "

# Name, and keys with what came of them, shown as behind the last; "-" is nothing, "typed" a key that went to the application.
SCRIPTS = {
    "leaves the text as it was": [
        (OPEN, TOP),
        ("Escape", "-"),
        ("b", "typed"),
        (OPEN + " " + OPEN, "-"),
        ("c", "typed"),
    ],
    "goes into titles and back": [
        (OPEN + " Down", SECOND),
        ("Right Right", ARROWS),
        ("Left", SECOND),
        ("Up", TOP),
        ("Return", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
        ("Return", "標準の記号／図／星 | *1 ☆  白星  2 ★  黒星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
        ("BackSpace", "標準の記号／図 | *1 星  2  2 ○  丸印  3 ●  黒丸 | "),
        ("BackSpace BackSpace", TOP),
    ],
    "goes through pages": [
        (OPEN + " 3", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
        ("Down", "標準の記号／面 | 1 □  四角  *2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
        ("PageDown", "標準の記号／面 | <  *1 ∞  無限大  2 ≠  等号否定 | kuten 1-71  JIS 2167  Shift_JIS 8187  U+221E"),
        ("Up", "標準の記号／面 | 1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  *9 ◆  黒ひし形  > | kuten 2-1  JIS 2221  Shift_JIS 819F  U+25C6"),
        ("PageUp", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
        ("End", "標準の記号／面 | <  1 ∞  無限大  *2 ≠  等号否定 | kuten 1-66  JIS 2162  Shift_JIS 8182  U+2260"),
        ("Home", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
        ("PageDown 5", "標準の記号／面 | <  *1 ∞  無限大  2 ≠  等号否定 | kuten 1-71  JIS 2167  Shift_JIS 8187  U+221E"),
        ("2", "<≠>"),
    ],
    "goes to the neighbour": [
        (OPEN + " 1 Tab", ARROWS),
        ("Tab", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
        ("Shift+ISO_Left_Tab Shift+ISO_Left_Tab Shift+ISO_Left_Tab", "標準の記号／面 | *1 □  四角  2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-2  JIS 2222  Shift_JIS 81A0  U+25A1"),
    ],
    "takes by number, by Return and by Space": [
        (OPEN + " 2 space", "<→> 標準の記号／矢印 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("Down space", "<←> 標準の記号／矢印 | 1 →  右矢印  *2 ←  左矢印 | kuten 2-11  JIS 222B  Shift_JIS 81A9  U+2190"),
        ("1", "<→>"),
        ("2", "typed"),
        (OPEN, ARROWS),
        ("Left", "Symbols | 1 最近  2  2 図  4  *3 矢印  2  4 面  11 | "),
        ("Up Up Right", "最近 | *1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("Down Return", "<←>"),
        ("Return", "typed"),
    ],
    "takes a bracket with its partner": [
        (OPEN + " 「 Shift+Return", "<「」>"),
        (OPEN + " 』 Shift+Return", "<『』>"),
        (OPEN + " → Shift+Return", "<→>"),
        (OPEN + " 「 Return", "<「>"),
        (OPEN + " Home Shift+Return", "最近 | *1 「  始めかぎ括弧  2 →  右矢印  3 』  終わり二重かぎ括弧 | kuten 1-54  JIS 2156  Shift_JIS 8175  U+300C"),
    ],
    "begins where it was left": [
        (OPEN + " 1 1 Down", "標準の記号／図／星 | 1 ☆  白星  *2 ★  黒星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
        ("Escape", "-"),
        (OPEN, "標準の記号／図／星 | 1 ☆  白星  *2 ★  黒星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
        ("Left Left", TOP),
    ],
    "leaves other keys to the application": [
        ("F5", "typed"),
        (OPEN + " Shift_L", "typed Symbols | *1 図  4  2 矢印  2  3 面  11 | "),
        ("F5 Shift+Down Shift+space Shift+F5", TOP),
        ("Control+c", "typed"),
        (OPEN + " Alt+Left", "typed"),
        ("Right", "typed"),
        (OPEN + " 9 0 space", TOP),
        ("Escape", "-"),
        ("Left", "typed"),
    ],
    "searches what is typed": [
        (OPEN + " 2 y", "[y] Search  3 | *1 ｙ  英小文字y  2 →  右矢印  標準の記号／矢印  3 ←  左矢印  標準の記号／矢印 | kuten 3-89  JIS 2379  Shift_JIS 8299  U+FF59"),
        ("a j", "[yaj] Search  2 | *1 →  右矢印  標準の記号／矢印  2 ←  左矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("i", "[yaji  やじ] Search  2 | *1 →  右矢印  標準の記号／矢印  2 ←  左矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("BackSpace", "[yaj] Search  2 | *1 →  右矢印  標準の記号／矢印  2 ←  左矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("Escape", ARROWS),
        ("h o s h i", "[hoshi  ほし] Search  2 | *1 ☆  白星  標準の記号／図／星  2 ★  黒星  標準の記号／図／星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
        ("Down", "[hoshi  ほし] Search  2 | 1 ☆  白星  標準の記号／図／星  *2 ★  黒星  標準の記号／図／星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
        ("Return", "<★>"),
    ],
    "shows where it stands": [
        (OPEN + " k u r o s h i k a k u", "[kuroshikaku  くろしかく] Search  1 | *1 ■  黒四角  標準の記号／面 | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
        ("Right", "標準の記号／面 | 1 □  四角  *2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
        ("m a r u", "[maru  まる] Search  3 | *1 ○  丸印  標準の記号／図  2 ●  黒丸  標準の記号／図  3 ◎  二重丸  標準の記号／面 | kuten 1-91  JIS 217B  Shift_JIS 819B  U+25CB"),
        ("space", "<○> [maru  まる] Search  3 | *1 ○  丸印  標準の記号／図  2 ●  黒丸  標準の記号／図  3 ◎  二重丸  標準の記号／面 | kuten 1-91  JIS 217B  Shift_JIS 819B  U+25CB"),
        ("Left", "標準の記号／面 | 1 □  四角  *2 ■  黒四角  3 △  三角  4 ▲  黒三角  5 ▽  逆三角  6 ▼  逆黒三角  7 ◎  二重丸  8 ◇  ひし形  9 ◆  黒ひし形  > | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
        ("Escape", "-"),
    ],
    "searches kana, full-width letters, the symbol itself": [
        (OPEN + " ほ し", "[ほし] Search  2 | *1 ☆  白星  標準の記号／図／星  2 ★  黒星  標準の記号／図／星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
        ("BackSpace BackSpace", TOP),
        ("Shift+Ｙ ａ ｊ ｉ", "[Yaji  やじ] Search  2 | *1 →  右矢印  標準の記号／矢印  2 ←  左矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("＊", "[Yaji*] Search  0  nothing is found |  | "),
        ("Escape", TOP),
        ("→", "[→] Search  1 | *1 →  右矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("１", "<→>"),
    ],
    "takes digits into codes": [
        (OPEN + " Shift+U Shift+plus 2 6", "[U+26] Search  1 | *1 ＆  アンパサンド | kuten 1-85  JIS 2175  Shift_JIS 8195  U+FF06"),
        ("0 6", "[U+2606] Search  1 | *1 ☆  白星  標準の記号／図／星 | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
        ("1", "<☆>"),
        (OPEN + " k : 2 - 1", "[k:2-1] Search  1 | *1 ◆  黒ひし形  標準の記号／面 | kuten 2-1  JIS 2221  Shift_JIS 819F  U+25C6"),
        ("0", "[k:2-10] Search  1 | *1 →  右矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("1", "<→>"),
        (OPEN + " k : 2 - 3", "[k:2-3] Search  1 | *1 ■  黒四角  標準の記号／面 | kuten 2-3  JIS 2223  Shift_JIS 81A1  U+25A0"),
        ("Alt+1", "<■>"),
        (OPEN + " j : 2 1 7", "[j:217] Search  0  nothing is found |  | "),
        ("A", "[j:217A] Search  1 | *1 ★  黒星  標準の記号／図／星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
        ("2", "[j:217A] Search  1 | *1 ★  黒星  標準の記号／図／星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"),
        (OPEN + " " + OPEN + " h o s h i 2", "<★>"),
    ],
    "tells what was meant": [
        (OPEN + " y a j i r u s u", "[yajirusu  やじるす] Search  0  meant やじるし? |  | "),
        ("Return space 1", "[yajirusu  やじるす] Search  0 |  | "),
    ],
}


def with_set(root, blocks=tuple(STANDARD), **settings):
    """fcitx5 with a standard set."""
    fcitx = InputMethod(root, **settings)
    fcitx.put("program", "default.kig", "標準の記号", blocks)
    return fcitx


def check(name, rows, field):
    for number, (keys, expected) in enumerate(rows):
        committed = ""
        for key in keys.split():
            got = field.press(key)
            committed += got.committed
        got.committed = committed
        if str(got) == expected:
            continue
        before = " ".join(keys for keys, _ in rows[:number])
        raise AssertionError(f"{name}: {keys} behind '{before}'\n  expected {expected}\n  got      {got}")


def check_settled(rows, fcitx, field):
    """The same behind what is done beside the keys, without what they committed."""
    for keys, expected in rows:
        for key in keys.split():
            field.press(key)
        fcitx.wait_for_notes()
        field.settle()
        shown = dataclasses.replace(field.got, handled=True)
        assert str(shown) == expected, f"{keys}:\n  expected {expected}\n  got      {shown}"


def check_scripts(root):
    for name, rows in SCRIPTS.items():
        with with_set(root) as fcitx:
            check(name, rows, TextField(fcitx))


def check_fields(root):
    """Where it opens, and what closes it."""
    with with_set(root) as fcitx:
        check("not in a password field", [(OPEN, "typed"), ("1", "typed")], TextField(fcitx, PREEDIT | PASSWORD))
        sensitive = TextField(fcitx, PREEDIT | SENSITIVE)
        check("in a sensitive field", [(OPEN, TOP), ("2", ARROWS), ("1", "<→>")], sensitive)
        field = TextField(fcitx)
        check("nothing was noted", [(OPEN, ARROWS), ("Left", SECOND)], field)
        assert str(field.focus(False)) == "-", "the focus was lost"
        field.focus(True)
        check("closed with the focus", [("1", "typed"), (OPEN, SECOND)], field)
        check("a search", [("→", "[→] Search  1 | *1 →  右矢印  標準の記号／矢印 | " + ARROWS.split(" | ")[2])], field)
        assert str(field.focus(False)) == "-", "what was searched for is not committed"
        other = TextField(fcitx)
        check("in another field", [("a", "typed"), (OPEN, SECOND)], other)
        other.set_capabilities(PREEDIT | PASSWORD)
        check("a field that becomes one for passwords", [("1", "typed"), (OPEN, "typed")], other)
        field.focus(True)
        check("before the field goes", [(OPEN, SECOND)], field)
        field.destroy()
        check("when the field is gone", [("a", "typed"), (OPEN, SECOND)], TextField(fcitx))


def check_clicks(root):
    with with_set(root) as fcitx:
        field = TextField(fcitx)
        field.press(OPEN)
        clicks = [
            (("SelectCandidate", 2), ("□", "")),
            (("NextPage",), ("∞", "")),
            (("PrevPage",), ("□", "")),
            (("NextPage",), ("∞", "")),
            (("SelectCandidate", 1), ("", "≠")),
        ]
        for click, (first, committed) in clicks:
            got = field.click(*click)
            shown = got.candidates[0][1].split()[0] if got.candidates else ""
            assert (shown, got.committed) == (first, committed), (click, got)


def check_plain_fields(root):
    """An application that shows no preedit has what is searched for in the window."""
    with with_set(root) as fcitx:
        field = TextField(fcitx, 0)
        assert field.press(OPEN) and field.press("y").composed == "y" and field.got.upper == "Search  3  "
        assert field.press("1").committed == "ｙ" and not field.got.composed


def check_compositions(root):
    """What the engine composes is committed before it opens, and only once."""
    with with_set(root) as fcitx:
        for capabilities in (PREEDIT | FORMATTED_PREEDIT, 0):
            field = TextField(fcitx, capabilities)
            for key in "Control+Alt+h h e l".split():
                got = field.press(key)
            assert "hel" in (got.preedit, got.composed), got
            check("a composition", [(OPEN, "<hel> " + TOP), ("Escape", "-"), ("Control+Alt+h", "-"), ("a", "typed")], field)


def check_japanese_engine(root):
    """Beside SKK: what it composes goes in without its marks, and it goes on as it was."""
    if not pathlib.Path("/usr/share/fcitx5/addon/skk.conf").exists():
        return print("skipped: no fcitx5-skk")
    rows = [
        ("k a Shift+K a n j i", "<か> [▽かんじ]"),
        (OPEN, "<かんじ> " + TOP),
        ("2", ARROWS),
        ("space", "<→> " + ARROWS),
        ("Escape k i", "<き>"),
        ("Shift+K a n j i space", "[▼漢字]"),
        (OPEN + " Escape", "<漢字>"),
        ("Shift+O k u Shift+R", "[▽おく*r]"),
        (OPEN + " Escape", "<おくr>"),
        ("k " + OPEN, "<k> " + ARROWS),
        ("y a j i", "[yaji  やじ] Search  2 | *1 →  右矢印  標準の記号／矢印  2 ←  左矢印  標準の記号／矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"),
        ("Return a i", "<→あい>"),
        ("Shift+K a n j i", "[▽かんじ]"),
        ("Control+j", "<かんじ>"),
        (f"q a {OPEN} Escape a q", "<アア>"),
    ]
    with with_set(root, engine="skk") as fcitx:
        field = TextField(fcitx)
        check("SKK", rows, field)
        field.press(OPEN)
        assert fcitx.controller().CurrentInputMethod() == "skk"
        check("another engine", [("Control+space", "-"), ("a", "typed")], field)


def check_selections(root):
    """A symbol that is selected is looked for; what was typed does not take its place."""
    minus = '[−] Search  2   | *1 −  負符号  標準の記号／線  2 ‐  ハイフン  標準の記号／線 | kuten 1-61  JIS 215D  Shift_JIS 817C  U+2212'
    selections = [
        ("a symbol", "a−b", 1, 2, "", minus),
        ("backwards", "a−b", 2, 1, "", minus),
        ("no symbol", "a−b", 0, 1, "", "Symbols | *1 線  2 | "),
        ("several", "−−", 0, 2, "", "Symbols | *1 線  2 | "),
        ("nothing", "a−b", 1, 1, "", "Symbols | *1 線  2 | "),
        ("typed anew", "a−b", 1, 2, " −", minus),
        ("search beside it", "−−", 0, 2, " −", minus),
    ]
    for name, text, anchor, cursor, keys, expected in selections:
        with with_set(root, [("線", "−‐")]) as fcitx:
            field = TextField(fcitx, PREEDIT | FORMATTED_PREEDIT | SURROUNDING)
            field.select(text, anchor, cursor)
            check(name, [(OPEN + keys, expected)], field)
            assert not field.got.preedit, f"{name}: takes the place of what is selected"


def check_favourites(root):
    """Control+D, which no program gets while it is open: its edit is made beside the keys."""
    arrows = "*1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"
    hoshi = "1 ☆  白星  標準の記号／図／星  *2 ★  黒星  標準の記号／図／星 | kuten 1-90  JIS 217A  Shift_JIS 819A  U+2605"
    rows = [
        (OPEN + " Control+d", "Symbols  there is no symbol under the cursor | *1 図  4  2 矢印  2  3 面  11 | "),
        ("2 Control+d", "標準の記号／矢印  → is in お気に入り | " + arrows),
        ("h o s h i Down Control+d", "[hoshi  ほし] Search  2  ★ is in お気に入り | " + hoshi),
        ("Control+d", "[hoshi  ほし] Search  2  ★ is no longer in お気に入り | " + hoshi),
        ("Escape Left", "Symbols | 1 お気に入り  1  2 図  4  *3 矢印  2  4 面  11 | "),
        ("1 1 Control+d", "お気に入り／記号  → is no longer in お気に入り |  | "),
        ("Control+d Escape", "-"),
    ]
    with with_set(root) as fcitx:
        field = TextField(fcitx)
        check_settled(rows, fcitx, field)
        own = next((fcitx.folder / "common").glob("*.kig"))
        own.write_bytes("お気に入り".encode("euc_jp"))
        field.press(OPEN)
        assert field.press("→").handled and field.press("Control+d").handled
        fcitx.wait_for_notes()
        field.settle()
        told = f"{own} is the file of the お気に入り, and is no symbol file"
        assert told in field.got.upper and told in fcitx.told(), field.got


def check_settings(root):
    """What fcitx5's settings window shows and sets, at once and at the next start; in Japanese too."""
    address = "fcitx://config/addon/kigou"
    with with_set(root, config="PageSize=2\nShowCodes=False\n", LANGUAGE="ja") as fcitx:
        field = TextField(fcitx)
        check("read from the file", [(OPEN, "記号 | *1 図  4  2 矢印  2  > | "), ("2 y", "[y] 検索  3 | *1 ｙ  英小文字y  2 →  右矢印  標準の記号／矢印  > | ")], field)
        values, described = fcitx.controller().GetConfig(address)
        assert (values["PageSize"], values["RecentPicks"], values["ShowCodes"]) == ("2", "100", "False"), values
        assert [str(option[2]) for option in described[0][1]][1] == "一ページの項目数", described
        keys = Dictionary({"0": "Control+period", "1": "F5"}, signature="sv")
        fcitx.controller().SetConfig(address, Dictionary({"TriggerKey": keys, "PageSize": "10", "ShowCodes": "True", "RecentPicks": "1"}, signature="sv"))
        rows = [("a", "typed"), (OPEN, "typed"), ("Control+period F5", "-"), ("F5 Left 3 0", "<∞>"), ("F5 1", "<□>")]
        check("set while it runs", rows, field)
        field.press("F5")
        assert field.press("Left").candidates[0] == ("1 ", "最近  1"), field.got
        assert "kuten" not in str(field.press("3")) and "区点 2-10 " in str(field.got), field.got
        fcitx.put("common", "a.kig", "い", [("矢", "→")])
        fcitx.put("common", "b.kig", "ろ", [("矢", "→")])
        (fcitx.folder / "common/c.kig").write_bytes(b"spoilt")
        hidden = Dictionary({"0": "ろ", "1": "c.kig", "2": "default.kig"}, signature="sv")
        fcitx.controller().SetConfig(address, Dictionary({"HiddenFiles": hidden}, signature="sv"))
        check("without some files", [("F5", "記号  タイトル「標準の記号／矢印」はありません | *1 最近  1  2 い  1 | "), ("F5 F5", "記号 | *1 最近  1  2 い  1 | ")], field)
        written = (fcitx.folder / "config/fcitx5/conf/kigou.conf").read_text()
        assert "PageSize=10\n" in written and "1=F5\n" in written and "1=c.kig\n" in written, written


def check_installed_set(root):
    """The standard set is that of the module's own prefix when no variable names another."""
    with InputMethod(root, KIGOU_PROGRAM_DIR="") as fcitx:
        got = TextField(fcitx).press(OPEN)
        assert got.candidates[0] == ("1 ", "記述記号  37"), got


if __name__ == "__main__":
    run_checks(check_scripts, check_fields, check_clicks, check_plain_fields, check_compositions, check_japanese_engine, check_selections, check_favourites, check_settings, check_installed_set)
