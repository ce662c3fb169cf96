#!/usr/bin/env python3
"""Looks at a model in a real window: places, distances, parts, sections, light, background, walking, sides.

    look_test.py FLTVIEW FLTINFO WRITE_VIEW_DATABASE FOLDER
"""

from __future__ import annotations

import functools
import json
import operator
import pathlib
import subprocess
import sys
import time
import unittest
from collections.abc import Callable

import virtual_display
from viewer_window import PATIENCE, Window, focus

FLTVIEW, FLTINFO, WRITE_DATABASE, FOLDER = (str(pathlib.Path(path).resolve()) for path in sys.argv[1:5])
SKY = bytes((194, 209, 224))


class LookTest(unittest.TestCase):
    def setUp(self) -> None:
        self.database = str(pathlib.Path(FOLDER, "yard.flt"))
        subprocess.run([WRITE_DATABASE, self.database], check=True)
        self.window = Window(FLTVIEW, FOLDER, self.database, "--select", "floor")
        self.window.next_line("widgets end")
        focus("yard.flt - fltview")
        self.wait_for(lambda pixels: pixels.count(SKY) > len(pixels) / 4)

    def tearDown(self) -> None:
        code = self.window.close()
        assert self.window.process.stdout
        self.window.process.stdout.close()
        self.assertEqual(0, code)

    def picture(self, part: str = "picture") -> list[bytes]:
        """The pixels of the picture, or of another part, alone."""
        screen = virtual_display.Screen(pathlib.Path(FOLDER))
        left, top, width, height = self.window.widgets[part]
        return [pixel for y in range(top, top + height)
                for pixel in screen.pixels[y * screen.width + left:y * screen.width + left + width]]

    def wait_for(self, condition: Callable[[list[bytes]], bool], part: str = "picture") -> None:
        end = time.monotonic() + PATIENCE
        while not condition(self.picture(part)):
            self.assertLess(time.monotonic(), end)
            time.sleep(0.1)

    def wait_for_a_change(self, *keys: str) -> None:
        before = self.picture()
        self.window.keys(*keys)
        self.wait_for(lambda pixels: pixels != before)

    def click_the_floor(self) -> str:
        """Brings the Object floor, which is selected, into the picture, and clicks into its middle.

        @return what is said of the place
        """
        self.window.keys("ctrl+2", "ctrl+period")
        self.wait_for(lambda pixels: pixels[len(pixels) // 2] != SKY)
        self.window.forget()
        self.window.click_widget("picture")
        return self.window.next_line("place")

    def test_a_click_tells_a_place(self) -> None:
        line = self.click_the_floor()
        any_number = "[-.0-9e]+"
        in_scene = f"x {any_number}  y 5  z {any_number} m"
        self.assertRegex(line, rf"^place {in_scene}  \|  database {any_number}  5  {any_number} metres")
        self.assertIn("unknown place", line)

    def test_two_clicks_tell_a_distance(self) -> None:
        self.click_the_floor()
        self.window.keys("ctrl+m")
        self.window.click_widget("picture", 0.45, 0.5)
        self.assertIn("second place", self.window.next_line("place"))
        self.window.click_widget("picture", 0.55, 0.5)
        line = self.window.next_line("place")
        self.assertRegex(line, r"^place Distance [.0-9]+ m  \(x [.0-9]+  y 0  z ")
        purple = bytes((217, 0, 153))
        self.wait_for(lambda pixels: purple in pixels)

    def test_a_selection_tells_its_numbers(self) -> None:
        self.window.search("lamp")
        numbers = [line for line in self.window.seen if line.startswith("selection ")][-1]
        expected = "selection 2 faces, 4 triangles, 8 vertices, 0 textures, about"
        self.assertTrue(numbers.startswith(expected), numbers)

    def test_the_numbers_of_the_whole_are_those_of_fltinfo(self) -> None:
        self.window.search("yard")
        numbers = [line for line in self.window.seen if line.startswith("selection ")][-1]
        info = json.loads(subprocess.check_output([FLTINFO, "--json", self.database], text=True))
        whole = info["scene"]
        vertices = sum(info["geometry"]["vertices"].values())
        self.assertTrue(numbers.startswith(
            f"selection {whole['faces']} faces, {whole['triangles']} triangles, {vertices} vertices, "
            f"{len(info['textures'])} texture, about {whole['bytes'] / 1000:.1f} kB"), numbers)

    def test_the_size_and_below_the_picture_axes_and_a_scale_are_seen(self) -> None:
        size = [line for line in self.window.seen if line.startswith("size ")][-1]
        self.assertEqual("size 45 × 5 × 10 m", size)  # without the level of detail that isn't drawn from here
        for part in ("axes", "scaleBar", "size"):
            self.wait_for(lambda pixels: len(set(pixels)) > 1, part)

    def test_dragging_turns_the_model_and_walking_looks_around(self) -> None:
        left, top, width, height = self.window.widgets["picture"]
        for _ in ("turning", "walking"):
            before = self.picture()
            steps = ["mousemove", str(left + width // 2), str(top + height // 2), "mousedown", "1"]
            for x in range(1, 6):
                steps += ["mousemove", str(left + width // 2 + 10 * x), str(top + height // 2)]
                steps += ["sleep", "0.05"]
            subprocess.run(["xdotool", *steps, "mouseup", "1"], check=True)
            self.wait_for(functools.partial(operator.ne, before))
            self.window.keys("ctrl+2", "F2")
            self.wait_for(lambda pixels: pixels.count(SKY) > len(pixels) / 4)

    def test_a_part_is_shown_alone_and_all_again(self) -> None:
        def has_red(pixels: list[bytes]) -> bool:
            return any(pixel[0] > 150 > 4 * max(pixel[1:]) for pixel in pixels)

        self.window.keys("ctrl+2", "ctrl+0")
        self.wait_for(has_red)
        self.window.search("door")
        self.window.keys("ctrl+i")
        self.wait_for(lambda pixels: not has_red(pixels))
        self.window.keys("ctrl+shift+i")
        self.wait_for(has_red)

    def test_a_section_leaves_out_a_part(self) -> None:
        self.window.keys("ctrl+2", "ctrl+0")
        self.window.search("door")
        left, top, _, height = self.window.widgets["section"]
        before = self.picture()
        self.window.click(left + 8, top + height / 2)
        self.wait_for(lambda pixels: pixels.count(SKY) > before.count(SKY) + 500)

    def test_light_background_and_field_of_view_are_chosen(self) -> None:
        self.wait_for_a_change("ctrl+l")
        self.wait_for_a_change("ctrl+h")
        self.window.keys("alt+v", "b", "w")
        self.wait_for(lambda pixels: pixels.count(b"\xff\xff\xff") > len(pixels) / 4)
        self.window.keys("alt+v", "v", "1")
        self.window.keys("Escape", "Escape")
        self.assertIn("/door", self.window.search("door"))

    def test_keys_walk_through_the_model(self) -> None:
        self.window.keys("F2")
        self.window.click_widget("picture")
        for key in ("w", "s", "a", "d", "q", "e", "shift+w"):
            self.wait_for_a_change(key)

    def test_every_side_has_a_key(self) -> None:
        for key in ("ctrl+2", "ctrl+alt+2", "ctrl+3", "ctrl+alt+3", "ctrl+4", "ctrl+alt+4", "ctrl+1"):
            self.wait_for_a_change(key)


if __name__ == "__main__":
    with virtual_display.running(pathlib.Path(FOLDER)):
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[5:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
