"""Writes sources in which any of several changes can be switched on."""

from __future__ import annotations

import re
from collections.abc import Sequence

from places import Change, edited

Numbered = tuple[int, Change]

SWITCH = re.compile(rb"\(velloMutant\((\d+)\)")


def changed(source: bytes, change: Change) -> bytes:
    """A source with one change made."""
    return edited(source, change.edits)


def switched(source: bytes, changes: Sequence[Numbered]) -> bytes:
    """A source that asks at each of the places whether its change is switched on."""
    outer_first = sorted(changes, key=lambda item: (item[1].begin, -item[1].end, item[0]))
    return render(source, 0, len(source), outer_first)


def render(source: bytes, begin: int, end: int, changes: Sequence[Numbered]) -> bytes:
    """A part of a source. The changes are all within it, those of outer expressions before inner ones."""
    parts = []
    at = 0
    while at < len(changes):
        number, change = changes[at]
        inner = at + 1
        while inner < len(changes) and changes[inner][1].begin < change.end:
            inner += 1
        parts += [source[begin:change.begin], choice(source, number, change, changes[at + 1:inner])]
        begin = change.end
        at = inner
    return b"".join([*parts, source[begin:end]])


def choice(source: bytes, number: int, change: Change, inside: Sequence[Numbered]) -> bytes:
    """One change is switched on at a time, so only the unchanged expression has the inner ones."""
    other = edited(source, change.edits, change.begin, change.end)
    same = render(source, change.begin, change.end, inside)
    if change.is_condition:
        same = b"static_cast<bool>(" + same + b")"
    return b"(velloMutant(%d) ? %s : %s)" % (number, other, same)


def numbers_near(text: bytes, line: int) -> set[int]:
    """The changes that a line of a written source belongs to: those that begin on it, or else on the last
    line above that has any."""
    for candidate in reversed(text.split(b"\n")[:line]):
        if numbers := {int(match[1]) for match in SWITCH.finditer(candidate)}:
            return numbers
    return set()
