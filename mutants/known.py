"""What earlier runs found out about the sources as they are."""

from __future__ import annotations

import dataclasses
import hashlib
import pathlib
import pickle
from collections.abc import Mapping

from places import Change

TOOLS = ("places.py", "schemata.py", "translation_units.py")


@dataclasses.dataclass
class Known:
    """To read all sources takes minutes, and so does trying which changes compile."""

    changes: list[Change]
    compiling: set[Change] = dataclasses.field(default_factory=set)
    refused: set[Change] = dataclasses.field(default_factory=set)

    def save(self, file: pathlib.Path) -> None:
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(pickle.dumps(self))

    @staticmethod
    def load(file: pathlib.Path) -> Known | None:
        if not file.exists():
            return None
        known = pickle.loads(file.read_bytes())
        assert isinstance(known, Known)
        return known


def file_for(place: pathlib.Path, folders: list[str], sources: Mapping[str, bytes]) -> pathlib.Path:
    """Where that is kept for some folders, while all sources and the tool stay as they are."""
    state = hashlib.sha256(repr((folders, sorted(sources.items()))).encode())
    for tool in TOOLS:
        state.update((pathlib.Path(__file__).parent / tool).read_bytes())
    return place / "known" / state.hexdigest()
