"""fcitx5 without a display, and an application that types through it over D-Bus.

Everything lies in a folder of its own and on a bus of its own; nothing of the person who runs
the tests is seen or changed.
"""

import dataclasses
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

try:
    import dbus
    import dbus.mainloop.glib
    from gi.repository import GLib
except ImportError as missing:
    print("skipped:", missing)
    sys.exit(77)
if not (shutil.which("fcitx5") and shutil.which("dbus-daemon")):
    print("skipped: no fcitx5 or no dbus-daemon")
    sys.exit(77)

PATIENCE = 30  # seconds
STATES = {"Shift": 1, "Control": 1 << 2, "Alt": 1 << 3, "Super": 1 << 6}
KEYS = {
    "space": 0x20, "grave": 0x60, "comma": 0x2C, "period": 0x2E, "plus": 0x2B, "BackSpace": 0xFF08, "Tab": 0xFF09, "Return": 0xFF0D,
    "Escape": 0xFF1B, "Home": 0xFF50, "Left": 0xFF51, "Up": 0xFF52, "Right": 0xFF53,
    "Down": 0xFF54, "PageUp": 0xFF55, "PageDown": 0xFF56, "End": 0xFF57, "F5": 0xFFC2,
    "Shift_L": 0xFFE1, "ISO_Left_Tab": 0xFE20,
}  # fmt: skip
PREEDIT, PASSWORD, FORMATTED_PREEDIT, SURROUNDING, SENSITIVE = 1 << 1, 1 << 3, 1 << 4, 1 << 6, 1 << 36
DRAWS_CANDIDATES = 1 << 39
NO_DISPLAY = "wayland,waylandim,xcb,xim,classicui,kimpanel,notificationitem,notifications"


def parts(text):
    return "".join(str(part) for part, _ in text)


@dataclasses.dataclass
class Got:
    """What came of one key."""

    handled: bool = True
    committed: str = ""
    preedit: str = ""  # in the text
    composed: str = ""  # in the window, where the application shows none
    upper: str = ""
    lower: str = ""
    candidates: tuple = ()
    chosen: int = -1
    pages: tuple = (False, False)

    def __str__(self):
        """'<committed> [preedit] upper | 1 item *2 item > | lower'; the key itself where it went through."""
        items = [("*" if i == self.chosen else "") + label + text for i, (label, text) in enumerate(self.candidates)]
        middle = ["<"] * self.pages[0] + items + [">"] * self.pages[1]
        shown = [self.upper, "  ".join(middle), self.lower]
        words = ["" if self.handled else "typed", f"<{self.committed}>" if self.committed else ""]
        words += [f"[{text}]" for text in (self.preedit, self.composed) if text]
        words += [" | ".join(shown) if any(shown) else ""]
        return " ".join(word for word in words if word) or "-"


class InputMethod:
    """A running fcitx5 with the module that is below a folder as installed."""

    def __init__(self, root, config="", without=NO_DISPLAY, engine="keyboard-us", **environment):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="kigou-fcitx-"))
        self.environment = {
            key: value for key, value in os.environ.items()
            if key not in ("DISPLAY", "WAYLAND_DISPLAY", "LANGUAGE", "LD_PRELOAD") and not key.startswith("KIGOU_")
        }  # fmt: skip
        addon = next(pathlib.Path(root).glob("lib*/**/libkigou.so")).parent
        own = {name: str(self.folder / name) for name in ("config", "cache", "run", "data", "state", "program", "common", "tmp")}
        for folder in own.values():
            os.mkdir(folder, 0o700)
        system = subprocess.run(["gcc", "-print-multiarch"], capture_output=True, text=True, check=True).stdout.strip()
        self.environment.update(
            HOME=str(self.folder), LC_ALL="C.UTF-8", TMPDIR=own["tmp"],
            XDG_CONFIG_HOME=own["config"], XDG_CACHE_HOME=own["cache"], XDG_RUNTIME_DIR=own["run"],
            XDG_DATA_HOME=own["data"], XDG_STATE_HOME=own["state"],
            XDG_DATA_DIRS=f"{root}/share:/usr/share", FCITX_ADDON_DIRS=f"{addon}:/usr/lib/{system}/fcitx5",
            KIGOU_PROGRAM_DIR=own["program"], KIGOU_COMMON_DIR=own["common"],
        )  # fmt: skip
        (self.folder / "config/fcitx5").mkdir()
        # It writes the name of the engine over the upper line when it likes.
        (self.folder / "config/fcitx5/config").write_text("[Behavior]\nShowInputMethodInformation=False\n")
        (self.folder / "config/fcitx5/profile").write_text(
            "[Groups/0]\nName=Default\nDefault Layout=us\n[Groups/0/Items/0]\nName=keyboard-us\n"
            f"[Groups/0/Items/1]\nName={engine}\n[GroupOrder]\n0=Default\n"
        )  # fmt: skip
        self.engine = engine
        (self.folder / "config/fcitx5/conf").mkdir()
        (self.folder / "config/fcitx5/conf/kigou.conf").write_text(config)
        self.environment.update(environment)
        self.without = without
        self.processes = []

    def put(self, place, name, title, blocks):
        """A symbol file; blocks are pairs of a path and lines of symbols."""
        rule = "-" * 40
        text = f"〈記号〉\n名称={title}\n" + "".join(f"［{path}］\n{rule}\n{lines}\n{rule}\n" for path, lines in blocks)
        (self.folder / place / name).write_bytes(text.encode("euc_jp"))

    def __enter__(self):
        bus = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, env=self.environment,
        )  # fmt: skip
        self.processes.append(bus)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
        self.bus = dbus.bus.BusConnection(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        try:
            self.start()
        except AssertionError as failure:
            self.__exit__(failure)
            raise
        return self

    def start(self):
        self.log = (self.folder / "log").open("ab")
        # A module with sanitizers needs their runtime in a program that was built without.
        environment = self.environment | {"LD_PRELOAD": os.environ.get("FCITX_PRELOAD", "")}
        fcitx = subprocess.Popen(["fcitx5", f"--disable={self.without}"], stdout=self.log, stderr=self.log, env=environment)
        self.processes.append(fcitx)
        self.wait("fcitx5 does not start", lambda: self.bus.name_has_owner("org.fcitx.Fcitx5"))
        self.controller().CurrentInputMethod()  # which it answers when all add-ons are loaded
        self.threads = self.running_threads()

    def wait(self, otherwise, until):
        end = time.time() + PATIENCE
        while not until():
            if self.process().poll() is not None or time.time() > end:
                raise AssertionError(otherwise + ":\n" + self.told())
            time.sleep(0.01)

    def running_threads(self):
        return len(os.listdir(f"/proc/{self.process().pid}/task"))

    def wait_for_notes(self):
        """Picks are noted by a thread."""
        self.wait("a note is not done", lambda: self.running_threads() == self.threads)

    def controller(self):
        return dbus.Interface(self.bus.get_object("org.fcitx.Fcitx5", "/controller"), "org.fcitx.Fcitx.Controller1")

    def told(self):
        return (self.folder / "log").read_text(errors="replace")

    def process(self):
        return self.processes[-1]

    def __exit__(self, failure, *_):
        ends = []
        for process in reversed(self.processes):
            process.terminate()
            try:
                ends.append(process.wait(PATIENCE))
            except subprocess.TimeoutExpired:
                process.kill()
                ends.append(process.wait())
        told = self.told()
        if failure:
            print(told[-4000:])
            return
        assert ends[0] == 0 and "Sanitizer" not in told and "runtime error" not in told, (ends, told[-4000:])
        shutil.rmtree(self.folder)


class TextField:
    """A text field with the focus, as an application has one."""

    def __init__(self, fcitx, capabilities=PREEDIT | FORMATTED_PREEDIT):
        self.bus = fcitx.bus
        self.server = self.bus.get_object("org.fcitx.Fcitx5", "/org/freedesktop/portal/inputmethod")
        method = dbus.Interface(self.server, "org.fcitx.Fcitx.InputMethod1")
        path, _ = method.CreateInputContext(dbus.Array([("program", "test")], signature="(ss)"))
        self.context = dbus.Interface(self.bus.get_object("org.fcitx.Fcitx5", path), "org.fcitx.Fcitx.InputContext1")
        self.got = Got()
        self.context.connect_to_signal("CommitString", self.commit)
        self.context.connect_to_signal("UpdateFormattedPreedit", self.preedit)
        self.context.connect_to_signal("UpdateClientSideUI", self.draw)
        self.set_capabilities(capabilities)
        self.context.FocusIn()
        fcitx.controller().SetCurrentIM(fcitx.engine)
        self.settle()

    def set_capabilities(self, capabilities):
        self.context.SetCapability(dbus.UInt64(capabilities | DRAWS_CANDIDATES))

    def commit(self, text):
        self.got.committed += str(text)

    def preedit(self, text, _cursor):
        self.got.preedit = parts(text)

    def draw(self, preedit, _cursor, upper, lower, candidates, chosen, _layout, before, after):
        self.got.composed = parts(preedit)
        self.got.upper, self.got.lower = parts(upper), parts(lower)
        self.got.candidates = tuple((str(label), str(text)) for label, text in candidates)
        self.got.chosen, self.got.pages = int(chosen), (bool(before), bool(after))

    def settle(self):
        """The window is drawn behind the answer to a key; two more answers come behind that."""
        peer = dbus.Interface(self.server, "org.freedesktop.DBus.Peer")
        for _ in range(2):
            peer.Ping()
        while GLib.MainContext.default().iteration(False):
            pass

    def press(self, key):
        """One key down and up: 'Control+Alt+comma', 'a', 'Return'. @return what came of it"""
        *modifiers, name = key.split("+") if len(key) > 1 else [key]
        symbol = KEYS.get(name) or (ord(name) if ord(name) < 0x100 else 0x01000000 + ord(name))
        states = sum(STATES[modifier] for modifier in modifiers)
        self.got.committed = ""
        press = lambda up: self.context.ProcessKeyEvent(dbus.UInt32(symbol), dbus.UInt32(0), dbus.UInt32(states), up, dbus.UInt32(0))
        self.got.handled = bool(press(False))
        press(True)
        self.settle()
        return dataclasses.replace(self.got)

    def click(self, what, *arguments):
        """A click in the window: NextPage, PrevPage, SelectCandidate with a number from 0."""
        self.got.handled, self.got.committed = True, ""
        getattr(self.context, what)(*arguments)
        self.settle()
        return dataclasses.replace(self.got)

    def focus(self, gained):
        """@return what came of it"""
        self.got.handled, self.got.committed = True, ""
        self.context.FocusIn() if gained else self.context.FocusOut()
        self.settle()
        return dataclasses.replace(self.got)

    def select(self, text, anchor, cursor):
        """What stands around the cursor, and that part of it is selected."""
        self.context.SetSurroundingText(text, dbus.UInt32(cursor), dbus.UInt32(anchor))
        self.settle()

    def destroy(self):
        self.context.DestroyIC()
        self.settle()


def run_checks(*checks):
    """Each with the folder of the module, which is the first argument."""
    for check in checks:
        check(os.path.abspath(sys.argv[1]))
        print(check.__name__, "passes")
