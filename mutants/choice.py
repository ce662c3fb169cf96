"""Which changes are tried."""

from __future__ import annotations

import hashlib
import itertools
import pathlib
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
    that had one already last. Changes that come or go leave the others in their order."""

    def lot(change: Change) -> bytes:
        return hashlib.sha256(repr((seed, change.name)).encode()).digest()

    kinds: dict[str, list[Change]] = {kind: [] for kind in KINDS}
    for change in changes:
        kinds[change.kind].append(change)
    waiting = []
    for kind in kinds.values():
        kind.sort(key=lot, reverse=True)
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
    """So many changes of each folder by each seed. One that can't be made gives its place to the next."""

    def __init__(self, changes: Iterable[Change], wanted: dict[int, dict[str, int]]) -> None:
        """@param wanted how many, by seed and folder"""
        of_folder: dict[str, list[Change]] = defaultdict(list)
        for change in changes:
            of_folder[change.folder].append(change)
        self.chosen: list[Change] = []
        self.drawn: dict[Change, Iterator[Change]] = {}  # with what is drawn next
        for seed, counts in wanted.items():
            for folder, count in counts.items():
                self.take(in_turn(of_folder[folder], seed), count)

    def take(self, order: Iterator[Change], count: int) -> list[Change]:
        """@return those that are new"""
        new = list(itertools.islice((change for change in order if change not in self.drawn), count))
        self.drawn.update(dict.fromkeys(new, order))
        self.chosen += new
        return new

    def replace(self, refused: Iterable[Change]) -> list[Change]:
        """@return those that come in their places"""
        new = []
        for change in refused:
            self.chosen.remove(change)
            new += self.take(self.drawn[change], 1)
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
