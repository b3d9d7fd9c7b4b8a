#!/usr/bin/python3
"""Where what was taken goes: files, the clipboard of a terminal, that of tmux and of screen.

usage: picks_out_test.py files|clipboard|tmux|screen FOLDER-OF-KIGOU
"""

import base64
import os
import shutil
import sys

from terminal import Person

ENTER, LEAVE = "\r", "q"
ARROWS = "一般記号/矢印"  # begins with →

# Name, what is there before, the command, keys (none: no browser opens), its exit status, a
# command that looks at what came of it, and what that prints.
FILES = [
    ("a new file", "", f"kigou --pick-to new {ARROWS}", ENTER, 0, "cat new", "→"),
    ("an old file", "seq 99 >old; chmod 664 old", f"kigou --pick-to=old {ARROWS}", ENTER, 0, "cat old; stat -c %a old; ls", "→ 664 errors old"),
    ("JSON", "", f"kigou --json --pick-to new {ARROWS}", ENTER, 0, "grep -o U+.... new", "U+2192"),
    ("nothing taken, an old file", "seq 2 >old", f"kigou --pick-to old {ARROWS}", LEAVE, 1, "cat old", "1 2"),
    ("nothing taken, a new file", "", f"kigou --json --pick-to new {ARROWS}", LEAVE, 1, "ls", "errors"),
    ("through a link", "echo x >real; ln -s real link", f"kigou --pick-to link {ARROWS}", ENTER, 0, "cat real; readlink link", "→ real"),
    ("through a link to nothing", "ln -s real link", f"kigou --pick-to link {ARROWS}", ENTER, 0, "cat real", "→"),
    ("a second name", "echo x >one; ln one two", f"kigou --pick-to one {ARROWS}", ENTER, 0, "cat two", "→"),
    ("a pipe", "mkfifo pipe; cat pipe >got &", f"kigou --pick-to pipe {ARROWS}", ENTER, 0, "wait; cat got", "→"),
    ("a shell's pipe", "", f"kigou --pick-to >(cat >got) {ARROWS}", ENTER, 0, "wait $!; cat got", "→"),
    ("the standard output, a file", "", f"(echo a; kigou --pick-to /dev/stdout {ARROWS}; echo b) >got", ENTER, 0, "cat got", "a → b"),
    ("the standard output, a pipe", "", f"(kigou --pick-to /dev/stdout {ARROWS}; exit $?) | cat >got", ENTER, 0, "cat got", "→"),
    ("a full disk", "", f"kigou --pick-to /dev/full {ARROWS}", ENTER, 2, "cat errors", "kigou: cannot write /dev/full: No space left on device kigou: taken: →"),
    ("no folder", "", "kigou --pick-to absent/new", None, 2, "cat errors", "kigou: cannot write absent/new: No such file or directory"),
    ("no name", "", "kigou --pick-to ''", None, 2, "cat errors", "kigou: --pick-to takes the name of a file"),
    ("a folder", "mkdir folder", "kigou --pick-to folder", None, 2, "cat errors", "kigou: cannot write folder: Is a directory"),
    ("below a file", ">file", "kigou --pick-to file/x", None, 2, "cat errors", "kigou: cannot write file/x: Not a directory"),
    ("a read-only file", "seq 2 >old; chmod 444 old", "kigou --pick-to old", None, 2, "cat errors old", "kigou: cannot write old: Permission denied 1 2"),
    ("a read-only folder", "mkdir -m 555 shut", "kigou --pick-to shut/new", None, 2, "cat errors", "kigou: cannot write shut/new: Permission denied"),
    ("a file in a read-only folder", "mkdir shut; echo xxxx >shut/old; chmod 555 shut", f"kigou --pick-to shut/old {ARROWS}", ENTER, 0, "cat shut/old", "→"),
]


def check_files(kigou):
    for name, before, command, keys, status, look, shown in FILES:
        with Person(kigou) as person:
            place = person.folder / "place"
            place.mkdir()
            terminal = person.run(f"kigou files >/dev/null 2>&1; cd {place}; {before or ':'}\n{command} 2>errors; s=$?; {{ {look}; }} >../shown; chmod -R u+w .; exit $s")
            if keys:
                terminal.follow([("右矢印", keys)])
            assert terminal.finish() == status, f"{name}: another exit status than {status}: {terminal.text()}"
            given = " ".join(person.read("shown").split())
            assert given == shown, f"{name}: {given!r}"


def set_clipboard(text, kind="c"):
    return f"\x1b]52;{kind};".encode() + base64.b64encode(text.encode())


def check_clipboard(kigou):
    """The terminal is told when it is itself again, whoever reads the standard output."""
    rows = [
        ("a terminal", "TERM=xterm-256color", ENTER, 0, "given →", set_clipboard("→") + b"\a"),
        ("two symbols", "TERM=xterm-256color", " j q", 0, "given →←", set_clipboard("→←") + b"\a"),
        ("tmux on a far machine", "TERM=tmux-256color", ENTER, 0, "given →", b"\x1bPtmux;\x1b" + set_clipboard("→") + b"\a\x1b\\"),
        ("screen on a far machine", "TERM=screen", ENTER, 0, "given →", b"\x1bP" + set_clipboard("→") + b"\a\x1b\\"),
        ("a tmux that is gone", "TMUX=/nowhere,1,0 TERM=screen", ENTER, 0, "given →", b"\x1bPtmux;\x1b" + set_clipboard("→") + b"\a\x1b\\"),
        ("a console", "TERM=linux", ENTER, 3, "given →", None),
        ("nothing taken", "TERM=xterm-256color", LEAVE, 1, "given", None),
    ]
    for name, variables, keys, status, given, bytes_sent in rows:
        with Person(kigou) as person:
            terminal = person.run(f"x=$({variables} kigou --copy {ARROWS}); s=$?; echo given $x; exit $s")
            terminal.follow([("右矢印", keys)])
            assert terminal.finish() == status and given.encode() in terminal.received, f"{name}: {terminal.text()}"
            left, _, behind = terminal.received.rpartition(b"\x1b[?2004l")
            assert left and behind.count(b"\x1b]52;") == (bytes_sent is not None), f"{name}: {behind}"
            assert not bytes_sent or bytes_sent in behind, f"{name}: {behind}"


def check_tmux(kigou):
    """As tmux comes: no programs' clipboard is passed on, so it is asked itself."""
    with Person(kigou) as person:
        tmux = f"tmux -S {person.folder}/socket -f /dev/null"
        outer = person.run(f"{tmux} new 'kigou --copy {ARROWS}; echo status $?; read x'; {tmux} kill-server")
        try:
            outer.follow([("右矢印", ENTER), ("status 0", "")])
            buffer = person.run(f"{tmux} show-buffer")
            assert buffer.finish() == 0 and buffer.text().strip() == "→", buffer.text()
        finally:
            person.run(f"{tmux} kill-server").finish()
        outer.finish()
        assert set_clipboard("→", "") in outer.received, outer.received


def check_screen(kigou):
    with Person(kigou) as person:
        (person.folder / "screenrc").write_text("autodetach off\nstartup_message off\n")
        outer = person.run(f"cd {person.folder}; SCREENDIR=$PWD/screens screen -c screenrc -U bash -c 'kigou --copy {ARROWS}; echo status $?; read x'")
        outer.follow([("右矢印", " " * 400), ("taken: ~→", "q"), ("status 0", ENTER)])
        outer.finish()
        assert set_clipboard("→" * 400) + b"\a" in outer.received, outer.received


CHECKS = {"files": check_files, "clipboard": check_clipboard, "tmux": check_tmux, "screen": check_screen}


def main():
    check, kigou = sys.argv[1], os.path.abspath(sys.argv[2])
    if check in ("tmux", "screen") and not shutil.which(check):
        print(f"there is no {check} here, so nothing is tested")
        return 77
    if os.geteuid() == 0 and "TESTED_WITHOUT_RIGHTS" not in os.environ:
        # File modes hold for root as well then.
        os.environ["TESTED_WITHOUT_RIGHTS"] = "yes"
        os.execvp("setpriv", ["setpriv", "--bounding-set=-dac_override", sys.executable, *sys.orig_argv[1:]])
    CHECKS[check](kigou)
    return 0


if __name__ == "__main__":
    sys.exit(main())
