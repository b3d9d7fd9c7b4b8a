#!/usr/bin/python3
"""Types lines into the plain mode of the browser and reads what is written, line by line.

usage: plain_test.py FOLDER-OF-KIGOU
"""

import os
import signal
import time
import unicodedata

from terminal import PATIENCE, Person, run_checks

CTRL_C, CTRL_D = "\x03", "\x04"
PROMPTS = ("\r\n> ", " a dot for none: ")

ARROWS = ["標準の記号／一般記号／矢印", "1 → 右矢印", "2 ← 左矢印", "3 ↑ 上矢印", "4 ↓ 下矢印", "5 ⇒ ならば", "6 ⇔ 同値"]
GENERAL = ["標準の記号／一般記号", "1 図形, title", "2 矢印, title", "3 事務, title", "4 音楽・性別, title"]
NOT_UNDERSTOOD = ["not understood; a number enters or takes, /text finds, b goes back, ? tells all commands"]
FAVOURITES = "copy to, an empty line for お気に入り, a dot for none: "

# Name, what is given, lines with what is written after each (None: all the same).
DIALOGUES = [
    ("takes full-width digits", "↓", ("３", GENERAL), ("　２", ARROWS), ("４　", None)),
    ("gathers symbols", "↑⇔", ("3", GENERAL), ("2", ARROWS), ("+3", ["taken ↑ 上矢印"]), ("＋　６", ["taken ⇔ 同値"]),
     ("take 1", ["taken → 右矢印"]), ("ー", ["taken ↑⇔"]), ("l", ARROWS + ["taken ↑⇔"]), ("Ｑ", None)),
    (
        "finds, and goes to what it finds",
        "",
        ("/yajirushi", ["6 found"] + ARROWS[1:]),
        ("・せっし", ["1 found", "1 ℃ セ氏度記号"]),
        (
            "i1",
            ["1 ℃ セ氏度記号", "readings せっし, ど, せっしど, おんど, どしー, たんい, きごう", "U+2103"]
            + ["kuten 1-78", "SJIS 818E", "JIS 216E", "EUC A1EE", "in 標準の記号／単位・通貨／単位"],
        ),
        ("/ yajirusu", ["meant やじるし?", "0 found"]),
        ("find U+2193", ["1 found", "1 ↓ 下矢印"]),
        ("show 1", ARROWS),
        ("t", None),
        ("tb", ARROWS),
        ("b", GENERAL),
        ("い２", ["2 矢印, title", "items in it: 6"]),
        ("b", None),
        ("b", ["all sets", "1 標準の記号, set", "2 拡張の記号, set"]),
        ("b", ["nothing changed; items 1 to 2 of 2"]),
        ("q", None),
    ),
    (
        "says what can be typed",
        "",
        ("矢印", NOT_UNDERSTOOD),
        ("12a", NOT_UNDERSTOOD),
        ("\udcff\udc80", NOT_UNDERSTOOD),
        ("d", ["d NUMBER or delete NUMBER: removes that symbol, title or set"]),
        ("q 3", ["q or quit: ends with what was taken"]),
        ("／", ["/ TEXT or find TEXT: finds: a reading, a name, a title, a code"]),
        ("0", ["no such item; there are 10"]),
        ("+99999999999999999999999", ["no such item; there are 10"]),
        ("+1", ["nothing changed; items 1 to 10 of 10"]),
        ("-", ["nothing changed; items 1 to 10 of 10"]),
        ("cancel", None),
    ),
    ("forgets on Ctrl+D", "", ("/yaji", None), ("+1", None), (CTRL_D, None)),
    ("forgets on Ctrl+C in a question", "", ("/yaji", None), ("+1", None), ("c1", [FAVOURITES]), (CTRL_C, None)),
]  # fmt: skip

EDITING = [
    ("b", None),
    ("new", ["new set, a dot for none: "]),
    ("私", ["made the symbol file 私", "私", "nothing here"]),
    ("n", ["new title, a dot for none: "]),
    ("印", ["added 私／印", "now 1 印, title"]),
    ("/yaji", None),
    ("+1", None),
    ("+2", None),
    ("+4", None),
    ("c", [FAVOURITES]),
    ("私/印", ["added 3 symbols to 私／印"]),
    ("b", ["私", "1 印, title"]),
    ("r1", ["new name, an empty line for 印, a dot for none: "]),
    ("しるし", ["renamed 私／印 to 私／しるし", "now 1 しるし, title"]),
    ("1", ["私／しるし", "1 → 右矢印", "2 ← 左矢印", "3 ↓ 下矢印"]),
    ("< 3", ["moved 1 symbol in 私／しるし", "now 2 ↓ 下矢印"]),
    ("down 1", ["moved 1 symbol in 私／しるし", "now 2 → 右矢印"]),
    ("d2", ["removed 1 symbol from 私／しるし", "now 2 ← 左矢印"]),
    ("う", ["undone: removed 1 symbol from 私／しるし", "now 3 ← 左矢印"]),
    ("y", ["again: removed 1 symbol from 私／しるし", "now 2 ← 左矢印"]),
    ("i 1", None),
    ("copy 1", ["copy to, an empty line for 私/印, a dot for none: "]),
    ("。", ["nothing changed; items 1 to 2 of 2"]),
    ("a2", ["add symbols, a dot for none: "]),
    ("☆", ["added 1 symbol to 私／しるし", "now 3 ☆ 白星"]),
    ("m3", ["move to, an empty line for 私/印, a dot for none: "]),
    ("私/星", ["there is no title 私／星; once more to make it", "move to, an empty line for 私/星, a dot for none: "]),
    ("", ["moved 1 symbol from 私／しるし to 私／星", "now 2 ← 左矢印"]),
    ("/星", None),
    ("s1", None),
    ("g", None),
    ("o", ["all sets", "1 標準の記号, set", "2 私, set", "3 拡張の記号, set"]),
    ("q", None),
]

LONG = "".join(chr(code) for code in range(0x30A1, 0x30A1 + 45))  # ァ to ロ
HELD = [f"{number} {symbol} " for number, symbol in enumerate(LONG, 1)]


class Listener:
    """Somebody who types lines and hears what is written."""

    def __init__(self, terminal):
        self.terminal, self.heard = terminal, 0

    def hear(self):
        """Lines from what was typed to the next prompt, the prompt of a question among them."""
        end = time.monotonic() + PATIENCE
        while True:
            text = self.terminal.received[self.heard :].decode(errors="replace")
            if text.endswith(PROMPTS):
                break
            assert time.monotonic() < end and self.terminal.feed(0.1), f"no prompt comes behind {text!r}"
        self.heard = len(self.terminal.received)
        lines = text.split("\r\n")[1:]
        return lines[:-1] if lines[-1] == "> " else lines

    def say(self, line):
        keys = line if line in (CTRL_C, CTRL_D) else line + "\n"
        os.write(self.terminal.file, keys.encode(errors="surrogateescape"))

    def talk(self, name, dialogue):
        """Leaves the last line without a look at what is written."""
        for number, (line, lines) in enumerate(dialogue):
            self.say(line)
            if number + 1 == len(dialogue):
                return
            heard = self.hear()
            assert lines is None or heard == lines, f"{name}: {line!r} is answered with {heard}"

    def finish(self):
        status = self.terminal.finish()
        for character in self.terminal.received.decode(errors="replace"):
            harmless = character in "\r\n" or unicodedata.category(character)[0] not in "CM"
            assert harmless, f"{character!r} is written"
        return status


def plain(person, command="kigou --pick --plain"):
    listener = Listener(person.run(f"{command} >{person.folder}/picks 2>{person.folder}/errors; exit $?"))
    return listener, listener.hear()


def check_dialogues(kigou):
    for name, picks, *dialogue in DIALOGUES:
        with Person(kigou) as person:
            listener, _ = plain(person)
            listener.talk(name, dialogue)
            status = listener.finish()
            given = person.read("picks").rstrip("\n")
            assert (given, status) == (picks, 0 if picks else 1), f"{name}: {given!r} is given, exit status {status}"


def check_editing(kigou):
    with Person(kigou) as person:
        listener, _ = plain(person)
        listener.talk("editing", EDITING)
        assert listener.finish() == 0
        listed = person.run("kigou list 私/しるし | tr '\\n' '.'; kigou tree 私")
        assert listed.finish() == 0 and "↓←." in listed.text(), listed.text()


def check_pages(kigou):
    """Never more than a page, and the help has every command once."""
    with Person(kigou) as person:
        made = person.run(f"kigou new 私 && kigou add 私 仮名 && kigou put 私/仮名 {LONG}")
        assert made.finish() == 0, made.text()
        listener, heard = plain(person, "kigou --pick --plain 私/仮名")
        assert heard[0] == "私／仮名" and heard[21:] == ["items 1 to 20 of 45; an empty line for more"], heard
        pages = [("", 20, 40, "; an empty line for more"), ("", 40, 45, ""), ("p", 20, 40, "; an empty line for more")]
        for line, first, last, more in pages:
            listener.say(line)
            heard = listener.hear()
            assert heard.pop() == f"items {first + 1} to {last} of 45{more}", heard
            assert [a[: len(b)] for a, b in zip(heard, HELD[first:last], strict=True)] == HELD[first:last], heard
        listener.talk("ends of a list", [("e", None), ("next", ["nothing changed; items 41 to 45 of 45"]), ("", None)])
        listener.hear()
        listener.say("?")
        told = listener.hear()
        assert len(told) == 21 and told.pop() == "an empty line for more", told
        listener.say("")
        told += listener.hear()
        names = [line.split(":")[0] for line in told]
        assert len(set(names)) == len(names) > 25, names
        listener.talk("behind the help", [("", ["nothing changed; items 41 to 45 of 45"]), ("37", None)])
        assert listener.finish() == 0
        assert person.read("picks") == LONG[36] + "\n"


def check_hostile(kigou):
    """Titles with control characters are told, entered and renamed without one of them being written."""
    with Person(kigou) as person:
        sets = person.folder / "data/kigou"
        sets.mkdir(parents=True)
        hyphens = "-" * 40 + "\n"
        text = "〈記号〉\n名称=悪\x1b[2J\x07い\n［\x1b]0;x\x07\t\x7f\b題］\n" + hyphens + "\x1b[→\n" + hyphens
        (sets / "@0000001.kig").write_bytes(text.encode("euc-jp"))
        listener, _ = plain(person, "kigou browse --plain")
        listener.say("b")
        number = next(line for line in listener.hear() if "悪" in line).split()[0]
        listener.talk("hostile", [
            (number, ["悪?[2J?い", "1 ?]0;x????題, title"]),
            ("r 1", ["new name, an empty line for ?]0;x????題, a dot for none: "]),
            ("", None),
            (".", ["nothing changed; items 1 to 1 of 1"]),
            ("1", ["悪?[2J?い／?]0;x????題", "1 ?[ U+001B U+005B", "2 → 右矢印"]),
            ("i1", None),
            ("+1", ["taken ?[ U+001B U+005B"]),
            ("-", ["nothing taken"]),
            ("/]0;x", None),
            ("q", None),
        ])  # fmt: skip
        assert listener.finish() == 1


def check_terminals(kigou):
    """Terminals that cannot show columns, and none that shows something else than UTF-8."""
    for setting, first in (
        ("TERM=dumb", "TERM=dumb cannot show columns; this is the plain mode, ? for help"),
        ("TERM=nothing", "TERM=nothing cannot show columns; this is the plain mode, ? for help"),
        ("-u TERM", "TERM is not set, so columns cannot be shown; this is the plain mode, ? for help"),
        ("TERM=", "TERM is not set, so columns cannot be shown; this is the plain mode, ? for help"),
    ):
        with Person(kigou) as person:
            pick = f"x=$(env {setting} kigou browse 一般記号/矢印)"
            shell = person.run(f"{pick}; stty -a | grep -o ' icanon\\|-icanon'; printf 'given %s\\n' \"$x\"")
            shell.wait("⇔ 同値")
            assert first in shell.text(), shell.text()
            shell.type("1\n")
            assert shell.finish() == 0 and "given →" in shell.text(), shell.text()
            assert "-icanon" not in shell.text() and b"\x1b" not in shell.received, shell.text()
    for setting, variable in (
        ("LC_ALL=C", "LC_ALL=C"),
        ("LC_ALL=POSIX LC_CTYPE=C.UTF-8 LANG=C.UTF-8", "LC_ALL=POSIX"),
        ("LC_ALL= LC_CTYPE=ja_JP.eucJP LANG=C.UTF-8", "LC_CTYPE=ja_JP.eucJP"),
        ("LANG=ja_JP.eucJP", "LANG=ja_JP.eucJP"),
        ("LANG=ja_JP", "LANG=ja_JP"),
        ("", "LC_ALL, LC_CTYPE and LANG are not set"),
        ("LC_ALL=C.UTF-8 LANG=C", None),
        ("LC_CTYPE=C.utf8 LANG=C", None),
        ("LANG=xx_YY.UTF8@none", None),
    ):
        for mode in ("--plain", ""):
            with Person(kigou) as person:
                clean = "env -u LC_ALL -u LC_CTYPE -u LANG " + setting
                script = f"{clean} kigou list 一般記号/矢印; {clean} kigou browse {mode} >/dev/null; echo status $?"
                shell = person.run(script, columns=200)
                shell.wait("status 2" if variable else "1 記述記号")
                if variable:
                    told = shell.text()
                    assert f"the locale ({variable}) is not UTF-8, so symbols cannot be shown" in told, told
                    assert "try: LC_ALL=C.UTF-8 kigou" in told and "→" in told, told
                else:
                    shell.type("q\n")
                shell.finish()


def check_signals(kigou):
    with Person(kigou) as person:
        for number in (signal.SIGTERM, signal.SIGHUP):
            terminal = person.run("exec kigou browse --plain")
            Listener(terminal).hear()
            os.kill(terminal.process, number)
            assert terminal.finish() == 2 and "a signal asked to end" in terminal.text(), terminal.text()


if __name__ == "__main__":
    run_checks(check_dialogues, check_editing, check_pages, check_hostile, check_terminals, check_signals)
