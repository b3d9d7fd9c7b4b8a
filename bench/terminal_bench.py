#!/usr/bin/python3
"""The browser as a person waits for it, on a pseudo-terminal: medians of 50.

usage: terminal_bench.py KIGOU

The person has 100 sets of 10,000 symbols each. A time ends with the last byte that comes: for
the start from the fork of the process, for a key from the write of it.
"""

import fcntl
import os
import pathlib
import pty
import select
import signal
import statistics
import struct
import sys
import tempfile
import termios
import time

ROUNDS = 50
QUIET = 0.1  # seconds without a byte until the last one was the last
PREPARING = 0.4  # seconds in which nothing is typed, and the search is made ready
SIZES = [(24, 80), (60, 200)]

DOWN, UP, PAGE_DOWN, PAGE_UP, RIGHT, LEFT = "\x1b[B", "\x1b[A", "\x1b[6~", "\x1b[5~", "\x1b[C", "\x1b[D"
TAB, BACK_TAB, ERASE, LEAVE_SEARCH = "\t", "\x1b[Z", "\x15", "\x1b"

# What is measured, keys that lead to it, the key, and keys that lead back.
KEYS = [
    ("cursor down", [], DOWN, [UP]),
    ("page down", [], PAGE_DOWN, [PAGE_UP]),
    ("into a title", [], RIGHT, [LEFT]),
    ("back from a title", [RIGHT], LEFT, []),
    ("Tab", [], TAB, [BACK_TAB]),
    ("a letter of a search", ["/", "y", "a"], "j", [ERASE, LEAVE_SEARCH]),
]


def write_sets(folder):
    folder.mkdir(parents=True)
    rule = "-" * 40
    titles = "".join(
        f"［題{i // 10}{f'／{i % 10}' if i % 10 else ''}］\n{rule}\n→←↑↓☆★○●◎◇\n{rule}\n" for i in range(1000)
    )
    for number in range(100):
        text = f"〈記号〉\n名称=例{number:02}\n{titles}"
        (folder / f"{number:02}.kig").write_bytes(text.encode("euc_jp"))


class Browser:
    def __init__(self, kigou, environment, rows, columns):
        self.begin = time.perf_counter()
        self.process, self.file = pty.fork()
        if self.process == 0:
            size = struct.pack("HHHH", rows, columns, 0, 0)
            fcntl.ioctl(0, termios.TIOCSWINSZ, size)
            os.execve(kigou, [kigou, "browse", "例00"], environment)

    def answer(self):
        """Milliseconds until the last byte, and how many came."""
        count, last = 0, self.begin
        while select.select([self.file], [], [], QUIET if count else 10)[0]:
            data = os.read(self.file, 65536)
            last = time.perf_counter()
            count += len(data)
        return (last - self.begin) * 1000, count

    def press(self, key):
        self.begin = time.perf_counter()
        os.write(self.file, key.encode())
        return self.answer()

    def end(self):
        os.kill(self.process, signal.SIGTERM)
        while True:
            try:
                if not os.read(self.file, 65536):
                    break
            except OSError:
                break
        os.close(self.file)
        os.waitpid(self.process, 0)


def tell(name, rows, columns, answers):
    times = sorted(milliseconds for milliseconds, _ in answers)
    median, late = statistics.median(times), times[len(times) * 9 // 10]
    count = int(statistics.median(count for _, count in answers))
    print(f"{columns}x{rows}  {name:28} {median:7.2f} ms, nine of ten within {late:7.2f} ms, {count:6} bytes", flush=True)


def main():
    kigou = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": folder,
            "XDG_DATA_HOME": f"{folder}/data",
            "XDG_STATE_HOME": f"{folder}/state",
            "TMPDIR": folder,
            "TERM": "xterm-256color",
            "LC_ALL": "C.UTF-8",
        }
        write_sets(pathlib.Path(folder) / "data/kigou")
        for rows, columns in SIZES:
            starts = []
            for _ in range(ROUNDS + 1):
                browser = Browser(kigou, environment, rows, columns)
                starts.append(browser.answer())
                browser.end()
            tell("first picture", rows, columns, starts[1:])  # the first of all copies shipped sets
            searches = []
            for _ in range(ROUNDS):
                browser = Browser(kigou, environment, rows, columns)
                browser.answer()
                time.sleep(PREPARING)
                searches.append(browser.press("/"))
                browser.end()
            tell("the first search", rows, columns, searches)
            browser = Browser(kigou, environment, rows, columns)
            browser.answer()
            for name, before, key, after in KEYS:
                answers = []
                for _ in range(ROUNDS):
                    for one in before:
                        browser.press(one)
                    answers.append(browser.press(key))
                    for one in after:
                        browser.press(one)
                tell(name, rows, columns, answers)
            browser.end()


if __name__ == "__main__":
    main()
