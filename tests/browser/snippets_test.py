#!/usr/bin/python3
"""Picks symbols from within shells and editors, and sees what comes into the line or the text.

usage: snippets_test.py bash|zsh|fish|vim|nvim|emacs FOLDER-OF-KIGOU FOLDER-OF-SNIPPETS
"""

import os
import shutil
import sys
import tempfile
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


def browse(terminal, steps):
    for shown, typed in steps:
        terminal.wait(shown)
        terminal.type(typed)


def wait_until(terminal, come, what):
    end = time.monotonic() + PATIENCE
    while not come():
        assert time.monotonic() < end and terminal.feed(0.1), f"{what} does not come:\n{terminal.text()}"


def wait_for_line(terminal, name):
    """Until the browser is gone and lines are typed again: then a pasted one is not run at once."""
    mode = terminal.screen.mode
    wait_until(terminal, lambda: MOUSE not in mode and BRACKETED_PASTE in mode, f"{name}: bracketed paste")


def person_at_home(kigou, folder):
    person = Person(kigou, folder)
    for name in ("ZDOTDIR", "XDG_CONFIG_HOME", "KIGOU_KEY", "PROMPT_COMMAND", "INPUTRC", "TMUX", "STY"):
        person.environment.pop(name, None)
    person.environment["HOME"] = folder
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
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
            person = person_at_home(kigou, folder)
            (person.folder / file).parent.mkdir(parents=True, exist_ok=True)
            (person.folder / file).write_text("\n".join([settings, *lines]) + "\n")
            terminal = person.run(f"cd {folder}; TERM={term} exec {start}")
            terminal.wait("P>")
            terminal.type("echo '前|後'")
            terminal.wait("P> echo '前|後'")
            terminal.type(LEFT * 2 + key)
            browse(terminal, PICK)
            terminal.wait("P> echo '前|、、後'")
            terminal.wait(SAID)
            assert "\n、、\n" not in terminal.text(), f"{name}: {terminal.text()}"
            terminal.type("X" + key)
            browse(terminal, LEAVE)
            wait_for_line(terminal, f"{shell}, {name}")
            terminal.wait("P> echo '前|、、X後'")
            terminal.type("Y" + ENTER)
            terminal.wait("\n前|、、XY後")
            terminal.type("exit" + ENTER)
            terminal.finish()


def check_editor(kigou, snippets, editor):
    command, steps, end, text = EDITORS[editor]
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
        person = person_at_home(kigou, folder)
        (person.folder / "text").write_text("一行\n前後終\n三行\n")
        terminal = person.run(f"cd {folder}; exec {command.format(snippets=snippets)}")
        for typed, picking, shown in steps:
            terminal.wait("一行")
            terminal.type(typed)
            browse(terminal, picking)
            for one in shown:
                wait_until(terminal, lambda: terminal.text().count(one) >= shown.count(one), one)
            if typed == steps[0][0]:
                terminal.wait(SAID)
        terminal.type(end)
        terminal.finish()
        written = (person.folder / "text").read_text()
        assert written == text, f"{written!r} is written"
        left = [name for name in os.listdir(folder) if name.startswith("kigou")]
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
