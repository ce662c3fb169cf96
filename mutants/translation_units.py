"""How the sources are compiled, and which of them a header reaches."""

from __future__ import annotations

import dataclasses
import json
import multiprocessing
import pathlib
import re
import shlex
from collections import defaultdict
from collections.abc import Iterable, Mapping

from places import Change, PlaceFinder

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
INCLUDE_FOLDERS = ("src", "tools", "tests", ".")


@dataclasses.dataclass(frozen=True)
class Unit:
    """A source as it is compiled."""

    file: pathlib.Path
    folder: str  # from where it is compiled
    command: tuple[str, ...]  # without the output

    def checked(self) -> list[str]:
        """A command that compiles it without an output."""
        return [*self.command, "-fsyntax-only"]

    def for_clang(self) -> list[str]:
        compiler = re.compile(r"(\+\+|cc|clang)(-[0-9]+)?$")
        start = next(i for i, word in enumerate(self.command) if compiler.search(word))
        return [word for word in self.command[start + 1:] if word != str(self.file)] + ["-w"]


def units_of(build: pathlib.Path, below: pathlib.Path) -> list[Unit]:
    """The sources below a folder that a build compiles, each once."""
    units = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["file"])
        if file.is_relative_to(below) and file not in units:
            words = shlex.split(entry["command"])
            output = words.index("-o")
            words = [word for word in words[:output] + words[output + 2:] if word != "-c"]
            units[file] = Unit(file, entry["directory"], tuple(words))
    return [units[file] for file in sorted(units)]


class Includes:
    """Which sources of the project a file is part of."""

    def __init__(self, root: pathlib.Path, texts: Mapping[pathlib.Path, bytes]) -> None:
        self.includers: dict[pathlib.Path, set[pathlib.Path]] = defaultdict(set)
        for file, text in texts.items():
            for name in INCLUDE.findall(text.decode(errors="replace")):
                for base in (file.parent, *(root / folder for folder in INCLUDE_FOLDERS)):
                    if (base / name).is_file():
                        self.includers[(base / name).resolve()].add(file)
                        break

    def sources_of(self, file: pathlib.Path) -> set[pathlib.Path]:
        """A source itself, or those that include a header, directly or by others."""
        met = {file}
        new = [file]
        while new:
            for includer in self.includers[new.pop()] - met:
                met.add(includer)
                new.append(includer)
        return {each for each in met if each.suffix == ".cpp"}


def read_unit(task: tuple[pathlib.Path, tuple[str, ...], Unit]) -> list[Change]:
    root, folders, unit = task
    finder = PlaceFinder(root, folders)
    if problems := finder.read(unit.file, unit.for_clang()):
        raise RuntimeError(f"clang can't read {unit.file}: {problems[0]}")
    return finder.changes()


def units_to_read(units: list[Unit], includes: Includes, wanted: Iterable[pathlib.Path]) -> list[Unit]:
    """As many units as it takes to meet all of some files: the sources, and one for each other header."""
    by_file = {unit.file: unit for unit in units}
    met: set[pathlib.Path] = set()
    chosen = []
    files = sorted(wanted, key=lambda file: (file.suffix != ".cpp", file))
    for file in files:
        reaching = sorted(includes.sources_of(file) & set(by_file))
        if reaching and not met & set(reaching):
            met.add(reaching[0])
            chosen.append(by_file[reaching[0]])
    return chosen


def find_changes(root: pathlib.Path, folders: tuple[str, ...], units: list[Unit], includes: Includes,
                 jobs: int) -> list[Change]:
    """All changes that can be made in the files of some folders."""
    wanted = [file for folder in folders for file in (root / folder).iterdir()
              if file.suffix in (".h", ".cpp")]
    tasks = [(root, folders, unit) for unit in units_to_read(units, includes, wanted)]
    found: set[Change] = set()
    with multiprocessing.Pool(jobs) as pool:
        for changes in pool.imap_unordered(read_unit, tasks):
            found.update(changes)
    return sorted(found, key=lambda change: (change.file, change.begin, change.end, change.edits))
