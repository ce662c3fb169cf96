#!/usr/bin/env python3
"""Opens what can't be loaded, and ends loads that take long, in a real window.

    load_test.py FLTVIEW WRITE_VIEW_DATABASE DRAG_SOURCE FOLDER
"""

from __future__ import annotations

import os
import pathlib
import subprocess
import sys
import unittest

import virtual_display
from viewer_window import Window, drag_to_the_window, focus

FLTVIEW, WRITE_DATABASE, DRAG_SOURCE, FOLDER = (str(pathlib.Path(path).resolve()) for path in sys.argv[1:5])
PROBLEM = "not an OpenFlight database"


def write_database(name: str, kind: str) -> str:
    path = str(pathlib.Path(FOLDER, name))
    subprocess.run([WRITE_DATABASE, path, kind], check=True)
    return path


def write_text(name: str) -> str:
    path = pathlib.Path(FOLDER, name)
    path.write_text("no database")
    return str(path)


class LoadTest(unittest.TestCase):
    def start(self, *arguments: str) -> Window:
        window = Window(FLTVIEW, FOLDER, *arguments)
        assert window.process.stdout
        self.addCleanup(window.process.stdout.close)
        self.addCleanup(window.close)
        return window

    def assert_failed(self, window: Window, path: str, title: str) -> None:
        """The banner says what, where and what to do, and the title names the file."""
        line = window.next_line("failed")
        self.assertIn(path, line)
        self.assertIn(PROBLEM, line)
        self.assertIn("Check that this is the right file", line)
        window.next_line("widgets end")
        self.assertIn("banner", window.widgets)
        focus(title)

    def test_a_bad_file_on_the_command_line_is_named_in_the_window(self) -> None:
        bad = write_text("command.flt")
        self.assert_failed(self.start(bad), bad, r"command.flt \(not loaded\) - fltview")

    def test_a_bad_file_that_is_opened_leaves_nothing_of_the_old_model(self) -> None:
        bad = write_text("opened.flt")
        window = self.start(write_database("good.flt", "yard"), "--select", "floor")
        window.next_line("widgets end")
        focus("good.flt - fltview")
        window.keys("ctrl+o")
        focus("Open a database")
        window.type(bad)
        window.keys("Return")
        self.assert_failed(window, bad, r"opened.flt \(not loaded\) - fltview")
        window.forget()
        window.keys("ctrl+f")
        window.type("floor")
        window.keys("Return", "F5")
        self.assertTrue(window.next_line("failed"))
        self.assertFalse([line for line in window.seen if line.startswith("selected /base")][1:])

    def test_a_bad_file_that_is_chosen_again_is_named(self) -> None:
        good = write_database("recent.flt", "yard")
        first = self.start(good)
        first.next_line("loaded")
        focus("recent.flt - fltview")
        self.doCleanups()
        write_text("recent.flt")
        window = self.start()
        focus("fltview")
        window.keys("alt+f", "r", "Down", "Return")
        self.assert_failed(window, good, r"recent.flt \(not loaded\) - fltview")

    def test_a_bad_file_that_is_dropped_is_named(self) -> None:
        bad = write_text("dropped.flt")
        window = self.start("--size", "900x700")
        source = subprocess.Popen([DRAG_SOURCE, bad, "1100", "100"])
        self.addCleanup(source.wait)
        self.addCleanup(source.terminate)
        drag_to_the_window("fltview")
        self.assert_failed(window, bad, r"dropped.flt \(not loaded\) - fltview")

    def test_a_file_that_cannot_be_loaded_again_stays_and_is_named_so(self) -> None:
        path = write_database("again.flt", "yard")
        window = self.start(path, "--select", "floor")
        window.next_line("widgets end")
        focus("again.flt - fltview")
        write_text("again.flt")
        window.keys("F5")
        self.assert_failed(window, path, "again.flt - fltview")
        self.assertIn("/door", window.search("door"))

    def test_the_banner_offers_messages_and_a_check(self) -> None:
        bad = write_text("offered.flt")
        window = self.start(bad)
        self.assert_failed(window, bad, "offered.flt")
        window.click_widget("showMessages")
        window.click_widget("checkFile")
        self.assertIn(PROBLEM, window.next_line("checked"))
        focus("Check of offered.flt")
        window.keys("Escape")
        focus("offered.flt")

    def test_a_long_load_shows_its_progress_and_is_cancelled_by_its_button(self) -> None:
        window = self.start(write_database("small.flt", "yard"), "--select", "floor")
        window.next_line("widgets end")
        focus("small.flt - fltview")
        large = write_database("large.flt", "large")
        window.forget()
        window.keys("ctrl+o")
        focus("Open a database")
        window.type(large)
        window.keys("Return")
        self.assertEqual(f"loading {large}", window.next_line("loading"))
        window.next_line("widgets end")
        window.click_widget("cancel")
        self.assertEqual(f"cancelled {large}", window.next_line("cancelled"))
        focus("small.flt - fltview")
        self.assertIn("/door", window.search("door"))

    def test_a_long_load_is_cancelled_by_escape(self) -> None:
        window = self.start(write_database("large.flt", "large"))
        window.next_line("loading")
        focus("fltview")
        window.keys("Escape")
        window.next_line("cancelled")

    def test_help_is_a_key_away(self) -> None:
        window = self.start(write_database("helped.flt", "yard"), "--select", "floor")
        window.next_line("widgets end")
        for key in ("F1", "question"):
            focus("helped.flt - fltview")
            window.click_widget("picture")
            window.keys(key)
            focus("Keys and mouse")
            window.keys("Escape")
            focus("helped.flt - fltview")


if __name__ == "__main__":
    with virtual_display.running(pathlib.Path(FOLDER)):
        os.environ["PATH"] = f"{pathlib.Path(FLTVIEW).parent}:{os.environ['PATH']}"
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[5:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
