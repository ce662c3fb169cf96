"""What the tests of runs on many computers share."""

from __future__ import annotations

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from collections.abc import Callable
from typing import NoReturn

PROGRAMS, SHARE = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
PATIENCE = 300.0  # seconds for anything to happen, on a busy machine
PARTS = 4
KILLED = 1  # the part that is ended in the middle
LINES = range(10, 30)  # that its report has then
ATTEMPTS = 20  # to end it there: it's quick


def need(reason: str) -> NoReturn:
    """Ends the test where the machine lacks something."""
    print(reason)
    sys.exit(1 if "VELLOREADER_NO_SKIPS" in os.environ else 77)


def need_programs(packages: str, *programs: str) -> None:
    """Makes sure that programs are there."""
    os.environ["PATH"] += ":/usr/sbin:/sbin"
    for program in programs:
        if shutil.which(program) is None:
            need(f"There is no {program}: install {packages}.")


def wait_until(happened: Callable[[], bool], what: str) -> None:
    """Waits for something."""
    end = time.monotonic() + PATIENCE
    while not happened():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(0.05)


def files_below(folder: pathlib.Path) -> dict[str, bytes]:
    """All results by their places; reports and pages of a run aren't results."""
    others = ("reports", "report.html", "tileset.jsonl")
    return {
        str(file.relative_to(folder)): file.read_bytes()
        for file in sorted(folder.rglob("*"))
        if file.is_file() and file.relative_to(folder).parts[0] not in others
    }


class FleetTest(unittest.TestCase):
    """A country, and what a single run makes of it."""

    tiles = 200

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.land, self.out = self.folder / "land", self.folder / "out"
        (self.out / "reports").mkdir(parents=True)
        os.environ["PATH"] = f"{PROGRAMS}:{os.environ['PATH']}"
        self.run_program("make_country", "--tiles", self.tiles, self.land)
        self.run_program("flt2gltf", "-q", "--tileset", "-o", self.folder / "one", self.land)
        self.expected = files_below(self.folder / "one")
        self.assertGreater(len(self.expected), self.tiles)

    def run_program(self, *words: object) -> subprocess.CompletedProcess[str]:
        """Runs a program, which has to succeed."""
        run = subprocess.run([str(word) for word in words], text=True, capture_output=True)
        self.assertEqual(run.returncode, 0, f"{words}: {run.stderr}")
        return run

    def report_of(self, part: int) -> pathlib.Path:
        """The report of a part."""
        return self.out / "reports" / f"part-{part}.jsonl"

    def write_program_that_is_caught(self, then: str) -> pathlib.Path:
        """A program as flt2gltf, which stops in the middle of one part, once.

        Commands follow then, which know $program.
        """
        program = self.folder / "caught-flt2gltf"
        program.write_text(
            f"""#!/bin/bash
if [[ " $* " != *" --shard {KILLED}/{PARTS} "* || -e {self.folder}/caught ]]; then exec flt2gltf "$@"; fi
report="{self.report_of(KILLED)}"
lines() {{ wc -l <"$report" 2>/dev/null || echo 0; }}
for ((i = 0; i < {ATTEMPTS}; ++i)); do
    rm -f "$report"
    flt2gltf "$@" &
    program=$!
    while (($(lines) < {LINES.start})) && kill -0 $program 2>/dev/null; do :; done
    if kill -STOP $program 2>/dev/null && (($(lines) < {LINES.stop})); then
        touch {self.folder}/caught
        {then}
        exit
    fi
    kill -KILL $program 2>/dev/null
    wait $program
done
"""
        )
        program.chmod(0o755)
        return program

    def assert_whole(self) -> None:
        """Holds the results of all parts against those of the single run."""
        found = files_below(self.out)
        self.assertEqual(sorted(found), sorted(self.expected))
        for name, contents in self.expected.items():
            self.assertEqual(found[name], contents, name)
