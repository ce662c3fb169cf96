#!/usr/bin/python3
"""Loads a database and counts its triangles."""

import sys

import velloreader
from pivy import coin

try:
    root = velloreader.load(sys.argv[1])
except (IndexError, OSError, ValueError) as problem:
    sys.exit(str(problem))
count = coin.SoGetPrimitiveCountAction()
count.apply(root)
print(f"{sys.argv[1]}: {count.getTriangleCount()} triangles")
