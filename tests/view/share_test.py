#!/usr/bin/env python3
"""Takes a model elsewhere from a real window: other forms, the clipboard, other databases, one more window.

    share_test.py FLTVIEW FLTSHOT WRITE_VIEW_DATABASE READ_CLIPBOARD FOLDER
"""

from __future__ import annotations

import os
import pathlib
import shlex
import signal
import subprocess
import sys
import time
import unittest

import virtual_display
from viewer_window import PATIENCE, Window, focus

FLTVIEW, FLTSHOT, WRITE_DATABASE, READ_CLIPBOARD, FOLDER = (str(pathlib.Path(path).resolve())
                                                            for path in sys.argv[1:6])


def write_database(name: str) -> str:
    path = str(pathlib.Path(FOLDER, name))
    subprocess.run([WRITE_DATABASE, path], check=True)
    return path


def clipboard() -> str:
    return subprocess.run([READ_CLIPBOARD], check=True, text=True, stdout=subprocess.PIPE).stdout


class ShareTest(unittest.TestCase):
    def setUp(self) -> None:
        self.database = write_database("yard1.flt")
        self.window = Window(FLTVIEW, FOLDER, self.database, "--select", "floor")
        self.window.next_line("widgets end")
        focus("yard1.flt - fltview")

    def tearDown(self) -> None:
        code = self.window.close()
        assert self.window.process.stdout
        self.window.process.stdout.close()
        self.assertEqual(0, code)

    def save(self, keys: str, name: str) -> bytes:
        """Saves by the dialog. @return the file"""
        self.window.forget()
        self.window.keys(keys)
        focus("Save the model")
        self.window.keys("ctrl+a")
        self.window.type(str(pathlib.Path(FOLDER, name)))
        self.window.keys("Return")
        self.assertIn(name, self.window.next_line("told Saved as"))
        focus("yard1.flt - fltview")
        return pathlib.Path(FOLDER, name).read_bytes()

    def test_the_model_is_saved_in_other_forms(self) -> None:
        self.assertTrue(self.save("ctrl+shift+s", "whole.glb").startswith(b"glTF"))
        self.assertIn(b"door", self.save("ctrl+shift+s", "whole.iv"))
        self.assertTrue(self.save("ctrl+shift+s", "whole.wrl").startswith(b"#VRML"))
        self.assertTrue(self.save("ctrl+shift+s", "whole.html").lower().startswith(b"<!doctype html>"))

    def test_the_selection_is_saved_alone(self) -> None:
        saved = self.save("ctrl+e", "part.iv")
        self.assertIn(b"floor", saved)
        self.assertNotIn(b"door", saved)

    def test_the_picture_is_copied(self) -> None:
        self.window.keys("ctrl+shift+c")
        self.window.next_line("told Copied the picture")
        _, _, width, height = self.window.widgets["picture"]
        self.assertEqual(f"picture {width} {height}", clipboard())

    def test_the_command_line_of_the_picture_is_copied_and_draws_it(self) -> None:
        self.window.keys("ctrl+2", "ctrl+alt+c")
        self.window.next_line("told Copied the command line")
        words = shlex.split(clipboard())
        self.assertEqual("fltshot", words[0])
        subprocess.run([FLTSHOT, *words[1:]], check=True, cwd=FOLDER)
        _, _, width, height = self.window.widgets["picture"]
        head = pathlib.Path(FOLDER, "yard1.png").read_bytes()[16:24]
        self.assertEqual((width, height), (int.from_bytes(head[:4], "big"), int.from_bytes(head[4:], "big")))

    def test_the_next_and_the_previous_database_of_the_folder_are_opened(self) -> None:
        second = write_database("yard2.flt")
        self.addCleanup(pathlib.Path(second).unlink)
        self.window.keys("ctrl+Next")
        self.assertEqual(f"loaded {second}", self.window.next_line("loaded"))
        focus("yard2.flt - fltview")
        self.window.keys("ctrl+Next")
        self.assertIn("the last database of its folder", self.window.next_line("told"))
        self.window.keys("ctrl+Prior")
        self.assertEqual(f"loaded {self.database}", self.window.next_line("loaded"))
        focus("yard1.flt - fltview")
        self.window.keys("ctrl+Prior")
        self.assertIn("the first database of its folder", self.window.next_line("told"))

    def test_one_more_window_shows_the_same_database(self) -> None:
        self.window.keys("ctrl+shift+n")
        end = time.monotonic() + PATIENCE
        owners: set[int] = set()
        while len(owners) < 2:
            self.assertLess(time.monotonic(), end)
            time.sleep(0.2)
            windows = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "yard1.flt - fltview"],
                                     text=True, stdout=subprocess.PIPE).stdout.split()
            owners = {int(subprocess.run(["xdotool", "getwindowpid", window], text=True, check=True,
                                         stdout=subprocess.PIPE).stdout) for window in windows}
        for process in owners - {self.window.process.pid}:
            os.kill(process, signal.SIGTERM)
        focus("yard1.flt - fltview")


if __name__ == "__main__":
    with virtual_display.running(pathlib.Path(FOLDER)):
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[6:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
