#!/usr/bin/python3
"""Picks symbols from within shells and editors, and sees what comes into the line or the text.

usage: snippets_test.py bash|zsh|fish|vim|nvim|emacs FOLDER-OF-KIGOU FOLDER-OF-SNIPPETS
"""

import os
import shutil
import sys
import time

from terminal import PATIENCE, Person

DOWN, LEFT, ENTER, TAB, ESC = "\x1b[B", "\x1b[D", "\r", "\t", "\x1b"
BRACKETED_PASTE, MOUSE = 2004 << 5, 1000 << 5  # as the emulator has private modes

SAID = "kigou: put 拡張の記号 among"  # at its first start, beside what was picked
PICK = [("記述記号", TAB + TAB), ("U+3000", DOWN), ("U+3001", "  q")]  # 、 twice
LEAVE = [("記述記号", "q")]

# The file a shell reads when it starts, how it is started, what makes its keymap vi's, and how
# its variable is set to Ctrl+X k.
SHELLS = {
    "bash": (".bashrc", "PS1='P> '", "bash -i", "set -o vi", "KIGOU_KEY='\\C-xk'"),
    "zsh": (".zshrc", "PS1='P> '", "zsh -di", "bindkey -v", "KIGOU_KEY='^Xk'"),
    "fish": (
        ".config/fish/config.fish",
        "function fish_prompt; echo 'P> '; end; function fish_mode_prompt; end; set -g fish_greeting",
        "fish -i",
        "fish_vi_key_bindings",
        "set KIGOU_KEY \\cxk",
    ),
}

# What is typed with the key that opens the browser last, what is done there, and what must be
# shown then, as often as it stands there; the keys that end it, and what the file holds.
VI = (
    [
        ("j:Kigou\r", PICK, ["前、、後終"]),
        ("0i\x0b\x0b", PICK, ["、、前、、後終", "INSERT"]),
        ("X" + ESC + "A\x0b\x0b", PICK, ["、、X前、、後終、、", "INSERT"]),
        ("Y\x0b\x0b", LEAVE, ["、、X前、、後終、、Y", "INSERT"]),
        ("Z" + ESC + ":Kigou\r", LEAVE, ["、、X前、、後終、、YZ"]),
    ],
    ":wq\r",
    "一行\n、、X前、、後終、、YZ\n三行\n",
)
EDITORS = {
    "vim": ("vim -u NONE -i NONE -N -c 'source {snippets}/kigou.vim' text", *VI),
    "nvim": ("nvim -u NONE -i NONE -c 'source {snippets}/kigou.vim' text", *VI),
    "emacs": (
        "emacs -nw -Q -l {snippets}/kigou.el --eval"
        " '(progn (setq make-backup-files nil) (global-set-key (kbd \"C-c k\") (quote kigou-insert)))' text",
        [
            ("\x182\x0e\x06\x03k", PICK, ["前、、後終"] * 2),
            ("X\x03k", LEAVE, ["前、、X後終"] * 2),
        ],
        "Y\x18\x13\x18\x03",
        "一行\n前、、XY後終\n三行\n",
    ),
}


def wait_until(terminal, come, what):
    end = time.monotonic() + PATIENCE
    while not come():
        assert time.monotonic() < end and terminal.feed(0.1), f"{what} does not come:\n{terminal.text()}"


def person_at_home(kigou):
    person = Person(kigou)
    for name in ("ZDOTDIR", "XDG_CONFIG_HOME", "KIGOU_KEY", "PROMPT_COMMAND", "INPUTRC", "TMUX", "STY"):
        person.environment.pop(name, None)
    person.environment["HOME"] = str(person.folder)
    return person


def check_shell(kigou, snippets, shell):
    file, settings, start, vi, other_key = SHELLS[shell]
    source = f"source {snippets}/kigou.{shell}"
    rows = [
        ("usual keymap", ESC + "k", [source], "xterm-256color"),
        ("vi's keymap", "\x18k", [vi, other_key, source], "xterm-256color"),
        ("a terminal without a second screen", ESC + "k", [source], "vt220"),
    ]
    for name, key, lines, term in rows:
        with person_at_home(kigou) as person:
            (person.folder / file).parent.mkdir(parents=True, exist_ok=True)
            (person.folder / file).write_text("\n".join([settings, *lines]) + "\n")
            terminal = person.run(f"cd {person.folder}; TERM={term} exec {start}")
            terminal.follow([("P>", "echo '前|後'"), ("P> echo '前|後'", LEFT * 2 + key), *PICK, ("P> echo '前|、、後'", ""), (SAID, "")])
            assert "\n、、\n" not in terminal.text(), f"{name}: {terminal.text()}"
            terminal.follow([(SAID, "X" + key), *LEAVE])
            # The browser is gone and lines are typed again: then a pasted one is not run at once.
            mode = terminal.screen.mode
            wait_until(terminal, lambda: MOUSE not in mode and BRACKETED_PASTE in mode, f"{shell}, {name}: bracketed paste")
            terminal.follow([("P> echo '前|、、X後'", "Y" + ENTER), ("\n前|、、XY後", "exit" + ENTER)])
            terminal.finish()


def check_editor(kigou, snippets, editor):
    command, steps, end, text = EDITORS[editor]
    with person_at_home(kigou) as person:
        (person.folder / "text").write_text("一行\n前後終\n三行\n")
        terminal = person.run(f"cd {person.folder}; exec {command.format(snippets=snippets)}")
        for typed, picking, shown in steps:
            terminal.follow([("一行", typed), *picking])
            for one in shown:
                wait_until(terminal, lambda: terminal.text().count(one) >= shown.count(one), one)
            if typed == steps[0][0]:
                terminal.wait(SAID)
        terminal.type(end)
        terminal.finish()
        written = person.read("text")
        assert written == text, f"{written!r} is written"
        left = [name for name in os.listdir(person.folder) if name.startswith("kigou")]
        assert not left, f"{left} stay"


def main():
    program, kigou, snippets = sys.argv[1], os.path.abspath(sys.argv[2]), os.path.abspath(sys.argv[3])
    if not shutil.which(program):
        print(f"there is no {program} here, so nothing is tested")
        return 77
    check = check_shell if program in SHELLS else check_editor
    check(kigou, snippets, program)
    return 0


if __name__ == "__main__":
    sys.exit(main())
