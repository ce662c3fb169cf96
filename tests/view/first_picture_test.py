#!/usr/bin/env python3
"""Sees that fltview shows its picture by itself: at first and after each change of size, with and without a
window manager.

    first_picture_test.py FLTVIEW WRITE_VIEW_DATABASE FOLDER
"""

from __future__ import annotations

import contextlib
import pathlib
import subprocess
import sys
import time
import unittest
from collections.abc import Callable

import virtual_display
from viewer_window import PATIENCE, Window, on_window

FLTVIEW, WRITE_DATABASE, FOLDER = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
BACKGROUND = bytes((194, 209, 224))
BLACK = bytes(3)
LOOKS = 8  # that show the same before it counts
SIZES = (("1000", "700"), ("1180", "760"), ("900", "640"))


def wait_until(happened: Callable[[], bool], what: str) -> None:
    end = time.monotonic() + PATIENCE
    while not happened():
        if time.monotonic() > end:
            raise AssertionError(what)
        time.sleep(0.1)


class FirstPictureTest(unittest.TestCase):
    def database(self, kind: str) -> str:
        path = FOLDER / f"{kind}.flt"
        subprocess.run([WRITE_DATABASE, path, kind], check=True)
        return str(path)

    def start(self, database: str) -> None:
        process = subprocess.Popen([FLTVIEW, "--size", "x".join(SIZES[0]), database])
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)

    def resize(self, size: tuple[str, str]) -> None:
        """Asks for a size until the window has it: it may be dressed by the window manager meanwhile."""
        wanted = {f"{name}={number}" for name, number in zip(("WIDTH", "HEIGHT"), size)}

        def has_size() -> bool:
            shape = on_window(" - fltview", "windowsize", *size, "getwindowgeometry", "--shell")
            return wanted <= set(shape.splitlines())

        wait_until(has_size, f"the window doesn't get the size {size}")

    def places_of_the_background(self) -> list[set[int]]:
        """Where an empty database leaves the picture free, in each size of the window."""
        window = Window(str(FLTVIEW), str(FOLDER), "--size", "x".join(SIZES[0]), self.database("empty"))
        assert window.process.stdout
        self.addCleanup(window.process.stdout.close)
        self.addCleanup(window.process.wait)
        self.addCleanup(window.process.kill)
        places: list[set[int]] = []
        laid_out: list[int] = []

        looks_alike = 0

        def is_half_of_the_middle_free() -> bool:
            """And stays so for a while: the parts of a window get their sizes one after the other."""
            nonlocal looks_alike
            screen = virtual_display.Screen(FOLDER)
            seen = {i for i, pixel in enumerate(screen.pixels) if pixel == BACKGROUND}
            looks_alike = looks_alike + 1 if seen == places[-1] else 0
            places[-1] = seen
            width, height = map(int, SIZES[len(places) - 1])
            is_another_size = len(places) == 1 or seen != places[-2]
            return len(seen) > width * height / 10 and is_another_size and looks_alike >= LOOKS

        for size in SIZES:
            places.append(set())
            self.resize(size)
            while window.widgets.get("picture", laid_out) == laid_out:
                window.next_line("widgets end")
            laid_out = window.widgets["picture"]
            wait_until(is_half_of_the_middle_free, f"the picture of an empty database isn't drawn at {size}")
        self.doCleanups()
        return places

    def see_the_picture_in_every_size(self) -> None:
        places = self.places_of_the_background()
        self.start(self.database("yard"))
        for size, free in zip(SIZES, places):
            self.resize(size)

            def is_drawn(free: set[int] = free) -> bool:
                pixels = virtual_display.Screen(FOLDER).pixels
                differing = [i for i in free if pixels[i] != BACKGROUND]
                return (1000 < len(differing) < len(free) / 2 and
                        sum(pixels[i] == BLACK for i in differing) < 100)

            wait_until(is_drawn, f"the picture isn't drawn at {size}")

    def test_without_a_window_manager(self) -> None:
        self.see_the_picture_in_every_size()

    def test_with_a_window_manager(self) -> None:
        with contextlib.ExitStack() as stack:
            stack.enter_context(virtual_display.window_manager(FOLDER))
            self.see_the_picture_in_every_size()
            self.doCleanups()


if __name__ == "__main__":
    with virtual_display.running(FOLDER):
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[4:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
