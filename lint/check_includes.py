#!/usr/bin/env python3
"""Holds the includes of the sources against the direction in which the house is built.

    lint/check_includes.py [ROOT]

Prints every include that runs the wrong way, with its file and line, and exits with 1 if there is one.
"""

from __future__ import annotations

import pathlib
import re
import sys

# What the files of a folder may include from, besides their own folder. The table reads from the ground floor
# up: a folder names only those that stand above it in the table.
MAY_INCLUDE: dict[str, tuple[str, ...]] = {
    "src/toolkit": (),
    "src/textures": ("src/toolkit",),
    "src/dump": ("src/toolkit",),
    "src/messages": ("src/toolkit", "src/dump"),
    "src/records": ("src/toolkit", "src/dump", "src/messages"),
    "src/parser": ("src/toolkit", "src/dump", "src/messages", "src/records"),
    "src/statistics": ("src/toolkit", "src/messages", "src/records"),
    "src/convert": ("src/toolkit", "src/textures", "src/dump", "src/messages", "src/records",
                    "src/parser", "src/statistics"),
    "src/model": ("src/toolkit", "src/textures", "src/messages", "src/records", "src/parser"),
    "src/visual": ("src/toolkit", "src/textures", "src/dump", "src/messages", "src/records", "src/parser",
                   "src/model"),
    "src/scene": ("src/toolkit", "src/textures", "src/visual"),
    "src/vrml": ("src/toolkit", "src/textures", "src/messages", "src/visual"),
    "src/inspect": ("src/toolkit", "src/textures", "src/dump", "src/messages", "src/records", "src/parser",
                    "src/model", "src/visual"),
    "src/plugin": ("src/toolkit", "src/convert"),
    "src/loader": ("src/toolkit", "src/textures", "src/dump", "src/messages", "src/records",
                   "src/parser", "src/convert", "src/visual", "src/scene"),
    "src/globe": ("src/toolkit", "src/visual", "src/loader"),
    "src/gltf": ("src/toolkit", "src/textures", "src/messages", "src/visual", "src/loader", "src/globe"),
    "src/tiles": ("src/toolkit", "src/visual", "src/loader", "src/globe", "src/gltf"),
    "src/obj": ("src/toolkit", "src/textures", "src/visual", "src/loader", "src/gltf"),
    "src/filekit": ("src/toolkit", "src/loader"),
    "python": ("src/toolkit", "src/visual", "src/loader", "src/gltf", "src/obj"),
    "tools/support": ("src/toolkit", "src/textures", "src/messages", "src/records", "src/loader"),
    "tools/info": ("tools/support", "src/messages", "src/records", "src/inspect", "src/loader"),
    "tools/check": ("tools/support", "src/messages", "src/records", "src/inspect", "src/loader"),
    "tools/convert": ("tools/support", "src/toolkit", "src/messages", "src/records", "src/parser",
                      "src/visual", "src/inspect", "src/loader", "src/tiles"),
    "tools/iv": ("tools/support", "tools/convert", "src/toolkit", "src/textures", "src/vrml", "src/loader"),
    "tools/gltf": ("tools/support", "tools/convert", "src/gltf", "src/obj", "src/globe", "src/tiles",
                   "src/loader"),
    "tools/report": ("tools/support", "tools/convert", "src/messages"),
    "tools/tileset": ("tools/support", "tools/convert"),
    "tools/shot": ("tools/support", "src/toolkit", "src/messages", "src/loader"),
    "tools/view": ("tools/support", "tools/iv", "src/toolkit", "src/textures", "src/messages", "src/records",
                   "src/visual", "src/inspect", "src/loader", "src/gltf", "src/obj"),
    "writer": (),
    "examples": ("writer", "tools/support", "src/loader", "src/toolkit", "src/plugin"),
}
# Tests, benchmarks and the fuzzer look into every class of the library.
LIBRARY = tuple(folder for folder in MAY_INCLUDE if folder.startswith("src/"))
MAY_INCLUDE |= {
    "tests/support": (*LIBRARY, "writer"),
    "tests": (*LIBRARY, "writer", "tests/support", "tools/support", "tools/convert", "tools/iv"),
    "tests/shot": (*LIBRARY, "writer", "tests/support", "tools/support", "tools/shot"),
    "tests/view": (*LIBRARY, "writer", "tests/support", "tools/support", "tools/view"),
    "bench": (*LIBRARY, "writer", "tests/support", "tools/support", "tools/shot", "tools/view"),
    "fuzz": (*LIBRARY, "writer", "tests/support"),
}

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def folder_of(path: pathlib.PurePath) -> str:
    """The folder of the table that holds a file, or an empty text."""
    for parent in (str(parent) for parent in path.parents):
        if parent in MAY_INCLUDE:
            return parent
    return ""


def target_of(include: str, source: pathlib.PurePath, root: pathlib.Path) -> pathlib.PurePath | None:
    """The file that an include names: next to its source, or below a folder that compilers search."""
    for base in (source.parent, *map(pathlib.PurePath, ("src", "tools", "tests", "."))):
        if (root / base / include).is_file():
            return base / include
    return None


def problems_of(source: pathlib.PurePath, root: pathlib.Path) -> list[str]:
    folder = folder_of(source)
    problems = []
    for number, line in enumerate((root / source).read_text().splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = target_of(match[1], source, root)
        if target is None:
            problems.append(f'{source}:{number}: "{match[1]}" is nowhere to be found')
            continue
        other = folder_of(target)
        if other != folder and other not in MAY_INCLUDE[folder]:
            problems.append(f"{source}:{number}: {folder} must not include {target}")
    return problems


def check(root: pathlib.Path) -> list[str]:
    problems = []
    above: list[str] = []
    for folder, others in MAY_INCLUDE.items():
        problems += [f"the table lets {folder} include {other}, which doesn't stand above it"
                     for other in others if other not in above]
        above.append(folder)
    unknown = {f"src/{entry.name}" for entry in (root / "src").iterdir() if entry.is_dir()} - set(above)
    problems += [f"{folder} has no line in the table" for folder in sorted(unknown)]
    seen: dict[str, pathlib.Path] = {}
    for header in sorted((root / "src").rglob("*.h")):
        other = seen.setdefault(header.name, header)
        if other != header:
            problems.append(f"{header.relative_to(root)} has the name of {other.relative_to(root)}: "
                            "two classes of one name become one when they are linked")
    for folder in MAY_INCLUDE:
        sources = (path for ending in ("*.h", "*.cpp") for path in (root / folder).rglob(ending))
        for source in sorted(path.relative_to(root) for path in sources):
            if folder_of(source) == folder:
                problems += problems_of(source, root)
    return problems


def main() -> int:
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent)
    problems = check(root)
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
