"""A display without a screen, for tests of programs with a window."""

from __future__ import annotations

import collections
import contextlib
import os
import pathlib
import shlex
import shutil
import struct
import subprocess
import time
from collections.abc import Iterator


@contextlib.contextmanager
def running(folder: pathlib.Path) -> Iterator[None]:
    """A display for the programs that are started within, which keep their settings in the folder.

    What the folder held before is removed. The display doesn't begin anew when its last window goes: who
    comes in that moment would be turned away.
    """
    shutil.rmtree(folder, ignore_errors=True)
    (folder / "settings").mkdir(parents=True)
    folder.chmod(0o700)
    reader, writer = os.pipe()
    process = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset",
         "-fbdir", str(folder)],
        pass_fds=[writer], stderr=subprocess.DEVNULL)
    os.close(writer)
    number = b""
    while not number.endswith(b"\n"):
        number += os.read(reader, 16)
    os.close(reader)
    os.environ.update(DISPLAY=":" + number.decode().strip(), LIBGL_ALWAYS_SOFTWARE="1",
                      XDG_CONFIG_HOME=str(folder / "settings"), XDG_DATA_HOME=str(folder / "data"),
                      XDG_RUNTIME_DIR=str(folder))
    os.environ.pop("QT_QPA_PLATFORM", None)
    try:
        yield
    finally:
        process.terminate()
        process.wait()


@contextlib.contextmanager
def window_manager(folder: pathlib.Path) -> Iterator[None]:
    """Somebody who moves, frames and sizes windows on the display of running(), and is at work within.

    A window that comes while it begins may stay hidden for good.
    """
    begun = folder / "window-manager-has-begun"
    begun.unlink(missing_ok=True)
    process = subprocess.Popen(["openbox", "--startup", f"touch {shlex.quote(str(begun))}"],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        while not begun.exists():
            assert process.poll() is None, "openbox ends at once"
            time.sleep(0.05)
        yield
    finally:
        process.terminate()
        process.wait()


class Screen:
    """What a display of running() shows at present.

    Its memory is a file: a head of numbers, a table of colours, then the pixels, the blue byte of each first.
    """

    def __init__(self, folder: pathlib.Path) -> None:
        memory = (folder / "Xvfb_screen0").read_bytes()
        head = struct.unpack(">25I", memory[:100])
        self.width, self.height, bits_of_pixel, color_entries = head[4], head[5], head[11], head[19]
        assert bits_of_pixel == 32 and head[12] == 4 * self.width
        begin = head[0] + 12 * color_entries
        pixels = memory[begin:begin + 4 * self.width * self.height]
        self.pixels = [pixels[i:i + 3][::-1] for i in range(0, len(pixels), 4)]


class Picture:
    """A picture in the PPM format."""

    def __init__(self, path: pathlib.Path) -> None:
        kind, size, most, self.pixels = path.read_bytes().split(b"\n", 3)
        assert (kind, most) == (b"P6", b"255")
        self.width, self.height = map(int, size.split())

    def colors(self) -> collections.Counter[bytes]:
        return collections.Counter(self.pixels[i:i + 3] for i in range(0, len(self.pixels), 3))
