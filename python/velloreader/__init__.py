"""OpenFlight scene databases (.flt) as Open Inventor scene graphs, for programs that use pivy.

    >>> import velloreader
    >>> root = velloreader.load("airfield.flt")
    >>> root.getTypeId().getName().getString()
    'Separator'

From then on coin.SoDB.readAll() and SoFile read databases too.
"""

from __future__ import annotations

import ctypes
import json
import os
import warnings
from collections.abc import Callable, Iterable, Iterator
from typing import Any, Literal, NamedTuple, NoReturn, Union

from pivy import coin

__all__ = ["Database", "DatabaseWarning", "LoadCancelled", "Message", "Reference", "Texture", "load"]
__version__ = "@PROJECT_VERSION@"

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
Progress = Callable[[str, int, int], object]


class DatabaseWarning(UserWarning):
    """Something in a database is damaged or missing; the rest of it was loaded."""


class LoadCancelled(Exception):
    """The progress function returned False."""


class Message(NamedTuple):
    """What the loader has to say about a database."""

    level: Literal["remark", "warning", "error"]
    text: str
    file: str
    offset: int | None
    """Of the record's first byte in the file."""
    opcode: int | None
    times: int
    """How often it came."""


class Texture(NamedTuple):
    """A texture that a face of the scene uses."""

    name: str
    """As the database names it."""
    database: str
    """The file that names it."""
    path: str | None
    """Where it was found."""
    tried: list[str]
    """Where it was looked for, if it wasn't found."""


class Reference(NamedTuple):
    """A file that a database refers to."""

    name: str
    """As the database names it."""
    database: str
    """The file that names it."""
    path: str | None
    """Where it was found."""
    loaded: bool
    """Whether its scene is a part of this one."""


class _Options(ctypes.Structure):
    _fields_ = [
        ("log", ctypes.c_char_p),
        ("texturePath", ctypes.POINTER(ctypes.c_char_p)),
        ("references", ctypes.c_int),
        ("exact", ctypes.c_int),
    ]


# PyDLL keeps the interpreter's lock during a call: the toolkit is for one thread at a time. It also lets the
# library raise exceptions, and give objects that own what they stand for, so that nothing comes between.
_native = ctypes.PyDLL(os.path.join(os.path.dirname(os.path.abspath(__file__)), "libvelloreader_python.so"))
_native.velloreader_load.argtypes = [
    ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(_Options), ctypes.py_object, ctypes.py_object
]
_native.velloreader_load.restype = ctypes.py_object
_native.velloreader_records.argtypes = [ctypes.c_char_p, ctypes.py_object]
_native.velloreader_records.restype = ctypes.py_object
_native.velloreader_next.argtypes = [ctypes.py_object, ctypes.py_object]
_native.velloreader_next.restype = ctypes.py_object

# The toolkit was loaded with private symbols and doesn't find the module for .flt files by itself.
if _native.velloreader_begin() != 0:
    warnings.warn("libSoFLTFileKit.so isn't installed: SoDB.readAll() and SoFile don't read .flt files")

_REFERENCES = {"follow": 0, "skip": 1}


def _name_of(path: Path) -> bytes:
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError("embedded null byte")
    return name


def _fail(kind: str, text: str, number: int, file: str) -> NoReturn:
    """Raises the exception for an error of the library."""
    if number != 0:
        raise OSError(number, os.strerror(number), file)
    if kind == "outOfMemory":
        raise MemoryError(text)
    if kind == "cancelled":
        raise LoadCancelled(text)
    if kind == "cannotOpen":
        raise OSError(text)
    if kind == "failed":
        raise RuntimeError(text)
    raise ValueError(text)


class Database:
    """A loaded database: its scene, and what is to be known about it.

    The options are those of load(), which is all that most programs need. Nothing is warned about here: look
    at the messages.

        >>> database = Database("airfield.flt")
        >>> database.info["revision"], database.info["unit"]
        (1570, 'metres')
        >>> [message.text for message in database.messages]
        []
        >>> sorted(texture.name for texture in database.textures if texture.path is None)
        []
        >>> [(reference.name, reference.loaded) for reference in database.references]
        [('airfield/terminal.flt', True)]
    """

    scene: coin.SoSeparator
    """The root of the scene graph, which keeps the whole scene alive."""
    messages: list[Message]
    textures: list[Texture]
    references: list[Reference]
    omissions: dict[str, int]
    """What the database holds and the scene doesn't show: how much of each kind."""
    info: dict[str, Any]
    """The header: name, revision, unit, unit_multiplier, last_change, projection, ellipsoid, origin,
    south_west, north_east (latitude and longitude in degrees), and the numbers of records and bytes."""

    def __init__(
        self,
        path: Path,
        *,
        log: Path | Literal[True] | None = None,
        textures: Iterable[Path] = (),
        references: Literal["follow", "skip"] = "follow",
        exact: bool = False,
        progress: Progress | None = None,
    ) -> None:
        self._name = _name_of(path)
        if references not in _REFERENCES:
            raise ValueError(f"references: {references!r} is neither 'follow' nor 'skip'")

        def goes_on(file: str, done: int, in_all: int) -> bool:
            return progress is None or progress(file, done, in_all) is not False

        directories = [_name_of(directory) for directory in textures]
        options = _Options(
            log=None if log is None else b"" if log is True else _name_of(log),
            texturePath=(ctypes.c_char_p * (len(directories) + 1))(*directories, None),
            references=_REFERENCES[references],
            exact=int(exact),
        )
        watcher = ctypes.py_object() if progress is None else goes_on
        parent = coin.SoGroup()
        text, root = _native.velloreader_load(
            int(parent.this), self._name, ctypes.byref(options), watcher, _fail
        )
        content = json.loads(text)
        self.messages = [Message(**message) for message in content["messages"]]
        self.textures = [Texture(**texture) for texture in content["textures"]]
        self.references = [Reference(**reference) for reference in content["references"]]
        self.omissions = content["omissions"]
        self.info = content["info"]
        for place in ("origin", "south_west", "north_east"):
            self.info[place] = tuple(self.info[place])
        scene = parent.getChild(0)
        # The proxy of a child owns no reference: that of the library's object goes with it. Setting its
        # "thisown" instead makes pivy lose its classes after a few roots.
        vars(scene)["_root"] = root
        self.scene = scene

    def records(self) -> Iterator[dict[str, Any]]:
        """Reads the records of the file one by one, each as a dictionary with its opcode, class, length,
        offset and fields.

            >>> database = Database("airfield.flt")
            >>> next(database.records())["class"]
            'FltRecordHeader'
            >>> sum(record["opcode"] == 5 for record in database.records()) > 100
            True
        """
        records = _native.velloreader_records(self._name, _fail)
        while (text := _native.velloreader_next(records, _fail)) is not None:
            yield json.loads(text)


def load(
    path: Path,
    *,
    log: Path | Literal[True] | None = None,
    textures: Iterable[Path] = (),
    references: Literal["follow", "skip"] = "follow",
    exact: bool = False,
    progress: Progress | None = None,
) -> coin.SoSeparator:
    """Loads a database and returns the root of its scene graph, which keeps the whole scene alive.

    What is damaged or missing is reported as a DatabaseWarning; Database has it as data.

        >>> root = load("airfield.flt", textures=["/data/textures"])
        >>> root.getNumChildren() > 0
        True

    Options:
        log         where to write a listing of all records, about ten times as long as the database: a file,
                    or True for the name of the database with ".log" after it. By default there is none.
        textures    directories in which textures are looked for, besides that of the database
        references  "follow" loads the files that the database refers to, "skip" leaves their places empty
        exact       converts as the plug-in does, with all its rules
        progress    called now and then with the name of a file, the bytes done and the bytes in all; if it
                    returns False, the load ends with LoadCancelled

    Raises OSError if the file can't be opened, ValueError if it isn't an OpenFlight database (revision 11 or
    newer) or is damaged beyond use, and MemoryError if it is too large.
    """
    database = Database(
        path, log=log, textures=textures, references=references, exact=exact, progress=progress
    )
    name = os.fsdecode(_name_of(path))
    for message in database.messages:
        if message.level != "remark":
            warnings.warn(f"{message.file or name}: {message.text}", DatabaseWarning, stacklevel=2)
    return database.scene
