"""A program on the X display: started, driven by keys, its picture known by the colour of its middle."""

import ctypes
import glob
import os
import signal
import subprocess
import time

import numpy

# As in bare.cpp.
PATCHES = numpy.array([(200, 40, 40), (40, 200, 40), (40, 40, 200),
                       (200, 200, 40), (200, 40, 200), (40, 200, 200)])

_x11 = ctypes.CDLL("libX11.so.6")
_xtst = ctypes.CDLL("libXtst.so.6")
_x11.XOpenDisplay.restype = ctypes.c_void_p
_x11.XDefaultRootWindow.restype = ctypes.c_ulong
_x11.XGetImage.restype = ctypes.c_void_p


class _Image(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p)]


class Screen:
    """The whole display, of which some rows are looked at."""

    def __init__(self, width):
        self._display = ctypes.c_void_p(_x11.XOpenDisplay(None))
        self._root = ctypes.c_ulong(_x11.XDefaultRootWindow(self._display))
        self._width = width
        self._rows = (200, 300, 500, 700)

    def patches(self):
        """How many pixels of each patch's colour are in the row that has most of it."""
        most = numpy.zeros(len(PATCHES), int)
        for row in self._rows:
            image = _x11.XGetImage(self._display, self._root, 0, row, self._width, 1,
                                   ctypes.c_ulong(0xFFFFFFFF), 2)
            data = ctypes.cast(image, ctypes.POINTER(_Image)).contents.data
            pixels = numpy.frombuffer(ctypes.string_at(data, self._width * 4), numpy.uint8)
            _x11.XDestroyImage(ctypes.c_void_p(image))
            colours = pixels.reshape(-1, 4)[:, 2::-1].astype(int)
            near = numpy.abs(colours[:, None, :] - PATCHES[None]).max(axis=2) < 40
            most = numpy.maximum(most, near.sum(axis=0))
        return most

    def wait_for(self, patch, seconds=30.0, least=120):
        """Milliseconds until a picture with this patch stands there; None if it does not come."""
        start = time.monotonic()
        while time.monotonic() - start < seconds:
            if self.patches()[patch] >= least:
                return (time.monotonic() - start) * 1000
        return None

    def key(self, name):
        code = _x11.XKeysymToKeycode(self._display, ctypes.c_ulong(
            _x11.XStringToKeysym(name.encode())))
        for down in (1, 0):
            _xtst.XTestFakeKeyEvent(self._display, code, down, ctypes.c_ulong(0))
        _x11.XFlush(self._display)


class Program:
    """One program with a home of its own, ended with everything that it started."""

    def __init__(self, words, home):
        environment = dict(os.environ, HOME=home, XDG_CONFIG_HOME=home + "/config",
                           XDG_CACHE_HOME=home + "/cache", XDG_DATA_HOME=home + "/data",
                           XDG_RUNTIME_DIR=home + "/run", NO_AT_BRIDGE="1")
        os.makedirs(home + "/run", 0o700, exist_ok=True)
        self.process = subprocess.Popen(words, env=environment, start_new_session=True,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def most_memory(self):
        """Megabytes resident at most until now, of the largest process that was started."""
        most = 0
        for status in glob.glob("/proc/[0-9]*/status"):
            try:
                if os.getsid(int(status.split("/")[2])) != self.process.pid:
                    continue
                with open(status, encoding="utf-8") as lines:
                    most = max([most] + [int(line.split()[1]) // 1024 for line in lines
                                         if line.startswith("VmHWM")])
            except OSError:  # it has ended meanwhile
                pass
        return most

    def end(self):
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()
