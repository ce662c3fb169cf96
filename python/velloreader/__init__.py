"""OpenFlight scene databases (.flt) as Open Inventor scene graphs, for programs that use pivy, and as arrays.

    >>> import velloreader
    >>> root = velloreader.load("airfield.flt")
    >>> root.getTypeId().getName().getString()
    'Separator'
    >>> meshes = list(velloreader.Database("airfield.flt").meshes())
    >>> meshes[0].positions.shape[1], meshes[0].positions.itemsize
    (3, 4)

From then on coin.SoDB.readAll() and SoFile read databases too. Arrays need neither pivy nor the toolkit.
"""

from __future__ import annotations

import ctypes
import functools
import importlib
import importlib.abc
import json
import math
import operator
import os
import struct
import sys
import warnings
from collections.abc import Callable, Iterable, Iterator, Sequence
from typing import Any, Literal, NamedTuple, NoReturn, Union

__all__ = [
    "Database", "DatabaseWarning", "Joint", "Layer", "LoadCancelled", "Material", "Mesh", "Message", "Range",
    "Reference", "Switch", "Texture", "load",
]
__version__ = "@PROJECT_VERSION@"

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
Progress = Callable[[str, int, int], object]
Paths = Iterable[Path]

Array = Any
"""A numpy.ndarray where numpy is installed, otherwise a memoryview. It can't be written to, and keeps what it
shows alive."""

Separator = Any
"""A coin.SoSeparator."""

Color = tuple[float, float, float]


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


class Switch(NamedTuple):
    """A part of a database that shows those of its children that a mask says."""

    name: str
    mask: int
    """The number of the mask that it shows."""
    masks: list[int]
    """Of each mask, bit i says whether it shows child i."""
    mask_names: list[str]
    """By the numbers of the masks; empty where one has no name, and the list may be shorter."""


class Range(NamedTuple):
    """How far a joint may go: in the database's units, or degrees."""

    minimum: float
    maximum: float
    current: float
    step: float
    limited: bool
    """Whether it may not leave what lies between minimum and maximum."""


class Joint(NamedTuple):
    """A part of a database that can be moved, such as a door."""

    name: str
    translation: tuple[Range, Range, Range]
    """Along x, y and z of its own frame."""
    pitch: Range
    """About x."""
    roll: Range
    """About y."""
    yaw: Range
    """About z."""
    scale: tuple[Range, Range, Range]
    """Along x, y and z. A current value of 0 counts as 1."""


class Material(NamedTuple):
    """How a mesh looks, besides the colours of its corners: parts of colours are from 0 to 1."""

    ambient: Color
    specular: Color
    emissive: Color
    shininess: float
    """Of an exponent of 128."""
    lit: bool
    two_sided: bool
    """Otherwise faces are seen from where their corners go to the left."""
    blended: bool
    """It lets what is behind it through, by its colours or its texture."""
    cut_out: bool
    """It is there where the alpha of its texture is above a half, and not blended then."""
    ignores_texture_alpha: bool
    outlined: bool
    """Lines are drawn over it."""
    level: int
    """How many faces it lies on: it is drawn over them."""
    size: float
    """Of points or lines in pixels; 0 for the usual one."""
    texture: Texture | None


class Layer(NamedTuple):
    """A further texture over the first."""

    number: int
    """From 1 to 7."""
    texture: Texture | None
    uvs: Array
    """Of each corner: floats, n x 2."""


# PyDLL keeps the interpreter's lock during a call: the toolkit is for one thread at a time. It also lets the
# library raise exceptions, and give objects that own what they stand for, so that nothing comes between.
_native = ctypes.PyDLL(os.path.join(os.path.dirname(os.path.abspath(__file__)), "libvelloreader_python.so"))
_native.velloreader_begin.restype = None
_FUNCTIONS: dict[str, list[Any]] = {
    "options": [],
    "loader": [],
    "set": [ctypes.py_object, ctypes.c_char_p, ctypes.c_char_p],
    "load": [ctypes.py_object, ctypes.c_char_p, ctypes.c_void_p, ctypes.py_object],
    "scene": [ctypes.py_object, ctypes.c_void_p],
    "save": [ctypes.py_object, ctypes.c_char_p],
    "meshes": [ctypes.py_object],
    "next_mesh": [ctypes.py_object],
    "array": [ctypes.py_object, ctypes.c_char_p, ctypes.c_size_t],
    "records": [ctypes.c_char_p, ctypes.POINTER(ctypes.c_int), ctypes.c_size_t],
    "next": [ctypes.py_object],
    "columns": [ctypes.c_char_p, ctypes.c_int],
}
for _name, _arguments in _FUNCTIONS.items():
    _function = getattr(_native, f"velloreader_{_name}")
    _function.argtypes = [*_arguments, ctypes.py_object]  # the last raises the exceptions of the library
    _function.restype = ctypes.py_object


def _register() -> None:
    """Has the toolkit read databases. It was loaded with private symbols, and doesn't find the module for
    .flt files by itself."""
    if _native.velloreader_register() != 0:
        warnings.warn("libSoFLTFileKit.so isn't installed: SoDB.readAll() and SoFile don't read .flt files")


class _WhenPivyComes(importlib.abc.MetaPathFinder):
    """Registers as soon as pivy has started the toolkit."""

    def find_spec(self, name: str, path: Sequence[str] | None, target: Any = None) -> Any:
        if name != "pivy.coin":
            return None
        for finder in sys.meta_path:
            found = None if finder is self else finder.find_spec(name, path, target)
            if found is not None and found.loader is not None:
                execute = found.loader.exec_module

                def execute_and_register(module: Any) -> None:
                    execute(module)
                    sys.meta_path.remove(self)
                    _register()

                setattr(found.loader, "exec_module", execute_and_register)
                return found
        return None


_native.velloreader_begin()
if "pivy.coin" in sys.modules:
    _register()
else:
    sys.meta_path.insert(0, _WhenPivyComes())


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


_OPTIONS: dict[str, str] = json.loads(_native.velloreader_options(_fail))
"""The kinds of the loader's options."""


def _values_of(kind: str, value: Any) -> list[bytes]:
    """The values of an option as the library takes them."""
    if kind == "directories":
        return [_name_of(directory) for directory in value]
    if value is None:
        return []
    if kind == "flag":
        return [b"1" if value else b"0"]
    if kind == "number":
        return [b"%d" % operator.index(value)]
    if kind == "log" and value is True:
        return [b""]
    return [_name_of(value)]


def _loader_with(options: dict[str, Any]) -> Any:
    loader = _native.velloreader_loader(_fail)
    for name, value in options.items():
        if name not in _OPTIONS:
            raise TypeError(f"there is no option {name!r}")
        for one in _values_of(_OPTIONS[name], value):
            _native.velloreader_set(loader, name.encode(), one, _fail)
    return loader


def _coin() -> Any:
    return importlib.import_module("pivy.coin")


@functools.lru_cache(maxsize=None)
def _numpy() -> Any:
    try:
        return importlib.import_module("numpy")
    except ImportError:
        return None


def _storage_at(owner: Any, address: int, size: int) -> Any:
    """Bytes of what an object owns, which keep it alive."""
    storage = (ctypes.c_ubyte * size).from_address(address)
    vars(storage)["_owner"] = owner
    return storage


def _array(mesh: Any, which: str, layer: int = 0) -> Array:
    """An array in the storage of a mesh, or None."""
    place = _native.velloreader_array(mesh, which.encode(), layer, _fail)
    if place is None:
        return None
    address, rows, columns, kind = place
    size = rows * max(columns, 1) * struct.calcsize(kind)
    shape = [rows, columns] if columns else [rows]
    view = memoryview(_storage_at(mesh, address, size)).cast("B").cast(kind, shape).toreadonly()
    return view if _numpy() is None else _numpy().asarray(view)


class Mesh:
    """Faces, lines or points that look alike, at one place in the world.

    Corner i stands where transform brings origin + positions[i]. Arrays show the library's own storage, which
    the meshes of a part that stands at several places share.
    """

    def __init__(self, native: tuple[Any, ...], textures: Sequence[Texture]) -> None:
        self._native, self.name, self.file, self.offset, self.kind, material, layers = native
        *parts, texture = material

        def texture_of(number: int) -> Texture | None:
            return textures[number] if number >= 0 else None

        self.material = Material._make([*parts, texture_of(texture)])
        self._layers = [(number, texture_of(texture)) for number, texture in json.loads(layers)]

    name: str
    """Of the nearest node above it that has one; empty if there is none."""
    file: str
    """Whose record it comes from: the database, or a file that it refers to."""
    offset: int | None
    """Of the first byte of that node's record in the file."""
    kind: Literal["faces", "lines", "points"]
    material: Material

    @functools.cached_property
    def transform(self) -> Array:
        """Brings a column of coordinates into the world, from the left: doubles, 4 x 4, the move in
        the last column. Joints are at their current values. Where the determinant is negative, sides of
        faces are turned."""
        return _array(self._native, "transform")

    @functools.cached_property
    def origin(self) -> Array:
        """What positions count from: 3 doubles."""
        return _array(self._native, "origin")

    @functools.cached_property
    def positions(self) -> Array:
        """Of each corner: floats, n x 3."""
        return _array(self._native, "positions")

    @functools.cached_property
    def normals(self) -> Array | None:
        """Of each corner, of length 1: floats, n x 3. None if the mesh isn't lit."""
        return _array(self._native, "normals")

    @functools.cached_property
    def uvs(self) -> Array | None:
        """Texture coordinates of each corner: floats, n x 2. None without a texture."""
        return _array(self._native, "uvs")

    @functools.cached_property
    def layers(self) -> list[Layer]:
        """Further textures over the first, in their order."""
        return [Layer(number, texture, _array(self._native, "layer", place))
                for place, (number, texture) in enumerate(self._layers)]

    @functools.cached_property
    def colors(self) -> Array:
        """Red, green, blue and alpha of each corner, from 0 to 255: bytes, n x 4."""
        return _array(self._native, "colors")

    @functools.cached_property
    def triangles(self) -> Array | None:
        """The corners of each triangle: unsigned integers, n x 3. None for lines and points."""
        return _array(self._native, "triangles")

    @functools.cached_property
    def lines(self) -> Array | None:
        """The ends of each piece of a line: unsigned integers, n x 2. None for faces and points."""
        return _array(self._native, "lines")

    def __repr__(self) -> str:
        return f"<Mesh {self.name!r}: {self.kind}>"


def _columns_of(owner: Any, name: str, kind: str, shape: list[int], values: Any,
                counts: tuple[int, int] | None, absences: tuple[int, int] | None) -> dict[str, Array]:
    """A field's column, and that of its counts, in the storage of what owns them."""
    numpy = importlib.import_module("numpy")

    def array_at(place: tuple[int, int], kind: str) -> Array:
        return numpy.frombuffer(_storage_at(owner, *place), kind)

    columns: dict[str, Array] = {}
    if kind == "O":
        columns[name] = numpy.array(values, dtype=object)
    else:
        columns[name] = array_at(values, kind).reshape([-1, *shape])
    if counts is not None:
        columns[name + ".count"] = array_at(counts, "u8")
    if absences is not None:
        row_of = name if counts is None else name + ".count"
        mask = array_at(absences, "?")
        column = columns[row_of]
        rows = mask.reshape([-1] + [1] * (column.ndim - 1))
        columns[row_of] = numpy.ma.masked_array(column, numpy.broadcast_to(rows, column.shape))
    return columns


def _range_of(values: list[Any]) -> Range:
    return Range._make(math.nan if value is None else value for value in values)


def _ranges_of(values: list[Any]) -> tuple[Range, Range, Range]:
    x, y, z = map(_range_of, values)
    return x, y, z


def _joint_of(content: dict[str, Any]) -> Joint:
    return Joint(content["name"], _ranges_of(content["translation"]), _range_of(content["pitch"]),
                 _range_of(content["roll"]), _range_of(content["yaw"]), _ranges_of(content["scale"]))


def _switch_of(content: dict[str, Any]) -> Switch:
    masks = [int(mask, 16) for mask in content["masks"]]
    return Switch(content["name"], content["mask"], masks, content["mask_names"])


class Database:
    """A loaded database: its meshes, its scene, and what is to be known about it.

    The options are those of load(), which is all that most programs need. Nothing is warned about here: look
    at the messages. The toolkit is started, by pivy, when the scene is first asked for.

        >>> database = Database("airfield.flt")
        >>> database
        Database('airfield.flt')
        >>> database.info["revision"], database.info["unit"]
        (1570, 'metres')
        >>> [message.text for message in database.messages]
        []
        >>> sorted(texture.name for texture in database.textures if texture.path is None)
        []
        >>> [(reference.name, reference.loaded) for reference in database.references]
        [('airfield/terminal.flt', True)]
    """

    messages: list[Message]
    textures: list[Texture]
    references: list[Reference]
    omissions: dict[str, int]
    """What the database holds and the scene doesn't show: how much of each kind."""
    info: dict[str, Any]
    """The header: name, revision, unit, unit_multiplier, last_change, projection, ellipsoid, origin,
    south_west, north_east (latitude and longitude in degrees), and the numbers of records and bytes; and
    offset, what the option origin took from all places."""
    switches: list[Switch]
    """The exact conversion knows of none."""
    joints: list[Joint]
    """The exact conversion knows of none."""

    _is_scene_alone = False
    _visual: Any = None
    _scene: Separator = None

    def __init__(
        self,
        path: Path,
        *,
        progress: Progress | None = None,
        **options: Any,
    ) -> None:
        self._name = _name_of(path)
        chosen: dict[str, Any] = dict(
            **options,
        )
        loader = _loader_with(chosen)

        def goes_on(file: str, done: int, in_all: int) -> bool:
            return progress is None or progress(file, done, in_all) is not False

        watcher = ctypes.py_object() if progress is None else goes_on
        if self._is_scene_alone or chosen.get("exact"):
            parent = _coin().SoGroup()
            text, root = _native.velloreader_load(
                loader, self._name, int(parent.this), watcher, _fail
            )
            self._keep_scene(parent, root)
        else:
            text, self._visual = _native.velloreader_load(loader, self._name, None, watcher, _fail)
        self._keep_content(json.loads(text))

    def _keep_content(self, content: dict[str, Any]) -> None:
        self.messages = [Message(**message) for message in content["messages"]]
        self.textures = [Texture(**texture) for texture in content["textures"]]
        self.references = [Reference(**reference) for reference in content["references"]]
        self.omissions = content["omissions"]
        self.info = content["info"]
        for place in ("origin", "south_west", "north_east", "offset"):
            self.info[place] = tuple(self.info[place])
        self.switches = [_switch_of(switch) for switch in content["switches"]]
        self.joints = [_joint_of(joint) for joint in content["joints"]]

    def _keep_scene(self, parent: Any, root: Any) -> None:
        scene = parent.getChild(0)
        # The proxy of a child owns no reference: that of the library's object goes with it. Setting its
        # "thisown" instead makes pivy lose its classes after a few roots.
        vars(scene)["_root"] = root
        self._scene = scene

    @property
    def scene(self) -> Separator:
        """The root of the scene graph, which keeps the whole scene alive."""
        if self._scene is None:
            parent = _coin().SoGroup()
            root = _native.velloreader_scene(self._visual, int(parent.this), _fail)
            self._keep_scene(parent, root)
        return self._scene

    def meshes(self) -> Iterator[Mesh]:
        """Goes over what is drawn, mesh by mesh, each at its place in the world: a part that stands at
        several places comes once for each. Of levels of detail the finest is gone over, and of a switch
        what its mask shows; faces that turn to the eye stand as they are stored. Raises ValueError after
        the exact conversion, which makes scenes only.

            >>> database = Database("airfield.flt")
            >>> sum(len(mesh.triangles) for mesh in database.meshes() if mesh.kind == "faces") > 1000
            True
        """
        self._check_visual()
        return self._walk(_native.velloreader_meshes(self._visual, _fail), tuple(self.textures))

    def save(self, path: Path) -> dict[str, int]:
        """Writes what is to be seen of the database into a file, whole or not at all, in the form that the
        ending of its name says: .glb or .gltf for most programs of today, .html for a page that shows it in
        any browser, .obj for older programs. Returns what the form can't tell: how much of each kind. Raises
        ValueError for other endings and after the exact conversion, which makes scenes only, and OSError if
        it can't be written.

            >>> Database("airfield.flt").save("airfield.glb")["texts"]
            1
        """
        self._check_visual()
        omissions: dict[str, int] = json.loads(_native.velloreader_save(self._visual, _name_of(path), _fail))
        return omissions

    def _check_visual(self) -> None:
        if self._visual is None:
            name = os.fsdecode(self._name)
            raise ValueError(f"{name}: the exact conversion makes scenes only. Load without that option.")

    @staticmethod
    def _walk(meshes: Any, textures: Sequence[Texture]) -> Iterator[Mesh]:
        while (mesh := _native.velloreader_next_mesh(meshes, _fail)) is not None:
            yield Mesh(mesh, textures)

    def records(self, opcodes: Iterable[int] | None = None) -> Iterator[dict[str, Any]]:
        """Reads the records of the file one by one, each as a dictionary with its opcode, class, length,
        offset and fields; those of the given opcodes alone, if there are any given.

            >>> database = Database("airfield.flt")
            >>> next(database.records())["class"]
            'FltRecordHeader'
            >>> sum(record["opcode"] == 5 for record in database.records()) > 100
            True
            >>> {record["class"] for record in database.records(opcodes=[5])}
            {'FltRecordFace'}
        """
        wanted = [] if opcodes is None else [operator.index(opcode) for opcode in opcodes]
        if opcodes is not None and not wanted:
            return
        numbers = (ctypes.c_int * len(wanted))(*wanted)
        records = _native.velloreader_records(self._name, numbers, len(wanted), _fail)
        while some := _native.velloreader_next(records, _fail):
            yield from some

    def columns(self, opcode: int) -> dict[str, Array]:
        """Reads all records of an opcode at once: an array of numpy for each field, with an element or a row
        for each record. What stands where in the file is in "offset"; a field in a block is called
        "block.field", and a bit of the flags "flags.bit". Where records hold different numbers of values, the
        array has all of them one behind the other, and "field.count" how many each record has. Fields that
        some of the records lack are masked arrays. Reserved bytes, data without a layout, and blocks of which
        a record has several are left to records(). Raises ImportError without numpy.

            >>> columns = Database("airfield.flt").columns(5)
            >>> columns["colorNameIndex"].dtype
            dtype('int64')
            >>> columns["idField"][0] == next(Database("airfield.flt").records([5]))["fields"]["idField"]
            True
        """
        columns: dict[str, Array] = {}
        for column in _native.velloreader_columns(self._name, operator.index(opcode), _fail):
            columns.update(_columns_of(*column))
        return columns

    def __repr__(self) -> str:
        return f"Database({os.fsdecode(self._name)!r})"


class _SceneAlone(Database):
    """A database whose meshes nobody asks for."""

    _is_scene_alone = True


def load(
    path: Path,
    *,
    progress: Progress | None = None,
    **options: Any,
) -> Separator:
    """Loads a database and returns the root of its scene graph, which keeps the whole scene alive.

    What is damaged or missing is reported as a DatabaseWarning; Database has it as data.

        >>> root = load("airfield.flt", textures=["/data/textures"])
        >>> root.getNumChildren() > 0
        True

    Options:
        **options
        progress
            Called now and then with the name of a file, the bytes done and the bytes in all; if it returns
            False, the load ends with LoadCancelled.

    Raises OSError if the file can't be opened, ValueError if it isn't an OpenFlight database (revision 11 or
    newer) or is damaged beyond use, and MemoryError if it is too large.
    """
    database = _SceneAlone(
        path,
        progress=progress,
        **options,
    )
    name = os.fsdecode(_name_of(path))
    for message in database.messages:
        if message.level != "remark":
            warnings.warn(f"{message.file or name}: {message.text}", DatabaseWarning, stacklevel=2)
    return database.scene
