"""A person's folders, and a program on a terminal of an emulator."""

import copy
import fcntl
import os
import pathlib
import pty
import select
import struct
import sys
import tempfile
import termios
import time
import unicodedata

try:
    import pyte
except ImportError:
    print("skipped: python3-pyte is not installed")
    sys.exit(77)

PATIENCE = 30  # seconds until something that must appear is given up


def width(ambiguous):
    """A terminal's table of widths."""
    wide = "WFA" if ambiguous == 2 else "WF"
    return lambda character: 2 if unicodedata.east_asian_width(character) in wide else 1


class Screen(pyte.Screen):
    """With the second screen that terminals have, which pyte lacks."""

    first = None  # what it shows, and its cursor

    def set_mode(self, *modes, **kwargs):
        super().set_mode(*modes, **kwargs)
        if kwargs.get("private") and 1049 in modes and not self.first:
            self.first = {y: dict(line) for y, line in self.buffer.items()}, copy.copy(self.cursor)

    def reset_mode(self, *modes, **kwargs):
        super().reset_mode(*modes, **kwargs)
        if kwargs.get("private") and 1049 in modes and self.first:
            self.erase_in_display(2)
            lines, self.cursor = self.first
            for y, line in lines.items():
                self.buffer[y].update(line)
            self.first = None

    def select_graphic_rendition(self, *attributes, private=False):
        """Editors send private ones, which pyte hands on and does not take."""
        if not private:
            super().select_graphic_rendition(*attributes)


class Terminal:
    """A program on a terminal of an emulator."""

    def __init__(self, command, environment, rows=24, columns=80, ambiguous=1):
        self.ambiguous = ambiguous
        self.screen = Screen(columns, rows)
        self.stream = pyte.ByteStream(self.screen)
        self.received = b""
        self.process, self.file = pty.fork()
        if self.process == 0:
            os.execvpe(command[0], command, environment)
        self.resize(rows, columns)

    def resize(self, rows, columns):
        fcntl.ioctl(self.file, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        self.screen.resize(rows, columns)

    def feed(self, seconds):
        """Shows what comes. Returns whether there may be more."""
        ready, _, _ = select.select([self.file], [], [], seconds)
        if not ready:
            return True
        try:
            data = os.read(self.file, 65536)
        except OSError:
            return False
        pyte.screens.wcwidth = width(self.ambiguous)
        self.received += data
        self.stream.feed(data)
        return bool(data)

    def wait(self, shows):
        """Waits until the screen shows a text, in the way a person reads it."""
        end = time.monotonic() + PATIENCE
        while shows not in self.text():
            if time.monotonic() > end or not self.feed(0.1):
                raise AssertionError(f"{shows!r} does not appear:\n{self.text()}")

    def type(self, keys):
        os.write(self.file, keys.encode())

    def follow(self, steps):
        """Pairs of what is waited for and what is typed then."""
        for shown, typed in steps:
            self.wait(shown)
            self.type(typed)

    def finish(self):
        """The exit status; what was written to the terminal since is shown."""
        end = time.monotonic() + PATIENCE
        while self.feed(1):
            if time.monotonic() > end:
                raise AssertionError(f"it does not end:\n{self.text()}")
        return os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])

    def cells(self):
        return [[self.screen.buffer[y][x].data for x in range(self.screen.columns)] for y in range(self.screen.lines)]

    def text(self):
        lines = ("".join(line).rstrip() for line in self.cells())
        return "\n".join(" ".join(line.split()) for line in lines)


class Person:
    """A person's folders, with sets that the program comes with; gone when it is left."""

    def __init__(self, kigou):
        self.temporary = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        folder = self.temporary.name
        self.folder = pathlib.Path(folder)
        self.environment = dict(os.environ) | {
            "PATH": f"{kigou}:{os.environ['PATH']}",
            "XDG_DATA_HOME": f"{folder}/data",
            "XDG_STATE_HOME": f"{folder}/state",
            "TMPDIR": folder,
            "TERM": "xterm-256color",
            "LC_ALL": "C.UTF-8",
        }
        for name in ("KIGOU_PROGRAM_DIR", "KIGOU_COMMON_DIR", "KIGOU_USER_DIR"):
            self.environment.pop(name, None)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.temporary.cleanup()

    def run(self, script, **size):
        return Terminal(["bash", "-c", script], self.environment, **size)

    def read(self, name):
        return (self.folder / name).read_text()


def run_checks(*checks):
    """Each with the folder of kigou, which is the first argument."""
    for check in checks:
        check(os.path.abspath(sys.argv[1]))
        print(check.__name__, "passes")
