"""A screen of its own for tests of what is seen: an X server without hardware, with a window manager.

Nothing here sleeps for a fixed time: what has to happen is waited for.
"""

import ctypes
import os
import pathlib
import shutil
import struct
import subprocess
import tempfile
import time
import zlib

PATIENCE = 30  # seconds; a busy machine with two cores may be slow

# Windows get the focus when they come up and stand where they want to; a bar with tasks and a tray, no menus.
WINDOW_MANAGER = """<?xml version="1.0"?>
<JWM>
  <Tray x="0" y="-1" height="30" autohide="off"><TaskList maxwidth="250"/><Dock/></Tray>
  <FocusModel>click</FocusModel>
  <Key mask="A" key="F4">close</Key>
  <Desktops width="1" height="1"><Background type="solid">#5a6b7b</Background></Desktops>
  <StartupCommand></StartupCommand>
</JWM>
"""


def wait_for(condition, what):
    """The first value of condition() that is true."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if value := condition():
            return value
        time.sleep(0.01)
    raise AssertionError(f"waited in vain for {what}")


class Screen:
    def __init__(self, size="1280x800", window_manager=True):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="screen-"))
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", size + "x24", "-fbdir", self.root, "-nolisten", "tcp",
             "-noreset"], pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.display = ":" + number.readline().strip()
        self.environment = os.environ | {"DISPLAY": self.display}
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.manager = None
        if window_manager:
            config = self.root / "jwmrc"
            config.write_text(WINDOW_MANAGER)
            self.manager = subprocess.Popen(["jwm", "-f", config], env=self.environment | {"HOME": str(self.root)},
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            wait_for(lambda: self.xdotool("get_num_desktops"), "the window manager")

    def close(self):
        for process in filter(None, (self.manager, self.server)):
            process.terminate()
            process.wait()
        shutil.rmtree(self.root)

    def xdotool(self, *arguments):
        """What it says; None if it fails."""
        result = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, capture_output=True, text=True,
                                timeout=PATIENCE)
        return result.stdout.strip() if result.returncode == 0 else None

    def windows(self, title):
        """The windows on display whose title matches."""
        return (self.xdotool("search", "--onlyvisible", "--name", title) or "").split()

    def active(self):
        return self.xdotool("getactivewindow", "getwindowname")

    def await_window(self, title):
        """Waits until a window with exactly this title is on display and has the keys; gives its number."""
        wait_for(lambda: self.active() == title, f"the window '{title}', instead of '{self.active()}'")
        return self.xdotool("getactivewindow")

    def await_gone(self, window):
        wait_for(lambda: self.xdotool("getwindowname", window) is None or
                 self.xdotool("getactivewindow") != window, f"the end of window {window}")

    def key(self, *keys):
        self.xdotool("key", "--delay", "5", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "5", text)

    def position(self, window):
        """Where a window begins on the screen; xdotool counts the frame around it twice."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(x11.XOpenDisplay(self.display.encode()))
        left, top, child = ctypes.c_int(), ctypes.c_int(), ctypes.c_ulong()
        x11.XDefaultRootWindow.restype = ctypes.c_ulong
        root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
        x11.XTranslateCoordinates(display, ctypes.c_ulong(window), root, 0, 0, ctypes.byref(left), ctypes.byref(top),
                                  ctypes.byref(child))
        x11.XCloseDisplay(display)
        return max(left.value, 0), max(top.value, 0)

    def pixels(self, window=None):
        """Width, height and rows of the screen, or of a window on it, as RGB bytes."""
        data = (self.root / "Xvfb_screen0").read_bytes()
        head = struct.unpack(">25I", data[:100])
        start, width, height, pitch = head[0] + head[19] * 12, head[4], head[5], head[12]
        left = top = 0
        if window:
            place = dict(line.split("=") for line in self.xdotool("getwindowgeometry", "--shell", window).split())
            left, top = self.position(int(window))
            width, height = min(int(place["WIDTH"]), width - left), min(int(place["HEIGHT"]), height - top)
        rows = []
        for y in range(top, top + height):
            row = data[start + y * pitch + left * 4:start + y * pitch + (left + width) * 4]
            pixels = bytearray(width * 3)
            pixels[0::3], pixels[1::3], pixels[2::3] = row[2::4], row[1::4], row[0::4]
            rows.append(bytes(pixels))
        return width, height, rows

    def picture(self, name, window=None, moving=False):
        """Puts what is seen, once it stands still unless it is moving, into the folder of pictures."""
        before, now = None, self.pixels(window)
        while not moving and now != before:
            time.sleep(0.06)
            before, now = now, self.pixels(window)
        folder = pathlib.Path(os.environ.get("TESSARY_SHOTS") or self.root)
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"{name}.png").write_bytes(png(*now))
        return now


def png(width, height, rows):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"".join(b"\0" + row for row in rows))) + chunk(b"IEND", b""))
