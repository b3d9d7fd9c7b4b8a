#!/usr/bin/env python3
"""Types command lines of kigou into a real shell, with the key for completion, and sees which
words the shell makes of them.

  completion_test.py SHELL FOLDER-OF-KIGOU FOLDER-OF-SCRIPTS

SHELL is bash, bash-completion (with the package of that name), zsh or fish. A stand-in for kigou
answers "complete" as kigou does and shows what else it is called with.
"""
import os
import pathlib
import pty
import select
import shutil
import sys
import tempfile
import time

PATIENCE = 60  # seconds for what must appear; only a failure takes so long

ODD = ["空 白", "空 白／下", "空 白／下／底", "it's", '"引"用', "$(touch made)", "`touch made`",
       "a;touch made", "円\\記号", "星*", "co:lon", "eq=ual", "驚!き", "~波", "#番", "{一,二}",
       "[角]", "& 和", "長い題", "長い題名", "長い\033[31m題"]

STAND_IN = """#!/bin/sh
case $1 in
complete) exec {kigou} "$@" ;;
esac
printf 'words:'
printf '%s<|>' "$@"
printf ':end\n'
"""

TAB = "\t"

# What is typed behind "kigou ", and the words that come of it.
CASES = [
    ("verb", "fil" + TAB, ["files"]),
    ("second name", "inf" + TAB + "x", ["info", "x"]),
    ("option", "list --cod" + TAB + "x", ["list", "--codes", "x"]),
    ("option of all", "--program-d" + TAB + "prog files", ["--program-dir", "prog", "files"]),
    ("choice", "export --format t" + TAB + "ex" + TAB, ["export", "--format", "text"]),
    ("choice behind =", "export --format=js" + TAB, ["export", "--format=json"]),
    ("short verb", "tr 標" + TAB, ["tr", "標準の記号"]),
    ("path in the standard set", "list 一般" + TAB + "矢" + TAB, ["list", "一般記号/矢印"]),
    ("wide separators stay", "list 一般記号／矢" + TAB, ["list", "一般記号／矢印"]),
    ("wide separator, no blank behind what goes on", "list 標準の記号／一般" + TAB + "矢" + TAB,
     ["list", "標準の記号／一般記号／矢印"]),
    ("what all share", "list --file 奇\\$ 長" + TAB + "名", ["list", "--file", "奇$", "長い題名"]),
    ("file title with a dollar", "list --file 奇" + TAB + "co" + TAB,
     ["list", "--file", "奇$", "co:lon"]),
    ("file title behind =", "list --file=奇" + TAB + "eq" + TAB,
     ["list", "--file=奇$", "eq=ual"]),
    ("blank, unquoted", "list 奇" + TAB + "空" + TAB + "下" + TAB + "底" + TAB,
     ["list", "奇$/空 白/下/底"]),
    ("blank, in '", "list '奇$/空" + TAB + "下/" + TAB, ["list", "奇$/空 白/下/底"]),
    ("blank, in \"", 'list "奇\\$/空' + TAB + "下/" + TAB, ["list", "奇$/空 白/下/底"]),
    ("behind a closed '", "list '奇$/空 白'/下/" + TAB, ["list", "奇$/空 白/下/底"]),
    ("a word begun twice", "list 奇\\$/'空 " + TAB + "下/" + TAB, ["list", "奇$/空 白/下/底"]),
    ("apostrophe", "list 奇\\$/it" + TAB, ["list", "奇$/it's"]),
    ("apostrophe in '", "list '奇$/it" + TAB, ["list", "奇$/it's"]),
    ("quotation mark", "list 奇\\$/\\\"" + TAB, ["list", '奇$/"引"用']),
    ("dollar and brackets", "list 奇\\$/\\$" + TAB, ["list", "奇$/$(touch made)"]),
    ("dollar in \"", 'list "奇\\$/\\$' + TAB, ["list", "奇$/$(touch made)"]),
    ("grave", "list 奇\\$/\\`" + TAB, ["list", "奇$/`touch made`"]),
    ("semicolon", "list 奇\\$/a" + TAB, ["list", "奇$/a;touch made"]),
    ("backslash", "list 奇\\$/円" + TAB, ["list", "奇$/円\\記号"]),
    ("star", "list 奇\\$/星" + TAB, ["list", "奇$/星*"]),
    ("colon typed", "list 奇\\$/co:" + TAB, ["list", "奇$/co:lon"]),
    ("equals typed", "list 奇\\$/eq=" + TAB, ["list", "奇$/eq=ual"]),
    ("exclamation mark", "list 奇\\$/驚" + TAB, ["list", "奇$/驚!き"]),
    ("tilde", "list --file 奇\\$ \\~" + TAB, ["list", "--file", "奇$", "~波"]),
    ("hash", "list --file 奇\\$ \\#" + TAB, ["list", "--file", "奇$", "#番"]),
    ("braces", "list 奇\\$/\\{" + TAB, ["list", "奇$/{一,二}"]),
    ("brackets", "list 奇\\$/\\[" + TAB, ["list", "奇$/[角]"]),
    ("ampersand", "list 奇\\$/\\&" + TAB, ["list", "奇$/& 和"]),
    ("file on disk", "check on" + TAB, ["check", "on disk.kig"]),
    ("file on disk behind =", "recover x --output=on" + TAB, ["recover", "x", "--output=on disk.kig"]),
    ("folder on disk", "--program-dir pr" + TAB + "files",
     ["--program-dir", "prog/files"]),
    ("nothing of a damaged set", "list 壊/x" + TAB, ["list", "壊/x"]),
    ("nothing behind an unknown verb", "nix 一" + TAB, ["nix", "一"]),
    ("behind other commands", "true; A=b true | A=b kigou tr 標" + TAB, ["tr", "標準の記号"]),
]

# fish takes the name behind < for a word.
NOT_IN_FISH = [
    ("behind <", "export <on\\ disk.kig 標" + TAB, ["export", "標準の記号"]),
    ("behind 2>", "export 2>/dev/null --format=t" + TAB + "ex" + TAB, ["export", "--format=text"]),
    ("a file behind <", "put x <on" + TAB, ["put", "x"]),
]


class Shell:
    def __init__(self, argv, environment, folder):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.execvpe(argv[0], argv, environment)
        self.seen = ""

    def type(self, keys):
        os.write(self.terminal, keys.encode())

    def wait_for(self, text):
        """What appears up to a text, the text not counted."""
        deadline = time.monotonic() + PATIENCE
        while text not in self.seen:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.terminal], [], [], left)[0]:
                raise TimeoutError(f"{text!r} does not appear in {self.seen!r}")
            self.seen += os.read(self.terminal, 65536).decode(errors="replace")
        before, self.seen = self.seen.split(text, 1)
        return before

    def words_of(self, keys):
        self.type(keys + "\r")
        self.wait_for("words:")
        return self.wait_for("<|>:end").split("<|>")


def write_set(path, title, titles):
    rule = "-" * 40
    lines = ["〈記号〉", "名称=" + title]
    for one in titles:
        lines += [f"［{one}］", rule, "→", rule]
    path.write_text("\n".join(lines) + "\n", encoding="euc_jp")


def start(shell, scripts, environment, folder):
    if shell == "fish":
        argv = ["fish", "--no-config", "-C",
                f"function fish_prompt; echo '> '; end; set -g fish_greeting; source {scripts}/kigou.fish"]
    elif shell == "zsh":
        argv = ["zsh", "-f", "-i"]
    else:
        argv = ["bash", "--norc", "--noprofile", "-i"]
    started = Shell(argv, environment, folder)
    if shell == "zsh":
        started.type(f"fpath=({scripts} $fpath); autoload -Uz compinit; compinit -D -u\r")
    elif shell == "bash":
        started.type(f". {scripts}/kigou.bash\r")
    elif shell == "bash-completion":
        started.type(f". /usr/share/bash-completion/bash_completion; . {scripts}/kigou.bash\r")
    return started


def main():
    shell, kigou, scripts = sys.argv[1], os.path.realpath(sys.argv[2]), os.path.realpath(sys.argv[3])
    program = shell.split("-")[0]
    if not shutil.which(program) or (shell == "bash-completion" and not os.path.exists(
            "/usr/share/bash-completion/bash_completion")):
        print(f"there is no {shell} here, so nothing is tested")
        return 77
    failures = 0
    with tempfile.TemporaryDirectory() as name:
        scratch = pathlib.Path(name)
        for folder in ["bin", "prog", "common", "home", "place"]:
            (scratch / folder).mkdir()
        place = scratch / "place"
        (place / "prog").mkdir()
        stand_in = scratch / "bin" / "kigou"
        stand_in.write_text(STAND_IN.format(kigou=kigou + "/kigou"))
        stand_in.chmod(0o755)
        top = pathlib.Path(__file__).resolve().parents[2]
        shutil.copy(top / "data" / "default.kig", scratch / "prog")
        write_set(scratch / "common" / "odd.kig", "奇$", ODD)
        (scratch / "common" / "damaged.kig").write_text("〈記号〉\n", encoding="euc_jp")
        (place / "on disk.kig").write_text("")
        environment = {
            "HOME": str(scratch / "home"), "PATH": f"{scratch}/bin:/usr/bin:/bin", "TERM": "xterm",
            "LC_ALL": "C.UTF-8", "KIGOU_PROGRAM_DIR": str(scratch / "prog"),
            "KIGOU_COMMON_DIR": str(scratch / "common")}
        started = start(shell, scripts, environment, place)
        cases = CASES + (NOT_IN_FISH if program != "fish" else [])
        for name, keys, expected in cases:
            try:
                words = started.words_of(keys if "kigou" in keys else "kigou " + keys)
            except TimeoutError as error:
                print(f"{name}: {error}")
                failures += 1
                started = start(shell, scripts, environment, place)
                continue
            if words != expected:
                print(f"{name}: {words} in place of {expected}")
                failures += 1
        try:
            started.type("kigou re" + TAB + TAB)
            for shown in ["rename"] + ["Rename a title"] * (program != "bash") + ["recover"]:
                started.wait_for(shown)
        except TimeoutError as error:
            print(f"what is shown of several: {error}")
            failures += 1
        if (place / "made").exists():
            print("a title was run as a command")
            failures += 1
    print(f"{len(cases)} lines typed into {shell}, {failures} failures")
    return failures != 0


if __name__ == "__main__":
    sys.exit(main())
