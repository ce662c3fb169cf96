#!/usr/bin/env python3
"""Converts a country onto a disk that is full before all is there, and again once it is larger.

disk_test.py PROGRAMS SHARE
"""

from __future__ import annotations

import subprocess
import unittest

from fleet import FleetTest, files_below, need


class DiskTest(FleetTest):
    def setUp(self) -> None:
        super().setUp()
        mount = ["mount", "-t", "tmpfs", "-o", "size=1m", "velloreader-test", str(self.out)]
        if subprocess.run(mount, capture_output=True).returncode != 0:
            need("This user may not mount a small disk.")
        self.addCleanup(lambda: subprocess.run(["umount", str(self.out)], check=True))

    def convert(self) -> subprocess.CompletedProcess[str]:
        """Does what is missing."""
        words = ["flt2gltf", "-q", "--tileset", "--jobs", "2", "--report", self.out / "report.jsonl",
                 "-o", self.out, self.land]
        return subprocess.run([str(word) for word in words], text=True, capture_output=True)

    def test_nothing_is_half_when_the_disk_is_full(self) -> None:
        full = self.convert()
        self.assertEqual(full.returncode, 1)
        self.assertIn("No space left on device", full.stderr)
        some = {name: found for name, found in files_below(self.out).items() if name.endswith(".glb")}
        self.assertGreater(len(some), 5)
        for name, contents in some.items():
            self.assertEqual(contents, self.expected[name], name)
        subprocess.run(["mount", "-o", "remount,size=64m", str(self.out)], check=True)
        again = self.convert()
        self.assertEqual(again.returncode, 0, again.stderr)
        (self.out / "report.jsonl").unlink()
        self.assert_whole()


if __name__ == "__main__":
    unittest.main(argv=[__file__])
