#!/usr/bin/env python3
"""Looks at databases in the toolkit's own viewer, on a display of its own.

    toolkit_viewer_test.py TOOLKIT_VIEWER WRITE_FEET_DATABASE FOLDER
"""

from __future__ import annotations

import pathlib
import subprocess
import sys
import unittest

import virtual_display

VIEWER, WRITE_DATABASE, FOLDER = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
METRES_PER_FOOT = 0.3048


class ToolkitViewerTest(unittest.TestCase):
    def setUp(self) -> None:
        self.database = FOLDER / "feet.flt"
        subprocess.run([WRITE_DATABASE, self.database], check=True)

    def assert_shows_the_square(self, path: pathlib.Path) -> None:
        picture = FOLDER / "picture.ppm"
        run = subprocess.run([VIEWER, path, picture], text=True, capture_output=True, check=True)
        self.assertEqual("", run.stderr)
        side = 30 * METRES_PER_FOOT
        for length, expected in zip(map(float, run.stdout.split()), (side, side, 0)):
            self.assertAlmostEqual(expected, length, delta=0.001)
        seen = virtual_display.Picture(picture)
        colors = seen.colors()
        background, square = b"\0\0\xff", b"\xff\0\0"
        self.assertEqual({background, square}, set(colors))
        self.assertGreater(colors[square], seen.width * seen.height / 4)

    def test_shows_a_database_in_feet_in_metres(self) -> None:
        self.assert_shows_the_square(self.database)

    def test_shows_a_database_that_a_file_node_names(self) -> None:
        scene = FOLDER / "scene.iv"
        scene.write_text('#Inventor V2.1 ascii\nFile { name "feet.flt" }\n')
        self.assert_shows_the_square(scene)


if __name__ == "__main__":
    with virtual_display.running(FOLDER):
        succeeded = unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
