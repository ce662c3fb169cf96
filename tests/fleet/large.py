#!/usr/bin/env python3
"""Measures the conversion of a large country, for the figures of docs/tools/fleet.md.

large.py PROGRAMS [TILES]

Fails where a tile takes more than 1.2 times as long as in a small country, or a second run more than a tenth
of the first one: both by the time of processors, which others on the machine hardly change.
"""

from __future__ import annotations

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time
from typing import NamedTuple

PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
TILES = int(sys.argv[2]) if len(sys.argv) > 2 else 20_000
MOST_GROWTH, MOST_AGAIN = 1.2, 0.1


class Run(NamedTuple):
    """What a program took."""

    seconds: float
    processors: float  # seconds of them
    memory: float  # the most megabytes that its first process held


def memory_of(process: int) -> float:
    """Of a process alone, without those that it has started; 0 once it has ended."""
    try:
        found = re.search(r"VmHWM:\s*(\d+)", pathlib.Path(f"/proc/{process}/status").read_text())
    except OSError:
        return 0
    return int(found[1]) / 1000 if found else 0


def run(what: str, *words: object) -> Run:
    """Runs a program, and prints what it takes."""
    begin = time.monotonic()
    command = [str(PROGRAMS / str(words[0])), *map(str, words[1:])]
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    memory = 0.0
    while True:
        memory = max(memory, memory_of(process.pid))
        ended, status, usage = os.wait4(process.pid, os.WNOHANG)
        if ended != 0:
            break
        time.sleep(0.02)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{words} failed")
    took = Run(time.monotonic() - begin, usage.ru_utime + usage.ru_stime, memory)
    print(f"{what:<28} {took.seconds:8.1f} s {took.processors:8.1f} s of processors {memory:8.0f} MB in the"
          f" first process, {usage.ru_maxrss / 1000:.0f} MB in the largest", flush=True)
    return took


def files_in(folder: pathlib.Path, pattern: str) -> str:
    """How many and how large."""
    sizes = [file.stat().st_size for file in folder.rglob(pattern)]
    return f"{len(sizes)} files, {sum(sizes) / 1e6:.1f} MB"


def main() -> None:
    """Converts a small country and a large one, and the large one again."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        few = max(TILES // 20, 1)
        runs = {}
        for tiles in (few, TILES):
            land, out = folder / f"land{tiles}", folder / f"out{tiles}"
            subprocess.run([PROGRAMS / "make_country", "--tiles", str(tiles), land], check=True,
                           stdout=subprocess.DEVNULL)
            convert = ("flt2gltf", "-q", "--tileset", "--report", f"{out}.jsonl")
            runs[tiles] = run(f"{tiles} tiles, 2 jobs", *convert, "--jobs", 2, "-o", out, land)
        again = run(f"{TILES} tiles, again", *convert, "--jobs", 2, "-o", out, land)
        single = run(f"{TILES} tiles, 1 job", *convert[:-1], f"{out}-single.jsonl", "--jobs", 1, "-o",
                     folder / "single", land)
        run("the report's page", "fltreport", "--html", "-o", folder / "report.html", f"{out}.jsonl")
        tileset = run("the tileset", "flttileset", "-o", out / "tileset.json", f"{out}.jsonl")
        split = folder / "split"
        run(f"{TILES} tiles with levels", "flt2gltf", "-q", "--tileset", "--lod", "split", "--xref", "file",
            "--report", f"{split}.jsonl", "--jobs", 2, "-o", split, land)
        run("the tileset with levels", "flttileset", "-o", split / "tileset.json", f"{split}.jsonl")
        print(f"results: {files_in(out, '*.glb')}; tileset: {files_in(out, 'tileset*.json')};"
              f" with levels: {files_in(split, 'tileset*.json')};"
              f" report: {files_in(folder, f'{out.name}.jsonl')}")
    rates = {tiles: tiles / took.processors for tiles, took in runs.items()}
    growth = rates[few] / rates[TILES]
    share = (again.processors - tileset.processors) / runs[TILES].processors
    print(f"files a second: {TILES / single.seconds:.0f} with 1 job,"
          f" {TILES / runs[TILES].seconds:.0f} with 2; of a processor: {rates[few]:.0f} of {few},"
          f" {rates[TILES]:.0f} of {TILES}, {growth:.2f} times")
    print(f"a second run over all: {share:.3f} of the first one, without the tileset;"
          f" {again.processors / runs[TILES].processors:.3f} with it")
    print(f"the first process: {runs[few].memory:.0f} MB at {few} tiles,"
          f" {runs[TILES].memory:.0f} MB at {TILES}")
    if growth > MOST_GROWTH or share > MOST_AGAIN:
        sys.exit(f"limits: {MOST_GROWTH} times, and {MOST_AGAIN} of the first run")


main()
