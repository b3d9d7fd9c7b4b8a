#!/usr/bin/python3
"""A real terminal under fcitx5's own candidate window: what is typed and clicked arrives in the program that reads it.

usage: window_test.py FOLDER-OF-MODULE FOLDER-FOR-PICTURES
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time

from application import PATIENCE, InputMethod

TOOLS = ("Xvfb", "xterm", "xdotool", "import")
WITHOUT = "wayland,waylandim,kimpanel,notificationitem,notifications"
OPEN = "ctrl+alt+comma"
PICTURE = ("-crop", "330x298+0+0", "+repage", "-colors", "64")


class Screen:
    """A display without a monitor, with a terminal on it whose program keeps what it reads."""

    def __init__(self, root, language):
        told, number = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(number), "-screen", "0", "700x500x24"], pass_fds=[number], stderr=subprocess.DEVNULL
        )  # fmt: skip
        os.close(number)
        with os.fdopen(told) as display:
            display = ":" + display.readline().strip()
        self.fcitx = InputMethod(root, without=WITHOUT, KIGOU_PROGRAM_DIR="", LANGUAGE=language, DISPLAY=display, XMODIFIERS="@im=fcitx")
        self.read = self.fcitx.folder / "read"

    def __enter__(self):
        self.fcitx.__enter__()
        self.terminal = subprocess.Popen(
            ["xterm", "-fa", "DejaVu Sans Mono", "-fd", "IPAGothic", "-fs", "14", "-u8", "-geometry", "60x20+0+0", "-e", "sh", "-c", f"printf '$ ' && exec cat >{self.read}"],
            env=self.fcitx.environment,
        )  # fmt: skip
        self.wait("the terminal's program does not start", self.read.exists)
        self.wait("the terminal does not get the focus", self.focus)
        return self

    def __exit__(self, *failure):
        self.terminal.kill()
        self.fcitx.__exit__(*failure)
        self.server.terminate()
        self.server.wait()

    def focus(self):
        """The window may not be there yet, and there is no window manager to care."""
        terminal = self.do("search", "--onlyvisible", "--class", "xterm")
        self.do("windowfocus", *terminal.split())
        return terminal and self.do("getwindowfocus") == terminal

    def do(self, *words):
        """xdotool. @return what it writes"""
        return subprocess.run(["xdotool", *words], env=self.fcitx.environment, capture_output=True, text=True, timeout=PATIENCE).stdout

    def wait(self, otherwise, until):
        end = time.time() + PATIENCE
        while not (found := until()):
            assert time.time() < end, otherwise
            time.sleep(0.02)
        return found

    def window(self):
        """Size and place of the candidate window; nothing while there is none."""
        shown = self.do("search", "--onlyvisible", "--name", "Fcitx5 Input Window", "getwindowgeometry", "--shell")
        return dict(line.split("=") for line in shown.split() if "=" in line)

    def pixels(self):
        return self.capture("rgb:-")

    def capture(self, path, *how):
        return subprocess.run(["import", "-window", "root", *how, path], env=self.fcitx.environment, capture_output=True, check=True).stdout

    def press(self, *keys):
        """Waits for a candidate window, and until another picture stands."""
        before = self.pixels()
        self.do("key", "--delay", "40", *keys)
        self.wait(f"{keys}: the picture stays as it is", lambda: self.window() and self.pixels() != before)
        self.wait(f"{keys}: the picture does not stand", lambda: self.pixels() == self.pixels())
        return self.window()

    def expect(self, text):
        self.do("key", "Return")
        self.wait(f"{text} does not arrive in {self.read}", lambda: self.read.read_text().endswith(text + "\n"))


def check_window(screen, pictures):
    screen.do("type", "--delay", "40", "echo 25")
    screen.press(OPEN)
    screen.press(*"sesshi")
    screen.do("key", "1")
    screen.expect("echo 25℃")
    screen.press(OPEN)
    window = screen.press("4", "2")
    screen.capture(pictures / "window-browsing.png", *PICTURE)
    row, rows = 2 + 1, 2 + 6  # below two lines six arrows, of which the second is clicked
    x, y = int(window["X"]) + 20, int(window["Y"]) + int(window["HEIGHT"]) * (2 * row + 1) // (2 * rows)
    screen.do("mousemove", str(x), str(y), "click", "1")
    screen.wait("the click does not close it", lambda: not screen.window())
    screen.expect("←")
    screen.press(OPEN)
    screen.press(*"yajirushi")
    screen.capture(pictures / "window-searching.png", *PICTURE)
    screen.do("key", "Escape", "Escape")
    screen.wait("it does not close", lambda: not screen.window())
    screen.do("type", "b")
    screen.expect("\nb")


def main():
    missing = [tool for tool in TOOLS if not shutil.which(tool)]
    if missing:
        print("skipped: no", *missing)
        sys.exit(77)
    pictures = pathlib.Path(sys.argv[2])
    pictures.mkdir(exist_ok=True)
    with Screen(os.path.abspath(sys.argv[1]), "ja") as screen:
        check_window(screen, pictures)


if __name__ == "__main__":
    main()
