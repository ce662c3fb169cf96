#!/usr/bin/env python3
"""Converts a country by GNU parallel, with a part that is killed, and again.

parallel_test.py PROGRAMS SHARE
"""

from __future__ import annotations

import subprocess
import unittest

from fleet import KILLED, PARTS, FleetTest, need_programs

need_programs("the package parallel", "parallel", "bash")


class ParallelTest(FleetTest):
    def send(self, program: object) -> int:
        """Has all parts done that aren't done. @return the exit code"""
        command = ["parallel", "--will-cite", "--jobs", "2", "--joblog", self.folder / "job.log",
                   "--resume-failed", program, "-q", "--jobs", "1", "--tileset", "--shard", f"{{}}/{PARTS}",
                   "--report", self.report_of(0).with_name("part-{}.jsonl"), "-o", self.out, self.land,
                   ":::", *range(PARTS)]
        return subprocess.run([str(word) for word in command], capture_output=True).returncode

    def test_a_killed_part_is_done_by_the_same_line(self) -> None:
        program = self.write_program_that_is_caught("kill -KILL $program; wait $program")
        self.assertEqual(self.send(program), 1, "one part failed")
        merged = subprocess.run(["fltreport", *map(str, map(self.report_of, range(PARTS)))], text=True,
                                capture_output=True)
        self.assertEqual(merged.returncode, 3)
        self.assertIn(f"part {KILLED}/{PARTS}: ", merged.stdout)
        before = {part: self.report_of(part).stat().st_mtime_ns for part in range(PARTS)}
        self.assertEqual(self.send(program), 0)
        for part in range(PARTS):
            self.assertEqual(self.report_of(part).stat().st_mtime_ns != before[part], part == KILLED)
        self.run_program("flttileset", "-o", self.out / "tileset.json", *map(self.report_of, range(PARTS)))
        self.run_program("fltreport", *map(self.report_of, range(PARTS)))
        self.assert_whole()


if __name__ == "__main__":
    unittest.main(argv=[__file__])
