"""A copy of the project in which changes can be switched on, and its build."""

from __future__ import annotations

import os
import pathlib
import re
import shutil
import subprocess
from collections import defaultdict
from collections.abc import Iterable, Mapping
from concurrent.futures import ThreadPoolExecutor

import schemata
from places import Change
from translation_units import Includes, Unit, units_of

MESSAGE = re.compile(r"^([^\s:]+):(\d+):\d+: ", re.MULTILINE)
SOURCES = (".h", ".cpp")


class BuildFailure(Exception):
    """The sources can't be built without a change either."""


def sources_of(root: pathlib.Path) -> list[str]:
    """The files that git knows or would take."""
    command = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--deduplicate"]
    result = subprocess.run(command, cwd=root, capture_output=True, text=True, check=True)
    return [name for name in result.stdout.split("\0") if (root / name).is_file()]


def write_if_new(file: pathlib.Path, text: bytes) -> None:
    """Leaves the time of a file alone that is as it should be, for the sake of the build."""
    if not file.is_file() or file.read_bytes() != text:
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text)


class MutantBuild:
    """The copy stands in tree/, what is built of it in build/."""

    def __init__(self, root: pathlib.Path, place: pathlib.Path, targets: list[str], jobs: int) -> None:
        self.root = root
        self.targets = targets
        self.tree = place / "tree"
        self.build = place / "build"
        self.jobs = jobs
        self.copy()
        self.configure()
        self.units = units_of(self.build, self.tree)
        self.includes = Includes(self.tree, {self.tree / name: text for name, text in self.texts.items()})

    def copy(self) -> None:
        files = {name: (self.root / name).read_bytes() for name in sources_of(self.root)}
        self.texts = {name: text for name, text in files.items() if name.endswith(SOURCES)}
        self.originals = {name: text for name, text in self.texts.items() if name.startswith("src/")}
        for name, text in files.items():
            file = self.tree / name
            if name not in self.originals or not file.exists():  # else it waits for its changes
                write_if_new(file, text)
                shutil.copymode(self.root / name, file)
        for file in list(self.tree.rglob("*")):
            if file.is_file() and str(file.relative_to(self.tree)) not in files:
                file.unlink()

    def configure(self) -> None:
        switch = self.tree / "mutants" / "Switch.h"
        self.run(["cmake", "-G", "Ninja", "-S", str(self.tree), "-B", str(self.build), "--log-level=WARNING",
                  "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                  f"-DCMAKE_CXX_FLAGS=-w -include {switch}", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                  "-DVELLOREADER_BUILD_TESTS=ON", "-DVELLOREADER_WARNINGS_AS_ERRORS=OFF",
                  "-DVELLOREADER_BUILD_BENCHMARKS=OFF"])

    def run(self, command: list[str]) -> None:
        environment = dict(os.environ)
        if shutil.which("ccache"):
            environment["CMAKE_CXX_COMPILER_LAUNCHER"] = "ccache"
        result = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            raise BuildFailure(result.stdout + result.stderr)

    def library_units(self) -> list[Unit]:
        return [unit for unit in self.units if unit.file.is_relative_to(self.tree / "src")]

    def write(self, changes: Mapping[int, Change]) -> None:
        """Writes the sources in which these changes can be switched on."""
        of_file: dict[str, list[tuple[int, Change]]] = defaultdict(list)
        for number, change in changes.items():
            of_file[change.file].append((number, change))
        self.written = {name: schemata.switched(text, of_file[name]) for name, text in self.originals.items()}
        for name, text in self.written.items():
            write_if_new(self.tree / name, text)

    def unit_with(self, name: str) -> Unit | None:
        """A unit of the library that a file is part of: its own, if it has one."""
        sources = self.includes.sources_of(self.tree / name)
        own = self.tree / pathlib.Path(name).with_suffix(".cpp")
        units = sorted((unit for unit in self.library_units() if unit.file in sources),
                       key=lambda unit: (unit.file != own, unit.file))
        return units[0] if units else None

    def refused_switches(self, changes: Mapping[int, Change], names: Iterable[str]) -> set[int]:
        """The changes of some files that don't compile as choices."""
        units = {unit.file: unit for unit in map(self.unit_with, set(names)) if unit}
        with ThreadPoolExecutor(self.jobs) as pool:
            outputs = list(pool.map(compiled, units.values()))
        return set().union(*(self.numbers_in(output, changes) for output in outputs if output))

    def numbers_in(self, output: str, changes: Mapping[int, Change]) -> set[int]:
        """The changes at which the compiler's messages point; where they point at none, all in the files that
        they name."""
        near: set[int] = set()
        files = set()
        for file, line in MESSAGE.findall(output):
            name = os.path.relpath(os.path.join(self.build, file), self.tree)
            if name in self.written:
                files.add(name)
                near |= schemata.numbers_near(self.written[name], int(line))
        near &= set(changes)
        return near or {number for number, change in changes.items() if change.file in files}

    def compiles(self, change: Change) -> bool:
        """Whether a source compiles in which a change is made for good."""
        unit = self.unit_with(change.file)
        if unit is None:
            return False
        file = self.tree / change.file
        try:
            file.write_bytes(schemata.changed(self.originals[change.file], change))
            return compiled(unit) == ""
        finally:
            file.write_bytes(self.written[change.file])

    def make(self, changes: Mapping[int, Change]) -> set[int]:
        """Builds what the tests need. @return the changes that don't compile; then it isn't whole"""
        output = self.ninja()
        refused = self.numbers_in(output, changes) if output else set()
        if output and not refused:
            raise BuildFailure(output)
        return refused

    def make_with(self, change: Change) -> bool:
        """Builds the tests with a change that is made for good. @return whether it compiles"""
        write_if_new(self.tree / change.file, schemata.changed(self.originals[change.file], change))
        return not self.ninja()

    def restore(self, change: Change) -> None:
        write_if_new(self.tree / change.file, self.written[change.file])

    def ninja(self) -> str:
        """@return what went wrong"""
        command = ["ninja", "-C", str(self.build), "-k", "0", "-j", str(self.jobs), *self.targets]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        return result.stdout + result.stderr if result.returncode != 0 else ""


def compiled(unit: Unit) -> str:
    """@return what the compiler says against a unit"""
    result = subprocess.run(unit.checked(), cwd=unit.folder, capture_output=True, text=True, check=False)
    return result.stdout + result.stderr if result.returncode != 0 else ""
