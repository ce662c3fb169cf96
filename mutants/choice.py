"""Which changes are tried."""

from __future__ import annotations

import itertools
import pathlib
import random
from collections import defaultdict
from collections.abc import Iterable, Iterator

from places import KINDS, Change

Name = tuple[str, str, str, str]


def shares(count: int, folders: list[str], seed: int) -> dict[str, int]:
    """How many changes each folder gets: as many as the others, or one more. Seeds that follow each other
    give those to other folders in turn."""
    each, more = divmod(count, len(folders))
    first = seed * more % len(folders)
    return {folder: each + ((i - first) % len(folders) < more) for i, folder in enumerate(folders)}


def in_turn(changes: Iterable[Change], seed: int) -> Iterator[Change]:
    """The changes of a folder in an order by chance, one of each kind after the other, and those of lines
    that had one already last."""
    chance = random.Random(seed)
    kinds: dict[str, list[Change]] = {kind: [] for kind in KINDS}
    for change in changes:
        kinds[change.kind].append(change)
    waiting = []
    for kind in kinds.values():
        chance.shuffle(kind)
        kind.reverse()
    lines = set()
    while any(kinds.values()):
        for kind in filter(None, kinds.values()):
            change = kind.pop()
            if (change.file, change.line) in lines:
                waiting.append(change)
                continue
            lines.add((change.file, change.line))
            yield change
    yield from waiting


class Choice:
    """So many changes of each folder. One that can't be made gives its place to the next."""

    def __init__(self, changes: Iterable[Change], wanted: dict[str, int], seed: int) -> None:
        of_folder: dict[str, list[Change]] = defaultdict(list)
        for change in changes:
            of_folder[change.folder].append(change)
        self.next = {folder: in_turn(of_folder[folder], seed) for folder in wanted}
        self.chosen = [change for folder, count in wanted.items() for change in self.take(folder, count)]

    def take(self, folder: str, count: int) -> list[Change]:
        return list(itertools.islice(self.next[folder], count))

    def replace(self, refused: Iterable[Change]) -> list[Change]:
        """@return those that come in their places"""
        new = []
        for change in refused:
            self.chosen.remove(change)
            new += self.take(change.folder, 1)
        self.chosen += new
        return new


def read_excuses(file: pathlib.Path) -> dict[Name, str]:
    """The changes that nobody can notice, and why."""
    excuses = {}
    for block in file.read_text().split("\n\n"):
        lines = [line.strip() for line in block.splitlines() if line.strip() and not line.startswith("#")]
        if lines:
            place, before, after, *reason = lines
            path, _, function = place.partition(":")
            excuses[path, function.strip(), before, after] = " ".join(reason)
    return excuses
