#!/usr/bin/env python3
"""Measures the conversion of a large country, for the figures of docs/tools/fleet.md.

large.py PROGRAMS [TILES]
"""

from __future__ import annotations

import os
import pathlib
import subprocess
import sys
import tempfile
import time

PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
TILES = int(sys.argv[2]) if len(sys.argv) > 2 else 20_000


def run(what: str, *words: object) -> float:
    """Runs a program, and prints what it takes. @return seconds of processors"""
    begin = time.monotonic()
    command = [str(PROGRAMS / str(words[0])), *map(str, words[1:])]
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit(f"{words} failed")
    seconds: float = usage.ru_utime + usage.ru_stime
    print(f"{what:<28} {time.monotonic() - begin:8.1f} s {seconds:8.1f} s of processors"
          f" {usage.ru_maxrss / 1000:8.0f} MB at most in a process", flush=True)
    return seconds


def main() -> None:
    """Converts a small country and a large one, and the large one again."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        few = max(TILES // 20, 1)
        rates = {}
        for tiles in (few, TILES):
            land, out = folder / f"land{tiles}", folder / f"out{tiles}"
            subprocess.run([PROGRAMS / "make_country", "--tiles", str(tiles), land], check=True,
                           stdout=subprocess.DEVNULL)
            convert = ("flt2gltf", "-q", "--tileset", "--report", f"{out}.jsonl")
            seconds = run(f"{tiles} tiles, 2 jobs", *convert, "--jobs", 2, "-o", out, land)
            rates[tiles] = tiles / seconds
        run(f"{TILES} tiles, again", *convert, "--jobs", 2, "-o", out, land)
        run(f"{TILES} tiles, 1 job", "flt2gltf", "-q", "--tileset", "--jobs", 1, "-o", folder / "single",
            land)
        run("the report's page", "fltreport", "--html", "-o", folder / "report.html", f"{out}.jsonl")
        run("the tileset", "flttileset", "-o", out / "tileset.json", f"{out}.jsonl")
        print(f"tiles a second of a processor: {rates[few]:.0f} of {few}, {rates[TILES]:.0f} of {TILES}")


main()
