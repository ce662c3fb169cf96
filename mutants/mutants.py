#!/usr/bin/env python3
"""Makes small changes of meaning in the sources, and tells which no quick or picture test notices."""

from __future__ import annotations

import argparse
import json
import os
import pathlib
import sys
import time
from collections.abc import Callable

import choice
import known
from known import Known
from mutant_build import BuildFailure, MutantBuild
from places import Change
from test_runs import Test, TestRuns, tests_of
from translation_units import find_changes

ROOT = pathlib.Path(__file__).resolve().parent.parent
PLACE = ROOT / "build" / "mutants"
# A change that is made for good has all sources built that it reaches. More than so many take too long.
MOST_SOURCES = 60

Result = tuple[Change, str | None]  # with the test that notices it


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="./dev mutants", description=__doc__,
        epilog="The changes are made in one build, in build/mutants, with one switched on at a time; those "
        "that the compiler works out, as in tables, in builds of their own objects. A test that fails, "
        "crashes or takes many times as long notices a change. mutants/excused.txt names those that nobody "
        "can notice.")
    parser.add_argument("count", nargs="?", type=int, default=100, metavar="N",
                        help="how many changes; 100 by default")
    parser.add_argument("--seed", type=int, action="append", metavar="S",
                        help="which changes; 1 by default; several seeds make N changes each, in one build")
    parser.add_argument("--folder", action="append", metavar="FOLDER",
                        help="only in this folder, such as src/model; may be given several times")
    parser.add_argument("--list", action="store_true", help="only tell the changes")
    parser.add_argument("--survivors", action="store_true",
                        help="try only those again that nobody noticed the last time, by the tests of today")
    parser.add_argument("--quick", action="store_true",
                        help="try the quick tests alone, which may leave more survivors")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, metavar="J",
                        help="processes at a time")
    return parser.parse_args()


def say(text: str) -> None:
    print(f"== {text}", flush=True)


def all_folders() -> list[str]:
    return sorted({str(file.parent.relative_to(ROOT)) for file in (ROOT / "src").rglob("*.cpp")})


class Mutants:
    """The changes of one run."""

    def __init__(self, options: argparse.Namespace) -> None:
        self.options = options
        self.folders = sorted(folder.rstrip("/") for folder in options.folder or all_folders())
        self.labels = ["quick"] if options.quick else ["quick", "picture"]
        self.build = MutantBuild(ROOT, PLACE, [f"{label}_tests" for label in self.labels], options.jobs)
        self.known = self.read()
        changes = [change for change in self.known.changes
                   if not change.may_be_constant or self.is_cheap(change)]
        self.choice = choice.Choice(changes, {seed: choice.shares(options.count, self.folders, seed)
                                              for seed in options.seed or [1]})
        self.runs = TestRuns(PLACE / "scratch", options.jobs)

    def read(self) -> Known:
        """What can be changed."""
        self.memory = known.file_for(PLACE, self.folders, self.build.originals)
        if (remembered := Known.load(self.memory)) is not None:
            return remembered
        say("Reading the sources")
        self.build.write({})
        changes = find_changes(self.build.tree, tuple(self.folders), self.build.library_units(),
                               self.build.includes, self.options.jobs)
        found = Known(changes)
        found.save(self.memory)
        return found

    def is_cheap(self, change: Change) -> bool:
        return len(self.build.includes.sources_of(self.build.tree / change.file)) <= MOST_SOURCES

    def numbered(self) -> dict[int, Change]:
        return dict(enumerate(self.choice.chosen))

    def choose(self) -> None:
        """Gives the places of changes that don't compile to others."""
        while True:
            numbered = self.numbered()
            self.build.write(numbered)
            self.try_new(numbered)
            refused = [change for change in numbered.values() if change in self.known.refused]
            if not refused:
                break
            self.choice.replace(refused)
        self.known.save(self.memory)

    def try_new(self, numbered: dict[int, Change]) -> None:
        """Finds out which of the changes compile of which that isn't known yet."""
        known_ones = self.known.compiling | self.known.refused
        new = {number: change for number, change in numbered.items() if change not in known_ones}
        refused = self.build.refused_switches(numbered, (change.file for change in new.values()))
        self.known.refused |= {numbered[number] for number in refused}
        for number, change in new.items():
            if number not in refused and change.may_be_constant and not self.build.compiles(change):
                self.known.refused.add(change)
        self.known.compiling |= set(new.values()) - self.known.refused

    def make(self) -> None:
        while refused := self.build.make(numbered := self.numbered()):
            self.known.refused |= {numbered[number] for number in refused}
            self.choose()

    def measured_tests(self) -> list[Test]:
        """The tests of the library that pass without a change."""
        tests = [test for test in tests_of(self.build.build, self.labels)
                 if not test.name.startswith(("lint.", "mutants."))]
        failed = self.runs.measure(tests, len(self.choice.chosen))
        if failed:
            say("Left out, since they fail without a change: " + ", ".join(sorted(failed)))
        return [test for test in tests if test.name not in failed]

    def tried(self, tests: list[Test], is_wanted: Callable[[Change], bool]) -> list[Result]:
        """Each change that is wanted, and the test that notices it."""
        reached = frozenset[int]().union(*(test.reached for test in tests))
        results = []
        made_for_good = []
        for number, change in self.numbered().items():
            if not is_wanted(change):
                continue
            if change.may_be_constant and number not in reached:
                made_for_good.append(change)
                continue
            passing_by = [test for test in in_order(tests, change) if number in test.reached]
            results.append((change, self.runs.first_to_notice(passing_by, number)))
            tell(*results[-1], bool(passing_by))
        for change in made_for_good:
            if self.build.make_with(change):
                results.append((change, self.runs.first_to_notice(in_order(tests, change), None)))
                tell(*results[-1])
            else:
                print(f"{change}\n    doesn't compile", flush=True)
            self.build.restore(change)
        return results


def in_order(tests: list[Test], change: Change) -> list[Test]:
    """First those that are about the source, then the short ones."""
    return sorted(tests, key=lambda test: (not test.matches(change.file), test.seconds))


def tell(change: Change, noticed: str | None, is_reached: bool = True) -> None:
    how = f"noticed by {noticed}" if noticed else "SURVIVED" if is_reached else "SURVIVED: no test comes by"
    print(f"{change}\n    {how}", flush=True)


def report(folders: list[str], results: list[Result], excused: list[Change]) -> None:
    """A table, and the survivors."""
    say("Of the changes of each folder:")
    print(f"{'':20}{'tried':>8}{'noticed':>9}{'survived':>10}{'excused':>9}")
    for folder in [*folders, "all"]:
        tests = [test for change, test in results if folder in (change.folder, "all")]
        noticed = sum(test is not None for test in tests)
        of_folder = sum(folder in (change.folder, "all") for change in excused)
        print(f"{folder:20}{len(tests):8}{noticed:9}{len(tests) - noticed:10}{of_folder:9}")
    print(*(change for change, test in results if test is None), sep="\n")


def main() -> int:
    options = arguments()
    begin = time.monotonic()
    memory = PLACE / "survivors.json"
    try:
        mutants = Mutants(options)
        say("Choosing changes that compile")
        mutants.choose()
        if options.list:
            print(*mutants.choice.chosen, sep="\n")
            return 0
        say("Building")
        mutants.make()
        say(f"Running the tests without a change, after {time.monotonic() - begin:.0f} seconds")
        tests = mutants.measured_tests()
    except BuildFailure as problem:
        print(problem, file=sys.stderr)
        return 1
    say(f"Trying {len(mutants.choice.chosen)} changes, after {time.monotonic() - begin:.0f} seconds")
    excuses = choice.read_excuses(ROOT / "mutants" / "excused.txt")
    last = [tuple(name) for name in json.loads(memory.read_text())] if options.survivors else []
    results = mutants.tried(tests, lambda change: change.name not in excuses and (
        not options.survivors or change.name in last))
    memory.write_text(json.dumps([change.name for change, test in results if test is None]))
    excused = [change for change in mutants.choice.chosen if change.name in excuses]
    report(mutants.folders, results, excused)
    say(f"{time.monotonic() - begin:.0f} seconds in all")
    return 0


if __name__ == "__main__":
    sys.exit(main())
