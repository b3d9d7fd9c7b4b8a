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
import time

from terminal import Person, run_checks

DOWN, RIGHT, LEFT = "\x1b[B", "\x1b[C", "\x1b[D"
ENTER, ESC, TAB, BACKSPACE = "\r", "\x1b", "\t", "\x7f"
F3, F4 = "\x1bOR", "\x1bOS"
F5, F6, F7 = "\x1b[15~", "\x1b[17~", "\x1b[18~"
ALT_UP = "\x1b[1;3A"
CTRL_C, CTRL_O, CTRL_R, CTRL_S, CTRL_U = "\x03", "\x0f", "\x12", "\x13", "\x15"


def click(column, row):
    """The button of the mouse in a cell, from 1."""
    return f"\x1b[<0;{column};{row}M\x1b[<0;{column};{row}m"


WHEEL_DOWN = "\x1b[<65;20;5M"

# Name, what the browser gives, keys with what must appear before the next; before the first a set.
PICKING = [
    ("gathers symbols", "、。", TAB + TAB, ("U+3000", DOWN), ("U+3001", " "), ("taken: 、", DOWN + " "), ("taken: 、。", "q")),
    ("shows the last of many", "", TAB + TAB, ("U+3000", " " * 60 + DOWN), ("U+3001", " "), ("taken: ~", ""), ("、\n", CTRL_C)),
    ("finds", "→", "/yajirusu", ("meant やじるし?", CTRL_U + "yaji"), ("右矢印", " "), ("taken: →", ESC), ("q end with these", "q")),
    ("takes full-width keys", "、", TAB + TAB, ("U+3000", "ｊ"), ("U+3001", "　"), ("taken: 、", "ｑ")),
    ("takes by a number of two digits", "！", TAB + TAB, ("U+3000", "1"), ("Enter item 1", "０")),
    ("finds two words", "→", "/right" + TAB + "arrow", ("右矢印", ENTER), ("一般記号／矢印", ENTER)),
    ("goes on in what was found", "★", F3 + "ほし", ("白星", ENTER), ("U+2606", "."), ("U+2605", "ｎ"), ("U+FF0A", ","), ("U+2605", ENTER)),
    ("shows its keys", "", "?", ("any key: more", ESC), ("記述記号", "?x"), ("Ctrl+C", "ｘ"), ("any key: back", "x"), ("記述記号", "q")),
    ("takes by clicks: an item, once more to enter, one in a column before, the wheel", "←", click(20, 3), ("引用符", click(20, 3)),
     ("標準の記号／括弧 ", click(20, 4)), ("図形", click(20, 4) + click(36, 3) * 2), ("右矢印", WHEEL_DOWN), ("左矢印 U+2190", click(60, 20) + click(55, 3))),
]  # fmt: skip

SIZES = [(24, 80), (10, 40), (60, 200)]


def check_picking(kigou):
    for name, picks, first, *keys in PICKING:
        with Person(kigou) as person:
            browser = person.run(f"kigou --pick >{person.folder}/picks 2>{person.folder}/errors; exit $?")
            browser.follow([("記述記号", first), *keys])
            status = browser.finish()
            given = person.read("picks").rstrip("\n")
            assert (given, status) == (picks, 0 if picks else 1), f"{name}: {given!r} is given, exit status {status}"


def check_widths(kigou):
    """Every cell is the same on both kinds of terminals, but for the second ones of symbols."""
    keys = [("記述記号", TAB + TAB), ("U+3000", TAB), ("U+309B", "/まる"), ("丸印", DOWN), ("U+25CF", CTRL_C)]
    for rows, columns in SIZES:
        shown = []
        for ambiguous in (1, 2):
            with Person(kigou) as person:
                browser = person.run("kigou --pick >/dev/null", rows=rows, columns=columns, ambiguous=ambiguous)
                shown.append([])
                for awaited, typed in keys:
                    browser.wait(awaited)
                    while select.select([browser.file], [], [], 0.2)[0]:
                        browser.feed(0)
                    shown[-1].append(browser.cells())
                    browser.type(typed)
                browser.finish()
        for narrow, wide in zip(*shown):
            for y, (line, other) in enumerate(zip(narrow, wide)):
                for x, (cell, same) in enumerate(zip(line, other)):
                    place = f"{columns}x{rows}, row {y}, column {x}"
                    assert cell == same or {cell, same} == {" ", ""}, f"{place}: {cell!r} and {same!r}"


def check_ends(kigou):
    with Person(kigou) as person:
        # A shell's substitution, the way others ask for a symbol.
        shell = person.run("x=$(kigou --pick 一般記号/矢印); stty -a | grep -o ' icanon\\|-icanon'; printf 'given %s\\n' \"$x\"")
        shell.follow([("右矢印", ENTER)])
        assert shell.finish() == 0 and "given →" in shell.text() and "-icanon" not in shell.text(), shell.text()
        assert person.read("state/kigou/recents") == "81A8 →\n", "it was not noted"
        # Another size at any time.
        browser = person.run("kigou")
        browser.wait("記述記号")
        for rows, columns in ((5, 20), (2, 3), (60, 200), (24, 80)):
            browser.resize(rows, columns)
            time.sleep(0.05)
        browser.wait("arrows move")
        browser.wait("記述記号")
        os.kill(browser.process, signal.SIGHUP)


def check_editing(kigou):
    with Person(kigou) as person:
        browser = person.run("kigou")
        browser.follow([
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
        ])  # fmt: skip
        assert browser.finish() == 1
        listed = person.run("kigou tree 私; kigou list 私/印; kigou list 私/矢")
        assert listed.finish() == 0
        assert listed.text().split() == ["私", "├──", "矢", "(1)", "└──", "印", "(1)", "私／印", "※", "私／矢", "→"], listed.text()


def with_an_arrow(person):
    """A browser in a title of the person's own that holds an arrow."""
    person.run("kigou new 私; kigou add 私 印; kigou put 私/印 →").finish()
    browser = person.run("kigou browse 私/印")
    browser.wait("U+2192")
    return browser


def check_pastes(kigou):
    """A paste that comes in pieces is one text, and none of it a key; a long one, too."""
    with Person(kigou) as person:
        browser = with_an_arrow(person)
        browser.follow([("印", F4), ("add symbols:", "\x1b[20")])
        for columns, piece in enumerate(("0~☆\r", "★", "\r2q\x03", "\x1b[20", "1~"), 76):
            browser.type(piece)
            time.sleep(0.1)
            browser.resize(24, columns)
            time.sleep(0.1)
        pasted = "\x1b[200~" + "→←\n" * 3000 + "\x1b[201~"
        browser.follow([("add symbols: ☆ ★ 2q", CTRL_U + pasted), ("← _", ENTER), ("added 6000 symbols to 私／印", "q")])
        browser.finish()


def check_jobs(kigou):
    """Stopped and gone on, the terminal is the shell's and then the browser's again."""
    with Person(kigou) as person:
        browser = person.run("set -m; kigou; stty -a | grep -o ' icanon'; read line; fg; echo over", rows=24)
        browser.wait("記述記号")
        child = pathlib.Path(f"/proc/{browser.process}/task/{browser.process}/children").read_text().split()[0]
        os.kill(int(child), signal.SIGTSTP)
        browser.wait("icanon")
        assert "記述記号" not in browser.text(), browser.text()
        browser.follow([("icanon", "\n"), ("記述記号", DOWN), ("引用符", "q"), ("over", "")])
        browser.finish()


def check_other_programs(kigou):
    """What another program changes appears without a key."""
    with Person(kigou) as person:
        browser = with_an_arrow(person)
        person.run("kigou put 私/印 ← --append").finish()
        browser.follow([("another program changed a set", ""), ("左矢印", DOWN), ("U+2190", ENTER)])
        browser.finish()


def begin_long_edit(person):
    """The browser in the middle of an edit of a large set. @return it, the set's file"""
    titles = "".join(f"［他／{i}］\n{'-' * 40}\n☆★\n{'-' * 40}\n" for i in range(6000))
    text = f"〈記号〉\n名称=私\n［印］\n{'-' * 40}\n→\n{'-' * 40}\n{titles}"
    own = person.folder / "data/kigou/own.kig"
    own.parent.mkdir(parents=True)
    own.write_bytes(text.encode("euc_jp"))
    browser = person.run("exec kigou browse 私/印")
    browser.follow([("U+2192", F4 + "※"), ("add symbols: ※", ENTER)])
    return browser, own


def wait_for_edit(folder):
    """Until the second working file is there, which has the edit."""
    files, end = set(), time.time() + 30
    while len(files) < 2:
        files.update(folder.glob("accsym*"))
        assert time.time() < end, "no edit is made"


def check_closing(kigou):
    """A window that is closed, or a process that is killed, in the middle of an edit."""
    for moment in (0, 0.01, 0.03, 0.06, 0.1):
        with Person(kigou) as person:
            browser, own = begin_long_edit(person)
            before = own.read_bytes()
            time.sleep(moment)
            os.close(browser.file)
            os.waitpid(browser.process, 0)
            after = before.replace("→\n".encode("euc_jp"), "→※\n".encode("euc_jp"), 1)
            assert own.read_bytes() in (before, after), "a closed window leaves half a set"
            left = [path.name for path in person.folder.iterdir()]
            assert sorted(left) == ["data", "state"] or left == ["data"], left
    for attempt in range(20):
        with Person(kigou) as person:
            browser, own = begin_long_edit(person)
            wait_for_edit(person.folder)
            time.sleep(0.01 * attempt)
            os.kill(browser.process, signal.SIGKILL)
            os.waitpid(browser.process, 0)
            for path in filter(pathlib.Path.is_file, person.folder.iterdir()):
                os.utime(path, times=(time.time() - 10,) * 2)
            os.utime(own, times=(time.time() - 20,) * 2)
            browser = person.run("kigou")
            browser.wait("記述記号")
            offered = "an edit of 私 was never saved; keep it as: 私（救出）_" in browser.text()
            browser.follow([("記述記号", ENTER), ("kept as 私（救出）", RIGHT), ("※", CTRL_C)] if offered else [("", "q")])
            browser.finish()
            if offered:
                return
    raise AssertionError("no kill left an edit that was not saved")


if __name__ == "__main__":
    run_checks(check_picking, check_widths, check_ends, check_editing, check_pastes, check_jobs, check_other_programs, check_closing)
