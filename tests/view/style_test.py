#!/usr/bin/env python3
"""Style, size and keyboard of the real window: what is chosen once is there the next time.

    style_test.py FLTVIEW WRITE_VIEW_DATABASE FOLDER
"""

from __future__ import annotations

import pathlib
import subprocess
import sys
import time
import unittest
from collections.abc import Callable

import virtual_display
from viewer_window import PATIENCE, Window, focus, on_window

FLTVIEW, WRITE_DATABASE, FOLDER = (str(pathlib.Path(path).resolve()) for path in sys.argv[1:4])


class StyleTest(unittest.TestCase):
    def setUp(self) -> None:
        self.database = str(pathlib.Path(FOLDER, "yard.flt"))
        subprocess.run([WRITE_DATABASE, self.database], check=True)
        self.window = self.start()

    def tearDown(self) -> None:
        self.end()

    def start(self) -> Window:
        window = Window(FLTVIEW, FOLDER, self.database, "--select", "floor", remembers=True)
        window.next_line("widgets end")
        focus("yard.flt - fltview")
        return window

    def end(self) -> None:
        code = self.window.close()
        assert self.window.process.stdout
        self.window.process.stdout.close()
        self.assertEqual(0, code)

    def wait_for(self, condition: Callable[[], bool]) -> None:
        end = time.monotonic() + PATIENCE
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.1)

    def pixels(self, widget: str) -> list[bytes]:
        screen = virtual_display.Screen(pathlib.Path(FOLDER))
        left, top, width, height = self.window.widgets[widget]
        return [pixel for y in range(top, top + height)
                for pixel in screen.pixels[y * screen.width + left:y * screen.width + left + width]]

    def is_dark(self) -> bool:
        """Whether most of the tree's pixels are."""
        pixels = self.pixels("tree")
        return sum(max(pixel) < 80 for pixel in pixels) > len(pixels) / 2

    def test_the_dark_style_stays_until_it_is_switched_off(self) -> None:
        self.assertFalse(self.is_dark())
        self.window.keys("ctrl+d")
        self.wait_for(self.is_dark)
        self.end()
        self.window = self.start()
        self.wait_for(self.is_dark)
        self.window.keys("ctrl+d")
        self.wait_for(lambda: not self.is_dark())

    def test_the_size_of_the_window_is_remembered(self) -> None:
        def size() -> list[str]:
            shape = on_window("yard.flt - fltview", "getwindowgeometry", "--shell")
            return [line for line in shape.splitlines() if line.startswith(("WIDTH", "HEIGHT"))]

        on_window("yard.flt - fltview", "windowsize", "--sync", "1100", "700")
        self.wait_for(lambda: size() == ["WIDTH=1100", "HEIGHT=700"])
        self.window.forget()
        self.window.search("door")  # the window has taken the size in
        self.end()
        self.window = self.start()
        self.wait_for(lambda: size() == ["WIDTH=1100", "HEIGHT=700"])

    def test_the_keyboard_goes_from_the_search_through_the_tree(self) -> None:
        self.assertTrue(self.window.search("door").startswith("selected /door\t"))
        self.window.keys("Tab", "Down")
        self.assertTrue(self.window.next_line("selected").startswith("selected /door/panel\t"))
        self.window.keys("Up")
        self.assertTrue(self.window.next_line("selected").startswith("selected /door\t"))
        self.window.next_line("widgets end")
        shown = self.pixels("picture")
        self.window.keys("space")  # takes the tick away
        self.wait_for(lambda: self.pixels("picture") != shown)
        self.window.keys("space")
        self.wait_for(lambda: self.pixels("picture") == shown)

    def test_find_next_goes_on(self) -> None:
        self.assertIn("/door", self.window.search("oo"))
        self.window.keys("F3")
        self.assertIn("/base/floor", self.window.next_line("selected"))
        self.window.keys("F3")
        self.assertIn("/door", self.window.next_line("selected"))

    def test_what_is_opened_is_in_the_recent_files_of_the_desktop(self) -> None:
        recent = pathlib.Path(FOLDER, "data", "recently-used.xbel")
        self.wait_for(lambda: recent.exists() and f"file://{self.database}" in recent.read_text())


if __name__ == "__main__":
    with virtual_display.running(pathlib.Path(FOLDER)):
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[4:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
