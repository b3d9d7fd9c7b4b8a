#!/usr/bin/python3
"""Drives the browser through a pseudo-terminal and looks at what an emulator shows.

usage: browser_test.py FOLDER-OF-KIGOU

Each script of keys is run on terminals that draw symbols such as → one cell wide and on such
that draw them two cells wide: both must show the same in every cell.
"""

import os
import pathlib
import select
import signal
import sys
import tempfile
import time

from terminal import Person

DOWN, RIGHT, LEFT = "\x1b[B", "\x1b[C", "\x1b[D"
ENTER, ESC, TAB, BACKSPACE = "\r", "\x1b", "\t", "\x7f"
F3, F4 = "\x1bOR", "\x1bOS"
F5, F6, F7 = "\x1b[15~", "\x1b[17~", "\x1b[18~"
ALT_UP = "\x1b[1;3A"
CTRL_C, CTRL_O, CTRL_R, CTRL_S, CTRL_U = "\x03", "\x0f", "\x12", "\x13", "\x15"

# Name, keys with what must appear before the next, what the browser gives, exit status.
PICKING = [
    ("takes a symbol", [("記述記号", TAB + TAB), ("U+3000", DOWN), ("U+3001", ENTER)], "、", 0),
    (
        "gathers symbols",
        [("記述記号", TAB + TAB), ("U+3000", DOWN), ("U+3001", " "), ("taken: 、", DOWN + " "), ("taken: 、。", "q")],
        "、。",
        0,
    ),
    (
        "shows the last of many",
        [("記述記号", TAB + TAB), ("U+3000", " " * 60 + DOWN), ("U+3001", " "), ("taken: ~", ""), ("、\n", CTRL_C)],
        "",
        1,
    ),
    ("finds by romaji", [("記述記号", "/yaji"), ("右矢印", " "), ("taken: →", ESC), ("q end with these", "q")], "→", 0),
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
    ("takes by a number of two digits", [("記述記号", TAB + TAB), ("U+3000", "1"), ("Enter item 1", "０")], "！", 0),
    ("finds two words", [("記述記号", "/right" + TAB + "arrow"), ("右矢印", ENTER), ("一般記号／矢印", ENTER)], "→", 0),
    (
        "goes on in what was found",
        [("記述記号", F3 + "ほし"), ("白星", ENTER), ("U+2606", "."), ("U+2605", "ｎ"), ("U+FF0A", ","), ("U+2605", ENTER)],
        "★",
        0,
    ),
    ("leaves with nothing", [("記述記号", "q")], "", 1),
    ("forgets on Ctrl+C", [("記述記号", TAB + TAB), ("U+3000", " "), ("taken:", CTRL_C)], "", 1),
    ("shows its keys", [("記述記号", "?"), ("any key: more", "x"), ("Ctrl+C", "ｘ"), ("any key: back", "x"), ("記述記号", "q")], "", 1),
    ("leaves its keys", [("記述記号", "?"), ("any key: more", ESC), ("記述記号", "q")], "", 1),
    ("asks what was meant", [("記述記号", "/yajirusu"), ("meant やじるし?", ESC), ("arrows move", "q")], "", 1),
]



def click(column, row):
    """The button of the mouse in a cell, from 1."""
    return f"\x1b[<0;{column};{row}M\x1b[<0;{column};{row}m"


WHEEL_DOWN = "\x1b[<65;20;5M"
PICKING += [
    (
        "takes by clicks: an item, once more to enter, one in a column before, the wheel",
        [
            ("記述記号", click(20, 3)),
            ("引用符", click(20, 3)),
            ("標準の記号／括弧 ", click(20, 4)),
            ("図形", click(20, 4) + click(36, 3) * 2),
            ("右矢印", WHEEL_DOWN),
            ("左矢印 U+2190", click(60, 20) + click(55, 3)),
        ],
        "←",
        0,
    ),
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


def follow(browser, steps):
    for shown, typed in steps:
        browser.wait(shown)
        browser.type(typed)


def check_editing(kigou):
    with tempfile.TemporaryDirectory() as folder:
        person = Person(kigou, folder)
        browser = person.run("kigou")
        steps = [
            ("(read-only)", F7),
            ("標準の記号 cannot be changed", CTRL_O),
            ("all sets", F7),
            ("new set: _", "私" + ENTER),
            ("made the symbol file 私", F7),
            ("new title: _", "印" + ENTER),
            ("added 私／印", "/こめじるし"),
            ("米印", F5),
            ("copy to: お気に入り_", CTRL_U + "私/い"),
            ("copy to: 私/い_", BACKSPACE + TAB + ENTER),
            ("added 1 symbol to 私／印", ESC),
            ("q quit", "u"),
            ("undone: added 1 symbol to 私／印", CTRL_R),
            ("again: added 1 symbol to 私／印", RIGHT + F4 + "→1-90" + ENTER),
            ("word 1, column 2: '1'", ESC + F4 + "→" + ENTER),
            ("added 1 symbol to 私／印", ALT_UP),
            ("moved 1 symbol in 私／印", F6 + CTRL_U + "私/矢" + ENTER),
            ("once more to make it", ENTER),
            ("moved 1 symbol from 私／印 to 私／矢", LEFT + ">"),
            ("2 印", CTRL_S),
            ("every edit is saved already", "q"),
        ]
        follow(browser, steps)
        assert browser.finish() == 1
        listed = person.run("kigou tree 私; kigou list 私/印; kigou list 私/矢")
        assert listed.finish() == 0
        assert listed.text().split() == ["私", "├──", "矢", "(1)", "└──", "印", "(1)", "私／印", "※", "私／矢", "→"], listed.text()


def check_pastes(kigou):
    """A paste that comes in pieces is one text, and none of it a key; a long one, too."""
    with tempfile.TemporaryDirectory() as folder:
        person = Person(kigou, folder)
        person.run("kigou new 私; kigou add 私 印; kigou put 私/印 →").finish()
        browser = person.run("kigou browse 私/印")
        follow(browser, [("U+2192", F4), ("add symbols:", "\x1b[20")])
        for columns, piece in enumerate(("0~☆\r", "★", "\r2q\x03", "\x1b[20", "1~"), 76):
            browser.type(piece)
            time.sleep(0.1)
            browser.resize(24, columns)
            time.sleep(0.1)
        follow(browser, [("add symbols: ☆ ★ 2q", CTRL_U + "\x1b[200~" + "→←\n" * 3000 + "\x1b[201~"), ("← _", ENTER)])
        browser.wait("added 6000 symbols to 私／印")
        browser.type("q")
        browser.finish()


def check_jobs(kigou):
    """Stopped and gone on, the terminal is the shell's and then the browser's again."""
    with tempfile.TemporaryDirectory() as folder:
        browser = Person(kigou, folder).run("set -m; kigou; stty -a | grep -o ' icanon'; read line; fg; echo over", rows=24)
        browser.wait("記述記号")
        child = pathlib.Path(f"/proc/{browser.process}/task/{browser.process}/children").read_text().split()[0]
        os.kill(int(child), signal.SIGTSTP)
        browser.wait("icanon")
        assert "記述記号" not in browser.text(), browser.text()
        follow(browser, [("icanon", "\n"), ("記述記号", DOWN), ("引用符", "q"), ("over", "")])
        browser.finish()


def check_other_programs(kigou):
    """What another program changes appears without a key."""
    with tempfile.TemporaryDirectory() as folder:
        person = Person(kigou, folder)
        person.run("kigou new 私; kigou add 私 印; kigou put 私/印 →").finish()
        browser = person.run("kigou browse 私/印")
        browser.wait("U+2192")
        person.run("kigou put 私/印 ← --append").finish()
        browser.wait("another program changed a set")
        follow(browser, [("左矢印", DOWN), ("U+2190", ENTER)])
        browser.finish()


def large_set(person):
    """A set that takes a while to be edited."""
    titles = "".join(f"［他／{i}］\n{'-' * 40}\n☆★\n{'-' * 40}\n" for i in range(6000))
    text = f"〈記号〉\n名称=私\n［印］\n{'-' * 40}\n→\n{'-' * 40}\n{titles}"
    path = person.folder / "data/kigou/own.kig"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(text.encode("euc_jp"))
    return path


def wait_for_edit(folder):
    """Until the second working file is there, which has the edit."""
    files, end = set(), time.time() + 30
    while len(files) < 2:
        files.update(folder.glob("accsym*"))
        assert time.time() < end, "no edit is made"


def check_closing(kigou):
    """A window that is closed, or a process that is killed, in the middle of an edit."""
    for moment in (0, 0.01, 0.03, 0.06, 0.1):
        with tempfile.TemporaryDirectory() as folder:
            person = Person(kigou, folder)
            own = large_set(person)
            before = own.read_bytes()
            browser = person.run("exec kigou browse 私/印")
            follow(browser, [("U+2192", F4 + "※"), ("add symbols: ※", ENTER)])
            time.sleep(moment)
            os.close(browser.file)
            os.waitpid(browser.process, 0)
            after = before.replace("→\n".encode("euc_jp"), "→※\n".encode("euc_jp"), 1)
            assert own.read_bytes() in (before, after), "a closed window leaves half a set"
            left = [path.name for path in person.folder.iterdir()]
            assert sorted(left) == ["data", "state"] or left == ["data"], left
    for attempt in range(20):
        with tempfile.TemporaryDirectory() as folder:
            person = Person(kigou, folder)
            own = large_set(person)
            browser = person.run("exec kigou browse 私/印")
            follow(browser, [("U+2192", F4 + "※"), ("add symbols: ※", ENTER)])
            wait_for_edit(person.folder)
            time.sleep(0.01 * attempt)
            os.kill(browser.process, signal.SIGKILL)
            os.waitpid(browser.process, 0)
            left = [path for path in person.folder.iterdir() if path.is_file()]
            for path in left:
                os.utime(path, times=(time.time() - 10,) * 2)
            os.utime(own, times=(time.time() - 20,) * 2)
            browser = person.run("kigou")
            browser.wait("記述記号")
            offered = "an edit of 私 was never saved; keep it as: 私（救出）_" in browser.text()
            if offered:
                browser.type(ENTER)
                follow(browser, [("kept as 私（救出）", RIGHT), ("※", CTRL_C)])
            else:
                browser.type("q")
            browser.finish()
            if offered:
                return
    raise AssertionError("no kill left an edit that was not saved")


def main():
    kigou = os.path.abspath(sys.argv[1])
    for check in (check_picking, check_widths, check_ends, check_editing, check_pastes, check_jobs, check_other_programs, check_closing):
        check(kigou)
        print(check.__name__, "passes")


if __name__ == "__main__":
    main()
