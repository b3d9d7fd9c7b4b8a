#!/usr/bin/python3
"""What is missing, spoilt or changed on disk, told in the window of the input method, which goes on.

usage: troubles_test.py FOLDER-OF-MODULE
"""

import os
import shutil

from application import InputMethod, TextField, run_checks
from keys_test import OPEN, STANDARD, TOP, check_settled, with_set

ARROWS = "*1 →  右矢印  2 ←  左矢印 | kuten 2-10  JIS 222A  Shift_JIS 81A8  U+2192"


def standard(fcitx, blocks=tuple(STANDARD)):
    fcitx.put("program", "default.kig", "標準の記号", blocks)


def broken(fcitx, path, text="garbage"):
    (fcitx.folder / path).write_bytes(text.encode("euc_jp"))


# Name, what is done to the files, and keys with what comes of them, at each in turn. The window is
# closed between.
TROUBLES = [
    ("no set", lambda fcitx: None, OPEN + " 1 Return space Tab Left", "Symbols |  | "),
    ("no set, told", lambda fcitx: None, OPEN, "Symbols  no symbol file in program |  | "),
    ("no folder", lambda fcitx: (fcitx.folder / "program").rmdir(), OPEN + " y 1 Left",
     'Symbols  cannot read the directory "program": No such file or directory |  | '),
    ("closed all the same", lambda fcitx: None, OPEN + " Escape", "-"),
    ("all there", lambda fcitx: ((fcitx.folder / "program").mkdir(), standard(fcitx)), OPEN, TOP),
    ("spoilt files beside", lambda fcitx: (broken(fcitx, "common/b.kig"), broken(fcitx, "common/c.kig")), OPEN + " 2 Escape " + OPEN,
     "標準の記号／矢印  b.kig: the first line is not 〈記号〉 (+1) | " + ARROWS),
    ("the rest works", lambda fcitx: None, OPEN + " → 1", "<→>"),
    ("other sets", lambda fcitx: ([path.unlink() for path in (fcitx.folder / "common").iterdir()], fcitx.put("common", "d.kig", "私", [("矢", "→")])),
     OPEN + " Left Left", "Symbols | 1 最近  1  *2 標準の記号  17  3 私  1 | "),
    ("a set that goes", lambda fcitx: None, OPEN + " 3", "私 | *1 矢  1 | "),
    ("it is gone", lambda fcitx: (fcitx.folder / "common/d.kig").unlink(), OPEN, "Symbols  there is no title 私 | *1 最近  1  2 図  4  3 矢印  2  4 面  11 | "),
    ("another program's change", lambda fcitx: standard(fcitx, STANDARD[2:]), OPEN, "Symbols | *1 最近  1  2 矢印  2  3 面  11 | "),
    ("a hostile set", lambda fcitx: fcitx.put("common", "e.kig", "長" * 60, [("題" * 50, "☆\x1b["), ("\x1b[31m", "")]), OPEN + " Left Left End Right",
     "…" + "長" * 40 + " | *1 " + "題" * 30 + "…  2  2 �[31m  0 | "),
    ("a symbol that would command the program", lambda fcitx: None, OPEN + " Right 2", "-"),
    ("the path of it", lambda fcitx: None, OPEN + " ☆", "[☆] Search  1 | *1 ☆  白星  …" + "題" * 40 + " | kuten 1-89  JIS 2179  Shift_JIS 8199  U+2606"),
    ("another program's change, without it", lambda fcitx: (fcitx.folder / "common/e.kig").unlink(), OPEN + " Escape", "-"),
    ("a set cut short", lambda fcitx: broken(fcitx, "program/default.kig", "〈記号〉\n名称=標準の記号\n［図"), OPEN, "Symbols | *1 最近  1 | "),
    ("a spoilt standard set", lambda fcitx: broken(fcitx, "program/default.kig"), OPEN, "Symbols  default.kig: the first line is not 〈記号〉 | *1 最近  1 | "),
    ("recent picks that cannot be kept", lambda fcitx: (standard(fcitx), shutil.rmtree(fcitx.folder / "state/kigou"), broken(fcitx, "state/kigou")),
     OPEN + " 2 1", "<→>"),
]  # fmt: skip


def check_troubles(root):
    with InputMethod(root) as fcitx:
        field = TextField(fcitx)
        for name, change, keys, expected in TROUBLES:
            fcitx.wait_for_notes()
            change(fcitx)
            committed = ""
            for key in keys.split():
                got = field.press(key)
                committed += got.committed
            got.committed = committed
            told = str(got).replace(f"{fcitx.folder}/", "").replace("c.kig", "b.kig")  # they come in any order
            assert told == expected, f"{name}:\n  expected {expected}\n  got      {told}"
            field.focus(False)
            field.focus(True)
        fcitx.wait_for_notes()
        assert "recents: Not a directory" in field.press(OPEN).upper, field.got
        told = fcitx.told()
        for line in ("no symbol file in", "cannot read the directory", "kig: the first line", "cannot write"):
            assert line in told, f"not in the log: {line}"


def check_japanese(root):
    """What the core says, to a person who reads Japanese."""
    rows = [
        (OPEN, "記号  b.kig：最初の行が〈記号〉ではありません | *1 図  4  2 矢印  2  3 面  11 | "),
        ("く ろ ほ じ", "[くろほじ] 検索  0  もしかして：くろほし |  | "),
        ("Escape z z z", "[zzz] 検索  0  見つかりません |  | "),
        ("Escape s : 8 5 4 0", "[s:8540] 検索  0  s:8540（区点 9-1）に文字はありません |  | "),
        ("Escape ♀ Right", "[♀] 検索  1  どの記号ファイルにもありません | *1 ♀  雌記号 | 区点 1-74  JIS 216A  Shift_JIS 818A  U+2640"),
        ("Escape 2 Control+d", "標準の記号／矢印  → をお気に入りに入れました | " + ARROWS.replace("kuten", "区点")),
    ]
    with with_set(root, LANGUAGE="ja") as fcitx:
        broken(fcitx, "common/b.kig")
        field = TextField(fcitx)
        check_settled(rows, fcitx, field)


def check_traces(root):
    """Browsing and picking make no working file, and leave nothing open."""
    with with_set(root) as fcitx:
        field = TextField(fcitx)
        scratch = fcitx.folder / "tmp"

        def round_trip():
            for key in f"{OPEN} Home Right Tab Left y a space Right Left h o s h i 1".split():
                field.press(key)

        def descriptors():
            fcitx.wait_for_notes()
            return os.listdir(f"/proc/{fcitx.process().pid}/fd")

        round_trip()
        seen, before = scratch.stat().st_mtime_ns, descriptors()
        for _ in range(20):
            round_trip()
        assert scratch.stat().st_mtime_ns == seen, "a file was made in the temporary directory"
        assert len(descriptors()) == len(before), before


if __name__ == "__main__":
    run_checks(check_troubles, check_japanese, check_traces)
