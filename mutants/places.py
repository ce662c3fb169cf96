"""Finds places in C++ sources where a small change of meaning can be made, by clang's own reading of them.

A change is made where a developer might slip: a sign, a bound, a condition or a constant.
"""

from __future__ import annotations

import bisect
import dataclasses
import pathlib
import re
from collections.abc import Iterator
from typing import Any

from clang import cindex

Kind = cindex.CursorKind

KINDS = ("sign", "bound", "condition", "constant")

# What becomes of an operator: the kind of the change, and what may stand in its place.
OPERATORS = {
    "+": ("sign", "-"), "-": ("sign", "+"), "*": ("sign", "/"), "/": ("sign", "*"),
    "%": ("sign", "/"), "<<": ("sign", ">>"), ">>": ("sign", "<<"),
    "&": ("sign", "|"), "|": ("sign", "&"), "^": ("sign", "|"),
    "<": ("bound", "<="), "<=": ("bound", "<"), ">": ("bound", ">="), ">=": ("bound", ">"),
    "==": ("condition", "!="), "!=": ("condition", "=="),
    "&&": ("condition", "||"), "||": ("condition", "&&"),
    "+=": ("sign", "-="), "-=": ("sign", "+="), "*=": ("sign", "/="), "/=": ("sign", "*="),
    "|=": ("sign", "&="), "&=": ("sign", "|="), "<<=": ("sign", ">>="), ">>=": ("sign", "<<="),
}
UNARY = {"!": ("condition", "!!"), "-": ("sign", "+"), "++": ("sign", "--"), "--": ("sign", "++")}

FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.CONVERSION_FUNCTION,
             Kind.FUNCTION_TEMPLATE}
# Whose children say nothing that happens.
PASSED_OVER = {Kind.STATIC_ASSERT, Kind.TEMPLATE_TYPE_PARAMETER, Kind.TEMPLATE_NON_TYPE_PARAMETER,
               Kind.TEMPLATE_TEMPLATE_PARAMETER, Kind.TYPEDEF_DECL, Kind.TYPE_ALIAS_DECL, Kind.FRIEND_DECL,
               Kind.TYPE_ALIAS_TEMPLATE_DECL, Kind.CXX_UNARY_EXPR}
WHOLE = {cindex.TypeKind.INT, cindex.TypeKind.UINT, cindex.TypeKind.LONG, cindex.TypeKind.ULONG,
         cindex.TypeKind.SHORT, cindex.TypeKind.USHORT, cindex.TypeKind.UCHAR, cindex.TypeKind.SCHAR,
         cindex.TypeKind.LONGLONG, cindex.TypeKind.ULONGLONG}
BROKEN = {cindex.TypeKind.FLOAT, cindex.TypeKind.DOUBLE}

Edit = tuple[int, int, str]  # what a file's bytes from one place to another become


@dataclasses.dataclass(frozen=True)
class Change:
    """A small change of one expression."""

    file: str  # as it is found from the root of the project
    line: int
    function: str  # or the class or the table; empty for neither
    kind: str
    begin: int  # the bytes of the expression
    end: int
    edits: tuple[Edit, ...]
    before: str  # the line, without blanks about it
    after: str
    is_condition: bool = False  # whether its value is only asked for yes or no
    may_be_constant: bool = False  # whether the compiler may compute the value

    @property
    def folder(self) -> str:
        return str(pathlib.PurePath(self.file).parent)

    @property
    def name(self) -> tuple[str, str, str, str]:
        """Which change it is, wherever in its file the line stands."""
        return self.file, self.function, self.before, self.after

    def __str__(self) -> str:
        return f"{self.file}:{self.line}: {self.function}: {self.before}  ->  {self.after}"


def edited(source: bytes, edits: tuple[Edit, ...], begin: int = 0, end: int | None = None) -> bytes:
    """A part of a source with changes made in it."""
    parts = []
    for edit_begin, edit_end, text in sorted(edits):
        parts += [source[begin:edit_begin], text.encode()]
        begin = edit_end
    return b"".join([*parts, source[begin:end]])


def next_number(text: str) -> str | None:
    """A literal of a whole number, made greater by one."""
    match = re.fullmatch(r"(0[xX])?([0-9a-fA-F']+?)([uUlLzZ]*)", text)
    if not match:
        return None
    prefix, digits, suffix = match.groups("")
    digits = digits.replace("'", "")
    is_octal = len(digits) > 1 and digits[0] == "0"
    if not prefix and (is_octal or not digits.isdigit()):
        return None
    value = int(digits, 16 if prefix else 10) + 1
    return f"{prefix}{value:x}{suffix}" if prefix else f"{value}{suffix}"


def other_fraction(text: str) -> str | None:
    """A literal of a broken number, doubled; one in place of nothing."""
    match = re.fullmatch(r"([0-9.']+(?:[eE][-+]?[0-9]+)?)([fFlL]?)", text)
    if not match:
        return None
    value = float(match[1].replace("'", ""))
    return f"{2 * value if value != 0 else 1.0!r}{match[2]}"


@dataclasses.dataclass(frozen=True)
class Surroundings:
    """What is above a cursor."""

    function: str = ""
    may_be_constant: bool = False


class SourceFile:
    """One source, and the changes that were found in it."""

    def __init__(self, path: pathlib.Path, name: str) -> None:
        self.source = path.read_bytes()
        self.name = name
        self.changes: dict[tuple[int, int, tuple[Edit, ...]], Change] = {}
        self.macros: list[tuple[int, int]] = []
        self.line_begins = [0, *(i + 1 for i, byte in enumerate(self.source) if byte == ord("\n"))]

    def text(self, begin: int, end: int) -> str:
        return self.source[begin:end].decode()

    def code(self, begin: int, end: int) -> str:
        """The same without comments and blanks."""
        text = re.sub(r"//[^\n]*|/\*.*?\*/", "", self.text(begin, end), flags=re.DOTALL)
        return re.sub(r"\s", "", text)

    def is_from_macro(self, begin: int, end: int) -> bool:
        return any(first < end and begin < last for first, last in self.macros)

    def shown(self, edits: tuple[Edit, ...]) -> tuple[int, str, str]:
        """The line of a change, as it is and as it becomes."""
        place = min(edits)[0]
        line = bisect.bisect_right(self.line_begins, place)
        begin = self.line_begins[line - 1]
        last = bisect.bisect_right(self.line_begins, max(edit[1] for edit in edits))
        end = self.line_begins[last] if last < len(self.line_begins) else len(self.source)
        before = " ".join(self.text(begin, end).split())
        return line, before, " ".join(edited(self.source, edits, begin, end).decode().split())

    def add(self, kind: str, extent: tuple[int, int], edits: tuple[Edit, ...], around: Surroundings,
            is_condition: bool = False) -> None:
        if self.is_from_macro(*extent):
            return
        line, before, after = self.shown(edits)
        self.changes.setdefault((*extent, edits), Change(
            self.name, line, around.function, kind, *extent, edits, before, after, is_condition,
            around.may_be_constant))


class PlaceFinder:
    """Looks for places in translation units. What several of them include is looked at once."""

    def __init__(self, root: pathlib.Path, folders: tuple[str, ...]) -> None:
        self.root = root
        self.folders = folders
        self.files: dict[str, SourceFile | None] = {}
        self.current: SourceFile

    def read(self, path: pathlib.Path, arguments: list[str]) -> list[str]:
        """Reads a translation unit. @return what is wrong with it"""
        unit = cindex.Index.create().parse(
            str(path), arguments, options=cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        problems = [str(message) for message in unit.diagnostics
                    if message.severity >= cindex.Diagnostic.Error]
        if problems:
            return problems
        known = set(self.files)
        cursors: list[Any] = []
        for cursor in unit.cursor.get_children():
            file = cursor.location.file
            if file is None or file.name in known or self.file_of(file.name) is None:
                continue
            if cursor.kind == Kind.MACRO_INSTANTIATION:
                source = self.file_of(file.name)
                assert source is not None
                source.macros.append((cursor.extent.start.offset, cursor.extent.end.offset))
            elif not cursor.kind.is_preprocessing():
                cursors.append(cursor)
        for cursor in cursors:
            source = self.file_of(cursor.location.file.name)
            assert source is not None
            self.current = source
            self.visit(cursor, Surroundings())
        return []

    def changes(self) -> list[Change]:
        found = [change for file in self.files.values() if file for change in file.changes.values()]
        return sorted(found, key=lambda change: (change.file, change.begin, change.end, change.edits))

    def file_of(self, name: str) -> SourceFile | None:
        if name not in self.files:
            self.files[name] = None
            path = pathlib.Path(name).resolve()
            if path.is_relative_to(self.root):
                relative = path.relative_to(self.root)
                if str(relative.parent) in self.folders:
                    self.files[name] = SourceFile(path, str(relative))
        return self.files[name]

    def visit(self, cursor: Any, around: Surroundings) -> None:
        if cursor.kind in PASSED_OVER or cursor.kind.is_attribute():
            return
        around = self.inside(cursor, around)
        self.look_at(cursor, around)
        for child in self.children(cursor):
            self.visit(child, around)

    def inside(self, cursor: Any, around: Surroundings) -> Surroundings:
        """What is around the children of a cursor."""
        if cursor.kind in FUNCTIONS:
            head = self.current.text(cursor.extent.start.offset, cursor.location.offset)
            return Surroundings(qualified_name(cursor), bool(re.search(r"\bconstexpr\b", head)))
        if cursor.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE, Kind.ENUM_DECL):
            return Surroundings(qualified_name(cursor), cursor.kind == Kind.ENUM_DECL)
        if cursor.kind == Kind.VAR_DECL:
            head = self.current.text(cursor.extent.start.offset, cursor.location.offset)
            is_local = bool(around.function) and cursor.semantic_parent.kind in FUNCTIONS
            may_be = not is_local or bool(re.search(r"\b(constexpr|static|const)\b", head))
            return Surroundings(around.function if is_local else qualified_name(cursor),
                                around.may_be_constant or may_be)
        return around

    def children(self, cursor: Any) -> Iterator[Any]:
        """Those of a cursor that say what happens: no bounds of arrays, arguments of templates, labels of
        cases and conditions that the compiler decides."""
        children = list(cursor.get_children())
        if cursor.kind == Kind.CASE_STMT:
            children = children[1:]
        elif self.is_decided_early(cursor):
            children = children[1:]
        elif cursor.kind == Kind.MEMBER_REF_EXPR:
            children = [child for child in children if extent_of(child)[1] <= cursor.location.offset]
        elif cursor.kind in (Kind.DECL_REF_EXPR, Kind.CXX_BASE_SPECIFIER):
            children = []
        elif cursor.kind in (Kind.VAR_DECL, Kind.FIELD_DECL, Kind.PARM_DECL) or cursor.kind in FUNCTIONS:
            if cursor.kind == Kind.FIELD_DECL and cursor.is_bitfield():
                return
            children = [child for child in children if not child.kind.is_expression() or
                        (extent_of(child)[0] > cursor.location.offset and not self.is_after(child, "["))]
            if cursor.kind == Kind.FIELD_DECL:
                children = [child for child in children if not self.is_nothing(child)]
        elif any(child.kind == Kind.TEMPLATE_REF for child in children):
            children = [child for child in children if not self.is_template_argument(child)]
        yield from children

    def is_decided_early(self, cursor: Any) -> bool:
        """Whether it is an if that the compiler decides."""
        return cursor.kind == Kind.IF_STMT and self.current.source.startswith(b"if constexpr",
                                                                              cursor.extent.start.offset)

    def is_after(self, cursor: Any, bracket: str) -> bool:
        return self.current.source[:cursor.extent.start.offset].rstrip().endswith(bracket.encode())

    def is_nothing(self, cursor: Any) -> bool:
        """Whether it is what members hold by custom until they are given a value."""
        return self.current.text(*extent_of(cursor)) in ("0", "0.0", "0.0F", "false")

    def is_template_argument(self, cursor: Any) -> bool:
        following = self.current.source[cursor.extent.end.offset:cursor.extent.end.offset + 80].lstrip()
        return cursor.kind.is_expression() and following.startswith(b">")

    def look_at(self, cursor: Any, around: Surroundings) -> None:
        kind = cursor.kind
        if not self.is_here(cursor):
            return
        if kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR):
            self.look_at_operator(cursor, around)
        elif kind == Kind.CALL_EXPR and cursor.spelling in ("operator==", "operator!="):
            self.look_at_operator(cursor, around)
        elif kind == Kind.UNARY_OPERATOR:
            self.look_at_unary(cursor, around)
        elif kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.CONDITIONAL_OPERATOR):
            if not self.is_decided_early(cursor):
                self.look_at_condition(next(cursor.get_children(), None), around)
        elif kind == Kind.RETURN_STMT:
            value = next(cursor.get_children(), None)
            if value is not None and value.type.kind == cindex.TypeKind.BOOL:
                self.look_at_condition(value, around)
        elif kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR):
            self.look_at_literal(cursor, around)
        elif kind == Kind.DECL_REF_EXPR:
            self.look_at_named_constant(cursor, around)

    def is_here(self, cursor: Any) -> bool:
        """Whether a cursor's text stands in the file that is being looked at."""
        file = cursor.extent.start.file
        return file is not None and self.files.get(file.name) is self.current

    def look_at_operator(self, cursor: Any, around: Surroundings) -> None:
        children = list(cursor.get_children())
        extent = extent_of(cursor)
        left, right = extent_of(children[0]), extent_of(children[-1])
        gap = self.current.text(left[1], right[0])
        operator = gap.strip()
        if operator not in OPERATORS or right[0] < left[1]:
            return
        begin = left[1] + len(gap.encode()) - len(gap.lstrip().encode())
        kind, other = OPERATORS[operator]
        self.current.add(kind, extent, ((begin, begin + len(operator), other),), around)
        if kind == "bound" and children[-1].type.get_canonical().kind in WHOLE:
            one = ") - 1" if operator in ("<", ">=") else ") + 1"
            self.current.add(kind, extent, ((right[0], right[0], "("), (right[1], right[1], one)), around)

    def look_at_unary(self, cursor: Any, around: Surroundings) -> None:
        begin, end = extent_of(cursor)
        for operator in ("++", "--", "!", "-"):
            kind, other = UNARY[operator]
            if self.current.source.startswith(operator.encode(), begin):
                self.current.add(kind, (begin, end), ((begin, begin + len(operator), other),), around)
                return
            if len(operator) == 2 and self.current.source[begin:end].endswith(operator.encode()):
                self.current.add(kind, (begin, end), ((end - 2, end, other),), around)
                return

    def look_at_condition(self, cursor: Any, around: Surroundings) -> None:
        if cursor is None or not cursor.kind.is_expression() or not self.is_here(cursor):
            return
        begin, end = extent_of(cursor)
        if not self.is_turned_otherwise(without_casts(cursor)):
            self.current.add("condition", (begin, end), ((begin, begin, "!("), (end, end, ")")), around, True)

    def is_turned_otherwise(self, cursor: Any) -> bool:
        """Whether another change of the same expression makes its contrary of it."""
        if cursor.kind == Kind.BINARY_OPERATOR:
            left, *_, right = cursor.get_children()
            return self.current.code(extent_of(left)[1], extent_of(right)[0]) in ("==", "!=")
        if cursor.kind == Kind.UNARY_OPERATOR:
            return self.current.source.startswith(b"!", extent_of(cursor)[0])
        return cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR or cursor.spelling in ("operator==", "operator!=")

    def look_at_literal(self, cursor: Any, around: Surroundings) -> None:
        begin, end = extent_of(cursor)
        text = self.current.text(begin, end)
        other = {"true": "false", "false": "true"}.get(text) or (
            next_number(text) if cursor.kind == Kind.INTEGER_LITERAL else other_fraction(text))
        if other is not None:
            self.current.add("constant", (begin, end), ((begin, end, other),), around)

    def look_at_named_constant(self, cursor: Any, around: Surroundings) -> None:
        """A constant with a name is changed where it is used."""
        variable = cursor.referenced
        begin, end = extent_of(cursor)
        if variable is None or variable.kind != Kind.VAR_DECL or not cursor.type.is_const_qualified() or \
                self.current.code(begin, end).split("::")[-1] != variable.spelling:
            return
        head = variable.extent.start, variable.location
        if head[0].file is None or b"constexpr" not in pathlib.Path(head[0].file.name).read_bytes()[
                head[0].offset:head[1].offset]:
            return
        kind = cursor.type.get_canonical().kind
        if kind in WHOLE:
            edits: tuple[Edit, ...] = ((begin, begin, "("), (end, end, " + 1)"))
        elif kind in BROKEN:
            edits = ((begin, begin, "(2 * "), (end, end, ")"))
        elif kind == cindex.TypeKind.BOOL:
            edits = ((begin, begin, "!"),)
        else:
            return
        self.current.add("constant", (begin, end), edits, around)


def extent_of(cursor: Any) -> tuple[int, int]:
    return cursor.extent.start.offset, cursor.extent.end.offset


def without_casts(cursor: Any) -> Any:
    """What stands within the casts that the compiler adds."""
    while cursor.kind == Kind.UNEXPOSED_EXPR:
        children = list(cursor.get_children())
        if len(children) != 1 or extent_of(children[0]) != extent_of(cursor):
            break
        cursor = children[0]
    return cursor


def qualified_name(cursor: Any) -> str:
    """The name of a function, class or table, with those of the classes that it belongs to."""
    names = []
    while cursor is not None and not cursor.kind.is_translation_unit():
        if cursor.kind != Kind.NAMESPACE and cursor.spelling:
            names.append(str(cursor.spelling).split("<")[0] or str(cursor.spelling))
        cursor = cursor.semantic_parent
    return "::".join(reversed(names))
