#!/usr/bin/env python3
"""Converts a country by runs that are killed at random, until one is left to its end.

kills_test.py PROGRAMS SHARE
"""

from __future__ import annotations

import os
import random
import subprocess
import time
import unittest

from fleet import FleetTest


class KillsTest(FleetTest):
    kills = int(os.environ.get("VELLOREADER_KILLS", "5"))

    def start(self) -> subprocess.Popen[str]:
        """Starts a run that does what is missing."""
        words = ["flt2gltf", "--tileset", "--jobs", "2", "--report", self.out / "reports/all.jsonl",
                 "-o", self.out, self.land]
        return subprocess.Popen([str(word) for word in words], text=True, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE)

    def test_nothing_is_lost_and_nothing_half(self) -> None:
        seed = time.time_ns()
        choice = random.Random(seed)
        for _ in range(self.kills):
            run = self.start()
            time.sleep(choice.uniform(0.01, 0.15))
            run.kill()
            run.communicate()
            for file in self.out.rglob("*.glb"):
                name = str(file.relative_to(self.out))
                self.assertEqual(file.read_bytes(), self.expected[name], f"{name}, seed {seed}")
        run = self.start()
        _, errors = run.communicate()
        self.assertEqual(run.returncode, 0, errors)
        self.assert_whole()
        run = self.start()
        said, _ = run.communicate()
        self.assertRegex(said, "^0 of [0-9]+ databases converted, [0-9]+ up to date\n$")


if __name__ == "__main__":
    unittest.main(argv=[__file__])
