#!/usr/bin/python3
"""Drives the browser through a pseudo-terminal and looks at what an emulator shows.

usage: browser_test.py FOLDER-OF-KIGOU

Each script of keys is run on terminals that draw symbols such as → one cell wide and on such
that draw them two cells wide: both must show the same in every cell.
"""

import os
import select
import signal
import sys
import tempfile
import time

from terminal import Person

DOWN, RIGHT, LEFT = "\x1b[B", "\x1b[C", "\x1b[D"
ENTER, ESC, TAB, BACKSPACE = "\r", "\x1b", "\t", "\x7f"
F5, F7 = "\x1b[15~", "\x1b[18~"
CTRL_C, CTRL_R = "\x03", "\x12"

# Name, keys with what must appear before the next, what the browser gives, exit status.
PICKING = [
    ("takes a symbol", [("記述記号", TAB + TAB), ("U+3000", DOWN), ("U+3001", ENTER)], "、", 0),
    (
        "gathers symbols",
        [("記述記号", TAB + TAB), ("U+3000", DOWN), ("U+3001", " "), ("taken: 、", DOWN + " "), ("taken: 、。", "q")],
        "、。",
        0,
    ),
    ("finds by romaji", [("記述記号", "/yaji"), ("右矢印", " "), ("taken: →", ESC), ("arrows move", "q")], "→", 0),
    (
        "goes to what it finds",
        [("記述記号", "/せっし"), ("セ氏度記号", ENTER), ("標準の記号／単位・通貨／単位", ENTER)],
        "℃",
        0,
    ),
    (
        "takes full-width keys",
        [("記述記号", TAB + TAB), ("U+3000", "ｊ"), ("U+3001", "　"), ("taken: 、", "ｑ")],
        "、",
        0,
    ),
    ("takes by number", [("記述記号", TAB + TAB), ("U+3000", "3")], "。", 0),
    ("leaves with nothing", [("記述記号", "q")], "", 1),
    ("forgets on Ctrl+C", [("記述記号", TAB + TAB), ("U+3000", " "), ("taken:", CTRL_C)], "", 1),
    ("shows its keys", [("記述記号", "?"), ("any key: more", "x"), ("any key: back", "x"), ("記述記号", "q")], "", 1),
    ("asks what was meant", [("記述記号", "/yajirusu"), ("meant やじるし?", ESC), ("arrows move", "q")], "", 1),
]

SIZES = [(24, 80), (10, 40), (60, 200)]


def check_picking(kigou):
    for name, keys, picks, status in PICKING:
        with tempfile.TemporaryDirectory() as folder:
            person = Person(kigou, folder)
            browser = person.run(f"kigou --pick >{folder}/picks 2>{folder}/errors; exit $?")
            for shown, typed in keys:
                browser.wait(shown)
                browser.type(typed)
            assert browser.finish() == status, f"{name}: another exit status than {status}"
            given = (person.folder / "picks").read_text().rstrip("\n")
            assert given == picks, f"{name}: {given!r} is given"


def check_widths(kigou):
    """Every cell is the same on both kinds of terminals, but for the second ones of symbols."""
    keys = [("記述記号", TAB + TAB), ("U+3000", TAB), ("U+309B", "/まる"), ("丸印", DOWN), ("U+25CF", CTRL_C)]
    for rows, columns in SIZES:
        shown = []
        for ambiguous in (1, 2):
            with tempfile.TemporaryDirectory() as folder:
                browser = Person(kigou, folder).run(
                    "kigou --pick >/dev/null", rows=rows, columns=columns, ambiguous=ambiguous
                )
                pictures = []
                for awaited, typed in keys:
                    browser.wait(awaited)
                    while select.select([browser.file], [], [], 0.2)[0]:
                        browser.feed(0)
                    pictures.append(browser.cells())
                    browser.type(typed)
                browser.finish()
                shown.append(pictures)
        for narrow, wide in zip(*shown):
            for y, (line, other) in enumerate(zip(narrow, wide)):
                for x, (cell, same) in enumerate(zip(line, other)):
                    place = f"{columns}x{rows}, row {y}, column {x}"
                    assert cell == same or {cell, same} == {" ", ""}, f"{place}: {cell!r} and {same!r}"


def check_ends(kigou):
    with tempfile.TemporaryDirectory() as folder:
        person = Person(kigou, folder)
        # A shell's substitution, the way others ask for a symbol.
        shell = person.run("x=$(kigou --pick 一般記号/矢印); stty -a | grep -o ' icanon\\|-icanon'; printf 'given %s\\n' \"$x\"")
        shell.wait("右矢印")
        shell.type(ENTER)
        assert shell.finish() == 0 and "given →" in shell.text() and "-icanon" not in shell.text(), shell.text()
        # It was noted.
        assert (person.folder / "state/kigou/recents").read_text() == "81A8 →\n"
        # Another size at any time.
        browser = person.run("kigou")
        browser.wait("記述記号")
        for rows, columns in ((5, 20), (2, 3), (60, 200), (24, 80)):
            browser.resize(rows, columns)
            time.sleep(0.05)
        browser.wait("arrows move")
        browser.wait("記述記号")
        os.kill(browser.process, signal.SIGHUP)
        browser.type("q")
        # No picture can be drawn, or there is nothing to draw it on.
        for setting, message in (("TERM=nothing", "is no terminal that a picture can be drawn on"), ("TERM=dumb", "is no terminal that")):
            refused = person.run(f"{setting} kigou; echo status $?")
            refused.wait("status 2")
            assert message in refused.text(), refused.text()


def check_editing(kigou):
    with tempfile.TemporaryDirectory() as folder:
        browser = Person(kigou, folder).run("kigou")
        steps = [
            ("記述記号", LEFT),
            ("拡張の記号", F7),
            ("new set: _", "私" + ENTER),
            ("made the symbol file 私", F7),
            ("new title: _", "印" + ENTER),
            ("added 私／印", "/こめじるし"),
            ("米印", F5),
            ("copy to: お気に入り_", BACKSPACE * 5 + "私/印" + ENTER),
            ("added 1 symbol to 私／印", ESC),
            ("arrows move", "u"),
            ("undone: added 1 symbol to 私／印", CTRL_R),
            ("again: added 1 symbol to 私／印", RIGHT),
            ("1 ※", "q"),
        ]
        for shown, typed in steps:
            browser.wait(shown)
            browser.type(typed)
        assert browser.finish() == 1
        person = Person(kigou, folder)
        listed = person.run("kigou list 私/印")
        assert listed.finish() == 0 and "※" in listed.text(), listed.text()


def main():
    kigou = os.path.abspath(sys.argv[1])
    for check in (check_picking, check_widths, check_ends, check_editing):
        check(kigou)
        print(check.__name__, "passes")


if __name__ == "__main__":
    main()
