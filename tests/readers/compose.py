"""A file for the Compose key, read by libxkbcommon and by libX11."""

import ctypes
import os
import subprocess

MULTI_KEY = 0xFF20
PRESS, SHIFT, PREEDIT_NOTHING_STATUS_NOTHING = 2, 1, 0x0008 | 0x0400


def keysyms(typed):
    return [MULTI_KEY] + [ord(key) for key in typed]


class Xkbcommon:
    """@param path  of the file"""

    def __init__(self, path):
        self.library = ctypes.CDLL("libxkbcommon.so.0")
        for name in ("context_new", "compose_table_new_from_file", "compose_state_new"):
            getattr(self.library, "xkb_" + name).restype = ctypes.c_void_p
        libc = ctypes.CDLL(None)
        libc.fopen.restype = ctypes.c_void_p
        context = ctypes.c_void_p(self.library.xkb_context_new(0))
        file = ctypes.c_void_p(libc.fopen(os.fsencode(path), b"r"))
        table = self.library.xkb_compose_table_new_from_file(context, file, b"C.UTF-8", 1, 0)
        self.state = ctypes.c_void_p(self.library.xkb_compose_state_new(ctypes.c_void_p(table), 0))

    def type(self, typed):
        """@return what Compose and these keys give; empty when that is no sequence"""
        for keysym in keysyms(typed):
            self.library.xkb_compose_state_feed(self.state, keysym)
        text = ctypes.create_string_buffer(64)
        self.library.xkb_compose_state_get_utf8(self.state, text, len(text))
        self.library.xkb_compose_state_reset(self.state)
        return text.value.decode()

    def close(self):
        self.library.xkb_compose_state_unref(self.state)


class KeyEvent(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int), ("display", ctypes.c_void_p),
        *((name, ctypes.c_ulong) for name in ("window", "root", "subwindow", "time")),
        *((name, ctypes.c_int) for name in ("x", "y", "x_root", "y_root")),
        ("state", ctypes.c_uint), ("keycode", ctypes.c_uint), ("same_screen", ctypes.c_int), ("rest", ctypes.c_long * 24),
    ]  # fmt: skip


class X11:
    """On a display of its own. @param path  of the file"""

    def __init__(self, path):
        told, number = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-noreset", "-displayfd", str(number)], pass_fds=[number], stderr=subprocess.DEVNULL)
        os.close(number)
        with os.fdopen(told) as display:
            name = ":" + display.readline().strip()
        subprocess.run(["setxkbmap", "-display", name, "-layout", "us", "-option", "compose:menu"], check=True)
        os.environ.update(XCOMPOSEFILE=str(path), XMODIFIERS="@im=none", LC_ALL="C.UTF-8")
        self.library = library = ctypes.CDLL("libX11.so.6")
        ctypes.CDLL(None).setlocale(6, b"")
        for name_of_function in ("XOpenDisplay", "XOpenIM", "XCreateIC"):
            getattr(library, name_of_function).restype = ctypes.c_void_p
        library.XDefaultRootWindow.restype = ctypes.c_ulong
        library.XSetLocaleModifiers(b"")
        self.display = ctypes.c_void_p(library.XOpenDisplay(name.encode()))
        root = library.XDefaultRootWindow(self.display)
        self.window = library.XCreateSimpleWindow(self.display, ctypes.c_ulong(root), 0, 0, 1, 1, 0, 0, 0)
        method = ctypes.c_void_p(library.XOpenIM(self.display, None, None, None))
        self.context = ctypes.c_void_p(
            library.XCreateIC(
                method, b"inputStyle", ctypes.c_ulong(PREEDIT_NOTHING_STATUS_NOTHING),
                b"clientWindow", ctypes.c_ulong(self.window), None,
            )
        )  # fmt: skip
        library.XSetICFocus(self.context)

    def type(self, typed):
        text = b""
        for keysym in keysyms(typed):
            event = KeyEvent(type=PRESS, display=self.display, window=self.window, same_screen=1)
            event.keycode = self.library.XKeysymToKeycode(self.display, ctypes.c_ulong(keysym))
            if self.library.XFilterEvent(ctypes.byref(event), ctypes.c_ulong(self.window)):
                continue
            buffer, status = ctypes.create_string_buffer(64), ctypes.c_int()
            self.library.Xutf8LookupString(self.context, ctypes.byref(event), buffer, len(buffer), None, ctypes.byref(status))
            text += buffer.value
        # What a whole sequence gives comes as an event without a key.
        pending = KeyEvent()
        while self.library.XCheckTypedEvent(self.display, PRESS, ctypes.byref(pending)):
            buffer, status = ctypes.create_string_buffer(64), ctypes.c_int()
            if not self.library.XFilterEvent(ctypes.byref(pending), 0):
                self.library.Xutf8LookupString(self.context, ctypes.byref(pending), buffer, len(buffer), None, ctypes.byref(status))
                text += buffer.value
        return text.decode()

    def close(self):
        self.server.terminate()
        self.server.wait()
