"""OpenFlight scene databases (.flt) as Open Inventor scene graphs, for programs that use pivy.

    import velloreader

    root = velloreader.load("airfield.flt")
"""

from __future__ import annotations

import ctypes
import os
import re
import warnings
import weakref

from pivy import coin

__all__ = ["DatabaseWarning", "load"]
__version__ = "@PROJECT_VERSION@"


class DatabaseWarning(UserWarning):
    """Something in a database is damaged or missing; the rest of it was loaded."""


# PyDLL keeps other Python threads waiting during a call: conversions run one at a time.
_native = ctypes.PyDLL(os.path.join(os.path.dirname(os.path.abspath(__file__)), "libvelloreader_python.so"))
_Report = ctypes.CFUNCTYPE(None, ctypes.c_char_p)
_native.velloreader_load.argtypes = [ctypes.c_void_p, ctypes.c_char_p, _Report]
_native.velloreader_load.restype = ctypes.c_int
_native.velloreader_unref.argtypes = [ctypes.c_void_p]
_native.velloreader_unref.restype = None

# Holds a new root until it has a proxy.
_holder = coin.SoGroup()

_MESSAGE = re.compile(r"(.*?)\n\(Warning Level: (\d+)\)\n\n", re.DOTALL)


def load(path: str | bytes | os.PathLike[str] | os.PathLike[bytes]) -> coin.SoSeparator:
    """Converts a database and returns the root of its scene graph, which keeps the whole scene alive.

    Textures are looked for next to the database. A listing of its records is written next to it, into a file
    of its name with ".log" after it. What is damaged or missing is reported as a DatabaseWarning.

    Raises OSError if the file can't be opened, ValueError if it isn't an OpenFlight database (revision 11 or
    newer), and MemoryError if it is too large.
    """
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError("embedded null byte")
    with open(name, "rb"):
        pass  # the error says exactly why a file can't be opened

    reports: list[str] = []
    report = _Report(lambda text: reports.append(text.decode("utf-8", "replace")))
    result = _native.velloreader_load(int(_holder.this), name, report)
    messages = [" ".join(text.split()) for text, _level in _MESSAGE.findall("".join(reports))]
    if result < 0:
        raise MemoryError(f"{os.fsdecode(name)}: out of memory")
    if result == 0:
        reasons = messages or ["not an OpenFlight database"]
        raise ValueError(f"{os.fsdecode(name)}: {'; '.join(reasons)}")

    root = _holder.getChild(0)
    # The proxy of a child owns no reference: take one, which is given back when the proxy goes. Setting its
    # "thisown" instead makes pivy lose its classes after a few roots.
    root.ref()
    _holder.removeAllChildren()
    weakref.finalize(root, _native.velloreader_unref, int(root.this)).atexit = False
    for message in messages:
        warnings.warn(f"{os.fsdecode(name)}: {message}", DatabaseWarning, stacklevel=2)
    return root
