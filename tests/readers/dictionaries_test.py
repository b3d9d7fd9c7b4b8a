#!/usr/bin/python3
"""What 'kigou export' makes for other programs, read by these.

usage: dictionaries_test.py mozc|skk|compose|quickphrase KIGOU FOLDER-OF-MODULE
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).parent
NOBODY = 65534
# Letters that this SKK takes for other kana, or for none.
NOT_IN_SKK = re.compile("[kp]w|n(?=[aiueoyn])|^n$|ts[aeio]|wy")


def need(*programs):
    missing = [program for program in programs if not shutil.which(program)]
    if missing:
        print("skipped: no", *missing)
        sys.exit(77)


class Exports:
    def __init__(self, kigou, folder):
        self.kigou, self.folder = kigou, folder
        own = {"KIGOU_COMMON_DIR": folder, "KIGOU_USER_DIR": folder, "XDG_STATE_HOME": folder}
        self.environment = os.environ | {name: str(path) for name, path in own.items()}

    def make(self, *words):
        """@return path of an export of the standard set"""
        path = self.folder / "-".join(words).replace("/", "-")
        with path.open("wb") as file:
            subprocess.run([self.kigou, "export", "--as", *words], stdout=file, check=True, env=self.environment)
        return path

    def phrases(self):
        """What is typed, and the symbols under it in the order of the set."""
        symbols = {}
        for line in self.make("quickphrase").read_text().splitlines():
            typed, symbol = line.split(" ")
            symbols.setdefault(typed, []).append(symbol)
        return symbols


def check_mozc(exports, _):
    need("/usr/lib/mozc/mozc_server", "setpriv")
    own = exports.folder / "own.kig"
    # The longest reading that it takes, and a comment that would be too long.
    line = "-" * 40
    blocks = [f"［{title}］\n{line}\n凜\n{line}\n" for title in ("字" * 101, "ほ" * 100)]
    own.write_text("〈記号〉\n名称=例\n" + "".join(blocks), encoding="euc_jp")
    text = exports.make("mozc").read_text() + exports.make("mozc", str(own)).read_text()
    with tempfile.TemporaryDirectory(prefix="kigou-mozc-") as folder:
        words = [HERE / "mozc.py", folder]
        if os.geteuid() == 0:  # for whom the server does not work
            shutil.chown(folder, NOBODY)
            words = ["setpriv", f"--reuid={NOBODY}", "--clear-groups", *words]
        told = subprocess.run(words, input=text, stdout=subprocess.PIPE, encoding="utf-8").stdout.splitlines()
    entries = [line.replace("\t記号\t", "\t") for line in text.splitlines()]
    assert told[:1] == [f"taken\t{len(entries)}"], told[:1]
    missing = set(entries) - set(told[1:])
    assert len(entries) > 1500 and not missing, missing


def check_skk(exports, _):
    need("skk", "skkdic-expr2")
    first = {typed: symbols[0] for typed, symbols in exports.phrases().items() if not NOT_IN_SKK.search(typed)}
    keys = "\n".join(" ".join([*typed.capitalize(), "SPC"]).replace("-", "minus") for typed in first)
    for encoding in ("UTF-8", "EUC-JP"):
        dictionary = exports.make("skk", "--to", encoding)
        words = ["skk", "-f", dictionary, "-u", exports.folder / "own"]
        told = subprocess.run(words, input=keys, capture_output=True, text=True, check=True).stdout
        found = [json.loads(line)["preedit"] for line in told.splitlines()]
        wrong = [(typed, symbol, got) for (typed, symbol), got in zip(first.items(), found, strict=True) if got != "▼" + symbol]
        assert len(found) > 900 and not wrong, wrong
    # The tools of SKK's own dictionaries find nothing to change in it but its first line.
    again = subprocess.run(["skkdic-expr2", dictionary], capture_output=True, check=True).stdout
    assert again == dictionary.read_bytes().split(b"\n", 1)[1], again[:400]


def check_compose(exports, _):
    need("Xvfb", "setxkbmap")
    import compose

    path = exports.make("xcompose")
    sequences = {}
    for keys, symbol in re.findall('^<Multi_key> (.*) : "(.*)" U', path.read_text(), re.MULTILINE):
        sequences[keys.translate(str.maketrans("", "", "<> ")).replace("space", " ").replace("minus", "-")] = symbol
    rows = sequences | {"oc": "©", "j'": "j\u0301", "jhosi": ""}  # what the locale has stays
    for reader in (compose.Xkbcommon(path), compose.X11(path)):
        wrong = [(typed, symbol, got) for typed, symbol in rows.items() if (got := reader.type(typed)) != symbol]
        reader.close()
        assert len(set(sequences.values())) > 600 and not wrong, (reader, wrong)


def check_quickphrase(exports, module):
    sys.path.insert(0, str(HERE.parent / "fcitx"))
    from application import NO_DISPLAY, InputMethod, TextField

    phrases = exports.phrases()
    with InputMethod(module, without=NO_DISPLAY + ",emoji,spell,kigou") as fcitx:
        folder = fcitx.folder / "data/fcitx5/data/quickphrase.d"
        folder.mkdir(parents=True)
        shutil.copy(exports.make("quickphrase"), folder / "kigou.mb")
        fcitx.controller().ReloadAddonConfig("quickphrase")
        field = TextField(fcitx)
        for typed, symbols in list(phrases.items())[::20]:
            for key in ("Super+grave", *typed):
                got = field.press(key)
            offered = [text.partition(" ")[0] for _, text in got.candidates]
            assert offered[: len(symbols)] == symbols[: len(offered)] and offered, (typed, symbols, got)
            assert (got := field.press("1")).committed == symbols[0], (typed, symbols, got)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory(prefix="kigou-readers-") as folder:
        globals()["check_" + sys.argv[1]](Exports(sys.argv[2], pathlib.Path(folder)), *sys.argv[3:])
