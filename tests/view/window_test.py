#!/usr/bin/env python3
"""Clicks through fltview in a real window, on a display of its own.

    window_test.py FLTVIEW WRITE_VIEW_DATABASE DRAG_SOURCE FOLDER

The pictures of what was seen stay in the folder.
"""

from __future__ import annotations

import os
import pathlib
import shutil
import struct
import subprocess
import sys
import time
import unittest
import zlib

import viewer_window
import virtual_display
from viewer_window import PATIENCE, drag_to_the_window, focus

FLTVIEW, WRITE_DATABASE, DRAG_SOURCE, FOLDER = (
    str(pathlib.Path(path).resolve()) for path in sys.argv[1:5])


def write_png(path: pathlib.Path) -> None:
    """A picture of 4 by 4 green pixels."""
    def chunk(kind: bytes, data: bytes) -> bytes:
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = (b"\0" + b"\0\xff\0" * 4) * 4
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 4, 4, 8, 2, 0, 0, 0)) +
                     chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def screenshot(name: str) -> None:
    """Keeps what the screen shows, where there is a program for it."""
    if shutil.which("import"):
        subprocess.run(["import", "-window", "root", f"{FOLDER}/{name}.png"], check=True)


class WindowTest(unittest.TestCase):
    def setUp(self) -> None:
        self.database = pathlib.Path(FOLDER, "yard.flt")
        subprocess.run([WRITE_DATABASE, str(self.database)], check=True)
        arguments = (str(self.database), "--watch", "--select", "floor")
        self.window = viewer_window.Window(FLTVIEW, FOLDER, *arguments)
        self.assertEqual(f"loaded {self.database}", self.window.next_line("loaded"))
        self.assertRegex(self.window.next_line("selected"), r"^selected /base/floor\tObject, 1 face\t\d+$")
        self.window.next_line("widgets end")
        focus(" - fltview")

    def tearDown(self) -> None:
        code = self.window.close()
        assert self.window.process.stdout
        self.window.process.stdout.close()
        self.assertEqual(0, code)

    def test_a_click_in_the_tree_selects(self) -> None:
        left, top, _, height = self.window.widgets["tree"]
        rows = range(top + 35, min(top + 220, top + height), 17)
        for y in rows:
            self.window.click(left + 110, y)
            time.sleep(0.25)
        self.window.search("floor")
        names = {line.split("\t")[0] for line in self.window.seen if line.startswith("selected")}
        self.assertLessEqual({"selected /base", "selected /door/panel", "selected /lamp/green"}, names)

    def test_a_click_in_the_picture_selects_what_is_there(self) -> None:
        self.window.keys("ctrl+2", "ctrl+0")
        left, top, width, height = self.window.widgets["picture"]
        for part in range(2, 20):
            self.window.click(left + width * part / 20, top + height / 2)
            time.sleep(0.3)
        screenshot("picked")
        self.window.forget()
        picked = {line.split("\t")[0].split("/")[1] for line in self.window.seen
                  if line.startswith("selected /")}
        self.assertLessEqual({"base", "door", "poster"}, picked)

    def test_the_slider_of_a_degree_of_freedom_moves_the_scene(self) -> None:
        self.assertIn("Degree of freedom", self.window.search("door"))
        box = [float(number) for number in
               [line for line in self.window.seen if line.startswith("box")][-1].split()[1:]]
        self.assertAlmostEqual(20, box[3], places=3)
        self.window.click_widget("slider yaw")
        self.window.forget()
        self.window.keys("Home", "End")
        for _ in range(4):
            box = self.window.box()
            if abs(box[4] - 10) < 0.01:
                break
        self.assertAlmostEqual(10, box[3], places=3)
        self.assertAlmostEqual(10, box[4], places=3)
        screenshot("dof")
        self.window.click_widget("stored")
        self.assertAlmostEqual(20, self.window.box()[3], places=3)

    def test_a_mask_of_a_switch_shows_other_children(self) -> None:
        self.assertIn("Switch", self.window.search("lamp"))
        self.window.click_widget("mask")
        time.sleep(0.5)
        self.window.forget()
        self.window.keys("Down", "Return")
        box = self.window.box()
        self.assertEqual([32, 37], [box[0], box[3]])  # the second child
        screenshot("switch")

    def test_a_level_of_detail_is_drawn_by_hand(self) -> None:
        self.assertIn("Level of detail", self.window.search("far"))
        self.window.click_widget("level")
        time.sleep(0.5)
        self.window.forget()
        self.window.keys("Down", "Down", "Return")
        box = self.window.box()
        self.assertEqual([40, 50], [box[0], box[3]])
        screenshot("lod")

    def test_a_missing_texture_is_found_by_its_file(self) -> None:
        folder = pathlib.Path(FOLDER, "elsewhere")
        folder.mkdir(exist_ok=True)
        write_png(folder / "poster.png")
        screenshot("missing")
        self.window.click_widget("find")
        focus("The image of")
        self.window.type(str(folder / "poster.png"))
        self.window.keys("Return")
        self.assertIn("1 texture, 0 missing", self.window.next_line("statistics"))
        screenshot("found")
        focus(" - fltview")

    def test_a_changed_file_is_loaded_again_with_the_selection(self) -> None:
        self.window.search("door")
        self.window.forget()
        subprocess.run([WRITE_DATABASE, str(self.database)], check=True)
        self.window.next_line("reloaded")
        self.assertTrue(self.window.next_line("selected").startswith("selected /door\t"))
        fresh = pathlib.Path(FOLDER, "fresh.flt")
        subprocess.run([WRITE_DATABASE, str(fresh)], check=True)
        fresh.replace(self.database)
        self.window.next_line("reloaded")

    def test_a_changed_file_that_is_no_database_leaves_the_scene(self) -> None:
        self.database.write_bytes(b"nothing")
        self.window.next_line("failed")
        self.assertIn("/door", self.window.search("door"))

    def test_every_style_and_side_can_be_chosen(self) -> None:
        for number in range(10):
            self.window.keys(f"ctrl+{number}")
        self.window.keys("ctrl+n", "ctrl+6")
        time.sleep(0.5)
        screenshot("normals")
        self.assertIn("/hut", self.window.search("hut"))

    def test_recent_files_are_kept(self) -> None:
        settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "VelloReader", "fltview.conf")
        end = time.monotonic() + PATIENCE
        while not (settings.exists() and str(self.database) in settings.read_text()):
            self.assertLess(time.monotonic(), end)
            time.sleep(0.2)


class PlayedTest(unittest.TestCase):
    def setUp(self) -> None:
        database = pathlib.Path(FOLDER, "played.flt")
        subprocess.run([WRITE_DATABASE, str(database), "played"], check=True)
        self.window = viewer_window.Window(FLTVIEW, FOLDER, str(database))
        self.window.next_line("loaded")
        self.window.next_line("flip-books play")
        focus(" - fltview")

    def tearDown(self) -> None:
        code = self.window.close()
        assert self.window.process.stdout
        self.window.process.stdout.close()
        self.assertEqual(0, code)

    def test_flip_books_play_until_they_are_told_to_stand_still(self) -> None:
        self.window.keys("ctrl+p")
        self.window.next_line("flip-books stand still")
        self.window.keys("ctrl+p")
        self.window.next_line("flip-books play")

    def test_another_time_of_day_shows_what_the_day_hides(self) -> None:
        self.assertIn("/hidden/lantern", self.window.search("lantern"))
        self.window.keys("alt+v", "y", "n")  # View, Time of day, Night
        self.window.next_line("reloaded")
        self.assertTrue(self.window.search("lantern").startswith("selected /lantern\t"))


class DragTest(unittest.TestCase):
    def test_a_file_that_is_dropped_is_shown(self) -> None:
        database = pathlib.Path(FOLDER, "dropped.flt")
        subprocess.run([WRITE_DATABASE, str(database)], check=True)
        window = viewer_window.Window(FLTVIEW, FOLDER, "--size", "900x700")
        assert window.process.stdout
        self.addCleanup(window.process.stdout.close)
        self.addCleanup(window.close)
        self.addCleanup(focus, "fltview")
        source = subprocess.Popen([DRAG_SOURCE, str(database), "1100", "100"])
        self.addCleanup(source.wait)
        self.addCleanup(source.terminate)
        drag_to_the_window("fltview")
        self.assertEqual(f"loaded {database}", window.next_line("loaded"))


class CommandLineTest(unittest.TestCase):
    def run_view(self, *arguments: str, **environment: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run([FLTVIEW, *arguments], capture_output=True, text=True, timeout=PATIENCE,
                              cwd=FOLDER, env=os.environ | environment)

    def setUp(self) -> None:
        self.database = str(pathlib.Path(FOLDER, "still.flt"))
        subprocess.run([WRITE_DATABASE, self.database], check=True)

    def test_saves_what_the_window_shows(self) -> None:
        picture = pathlib.Path(FOLDER, "still.ppm")
        run = self.run_view("-o", str(picture), "--size", "1000x700", self.database)
        self.assertEqual((0, ""), (run.returncode, run.stdout))
        seen = virtual_display.Picture(picture)
        self.assertEqual((1000, 700), (seen.width, seen.height))
        background = seen.colors()[bytes((194, 209, 224))]
        self.assertGreater(background, 20000)
        reds = sum(count for color, count in seen.colors().items() if color[0] > 100 > 3 * max(color[1:]))
        self.assertGreater(reds, 100)

    def test_ends_with_1_for_a_bad_database(self) -> None:
        bad = pathlib.Path(FOLDER, "bad.flt")
        bad.write_bytes(b"nothing")
        for name in (str(bad), "missing.flt"):
            run = self.run_view("-o", "bad.png", name)
            self.assertEqual(1, run.returncode)
            self.assertIn(name, run.stderr)
            self.assertTrue(run.stderr.startswith("fltview: "))
            self.assertFalse(pathlib.Path(FOLDER, "bad.png").exists())

    def test_ends_with_1_if_nothing_has_the_name(self) -> None:
        run = self.run_view("-o", "none.png", "--select", "nobody", self.database)
        self.assertEqual((1, "fltview: nothing is named nobody.\n"), (run.returncode, run.stderr))

    def test_never_replaces_the_database_by_a_picture(self) -> None:
        link = pathlib.Path(FOLDER, "link.png")
        link.unlink(missing_ok=True)
        link.symlink_to(self.database)
        before = pathlib.Path(self.database).read_bytes()
        run = self.run_view("-o", str(link), self.database)
        self.assertEqual(2, run.returncode)
        self.assertIn("the output would replace the input", run.stderr)
        self.assertEqual(before, pathlib.Path(self.database).read_bytes())

    def test_ends_with_1_if_the_picture_cannot_be_written(self) -> None:
        run = self.run_view("-o", "nowhere/a.png", self.database)
        self.assertEqual(1, run.returncode)
        self.assertIn("nowhere/a.png: cannot write", run.stderr)

    def test_ends_with_1_without_a_display(self) -> None:
        run = self.run_view(self.database, DISPLAY="")
        self.assertEqual(1, run.returncode)
        self.assertIn("there is no display", run.stderr)

    def test_ends_with_2_for_wrong_usage(self) -> None:
        for arguments in (["--nonsense"], ["--size", "5x5"], ["--size", "wide"], ["-o", "a.png"], ["a", "b"],
                          ["-o", "a.txt", "b"]):
            run = self.run_view(*arguments)
            self.assertEqual(2, run.returncode, arguments)
            self.assertNotEqual("", run.stderr)

    def test_helps_without_a_display(self) -> None:
        run = self.run_view("--help", DISPLAY="")
        self.assertEqual(0, run.returncode)
        self.assertTrue(run.stdout.startswith("fltview: look at"))
        self.assertIn("\nExit codes:\n", run.stdout)

    def test_the_manual_page_has_the_keys(self) -> None:
        run = self.run_view("--man", DISPLAY="")
        self.assertIn(".SH KEYS AND MOUSE\n", run.stdout)
        self.assertIn(".B F1 or ?\nshow these keys\n", run.stdout)
        self.assertIn(".B Ctrl+O\nopen another database", run.stdout)


if __name__ == "__main__":
    with virtual_display.running(pathlib.Path(FOLDER)):
        succeeded = unittest.main(argv=sys.argv[:1] + sys.argv[5:], exit=False).result.wasSuccessful()
    sys.exit(0 if succeeded else 1)
