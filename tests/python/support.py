"""What the tests of the Python package share. The argument is the folder of the named databases."""

from __future__ import annotations

import ctypes
import faulthandler
import os
import pathlib
import signal
import sys
import unittest

import velloreader
from pivy import coin

FOLDER = pathlib.Path(sys.argv.pop(1))
NAMES = ("alpha", "bravo", "charlie", "delta")
HANG_SECONDS = 200

# Whoever waits for ever is shown with its stack, and ended.
faulthandler.dump_traceback_later(HANG_SECONDS, exit=True)


def path_of(name):
    return FOLDER / f"{name}.flt"


def name_of(root):
    """Tells which of the databases a scene is of."""
    return root.getChild(0).getName().getString()


def scenes_alive():
    """How many scenes of the databases there are, whoever holds them."""
    nodes = coin.SoNodeList()
    return sum(coin.SoNode.getByName(coin.SbName(name), nodes) for name in NAMES)


class _Mallinfo(ctypes.Structure):
    _fields_ = [
        (name, ctypes.c_size_t)
        for name in ("arena", "ordblks", "smblks", "hblks", "hblkhd", "usmblks", "fsmblks", "uordblks",
                     "fordblks", "keepcost")
    ]


def memory_in_use():
    """The bytes that the C library has given out."""
    mallinfo = ctypes.CDLL(None).mallinfo2
    mallinfo.restype = _Mallinfo
    info = mallinfo()
    return info.uordblks + info.hblkhd


def status_of_child(function):
    """Runs a function in a child process, which the system ends where it hangs: 0 is for True."""
    child = os.fork()
    if child == 0:
        signal.alarm(HANG_SECONDS // 4)
        status = 2
        try:
            status = 0 if function() else 1
        finally:
            os._exit(status)
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


class SceneTest(unittest.TestCase):
    """A test that leaves no scene behind, whether to the next caller or to nobody."""

    def setUp(self):
        self.assertEqual(scenes_alive(), 0)

    def tearDown(self):
        self.assertEqual(name_of(velloreader.load(path_of("delta"))), "delta")
        self.assertEqual(scenes_alive(), 0)
