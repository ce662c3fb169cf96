#!/usr/bin/python3
"""Loads a database and counts its triangles."""

import sys

import velloreader
from pivy import coin


def main() -> int:
    if len(sys.argv) != 2:
        print("Usage: count_triangles.py FILE.flt", file=sys.stderr)
        return 2
    try:
        root = velloreader.load(sys.argv[1])
    except (OSError, ValueError) as problem:
        print(problem, file=sys.stderr)
        return 1
    count = coin.SoGetPrimitiveCountAction()
    count.apply(root)
    print(f"{sys.argv[1]}: {count.getTriangleCount()} triangles")
    return 0


if __name__ == "__main__":
    sys.exit(main())
