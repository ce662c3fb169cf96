#!/usr/bin/env python3
"""What desktops know of the format: its type, who opens it, and thumbnails.

    desktop_test.py SHARE FLTVIEW FLTSHOT WRITE_VIEW_DATABASE FOLDER
"""

from __future__ import annotations

import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import unittest

SHARE, FLTVIEW, FLTSHOT, WRITE_DATABASE, FOLDER = (pathlib.Path(path).resolve() for path in sys.argv[1:6])
TYPE = "model/x-openflight"


def output(*command: str | pathlib.Path) -> str:
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          cwd=FOLDER).stdout


class DesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        """A desktop of its own, with our files, and databases with and without the usual ending."""
        shutil.rmtree(FOLDER, ignore_errors=True)
        data = FOLDER / "data"
        shutil.copytree(SHARE, data)
        os.environ.update(XDG_DATA_HOME=str(data), XDG_CONFIG_HOME=str(FOLDER / "settings"),
                          XDG_DATA_DIRS="/usr/share",
                          PATH=f"{FLTVIEW.parent}:{os.environ['PATH']}")
        output("update-mime-database", data / "mime")
        output("update-desktop-database", data / "applications")
        output(WRITE_DATABASE, FOLDER / "yard.flt")
        shutil.copy(FOLDER / "yard.flt", FOLDER / "yard")

    def test_files_have_their_type_by_name_and_by_content(self) -> None:
        for name in ("yard.flt", "yard"):
            self.assertIn(f"standard::content-type: {TYPE}",
                          output("gio", "info", "-a", "standard::content-type", name))

    def test_the_type_is_opened_by_the_viewer(self) -> None:
        self.assertIn("fltview.desktop", output("gio", "mime", TYPE))

    def test_the_program_and_its_description_are_well_formed(self) -> None:
        output("desktop-file-validate", SHARE / "applications" / "fltview.desktop")
        for description in (SHARE / "metainfo").iterdir():
            self.assertNotRegex(output("appstreamcli", "validate", "--no-net", description), r"[EWI]: ")

    def test_a_thumbnail_is_drawn_as_desktops_ask_for_it(self) -> None:
        lines = (SHARE / "thumbnailers" / "velloreader.thumbnailer").read_text().splitlines()
        entry = dict(line.split("=", 1) for line in lines if "=" in line)
        self.assertIn(TYPE, entry["MimeType"])
        words = {"%s": "128", "%i": "yard.flt", "%u": "yard.flt", "%o": "thumbnail.png"}
        command = [words.get(word, word) for word in shlex.split(entry["Exec"])]
        self.assertEqual("fltshot", command[0])
        output(FLTSHOT, *command[1:])
        self.assertTrue((FOLDER / "thumbnail.png").read_bytes().startswith(b"\x89PNG"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[6:])
