"""Tests of the records that the package gives. The arguments are a folder of databases and fltinfo."""

import gc
import json
import math
import pathlib
import subprocess
import sys
import unittest

import numpy
import velloreader

FOLDER = pathlib.Path(sys.argv.pop(1))
FLTINFO = sys.argv.pop(1)
REVISIONS = (11, 1420, 1500, 1570, 1580)
COLUMNS = FOLDER / "columns.flt"

OBJECT, FACE, COMMENT, MATRIX, VERTEX_LIST, SWITCH, VERTEX = 4, 5, 31, 49, 72, 96, 70


def as_json(value):
    """A value as JSON has it, which knows no number that isn't finite."""
    if isinstance(value, dict):
        return {key: as_json(item) for key, item in value.items()}
    if isinstance(value, list):
        return [as_json(item) for item in value]
    if isinstance(value, float) and not math.isfinite(value):
        return "NaN" if math.isnan(value) else "Infinity" if value > 0 else "-Infinity"
    return value


def text_of(records):
    return [json.dumps(as_json(record)) for record in records]


class RecordsTest(unittest.TestCase):
    maxDiff = 2000

    def test_say_of_every_record_what_fltinfo_says_as_json(self):
        for revision in REVISIONS:
            path = FOLDER / f"every-{revision}.flt"
            run = subprocess.run([FLTINFO, "--records", path], capture_output=True, text=True, check=True)
            expected = [json.dumps(json.loads(line)) for line in run.stdout.splitlines()]
            self.assertEqual(text_of(velloreader.Database(path).records()), expected)

    def test_have_numbers_that_json_does_not_have_as_floats(self):
        face, = velloreader.Database(COLUMNS).records([VERTEX])
        self.assertTrue(math.isnan(face["fields"]["vertexNormal"][0]))
        self.assertEqual(face["fields"]["vertexNormal"][1], -math.inf)

    def test_have_the_shortest_number_that_a_float_stands_for(self):
        vertex, = velloreader.Database(COLUMNS).records([VERTEX])
        self.assertEqual(vertex["fields"]["vertexNormal"][2], 0.1)

    def test_are_those_of_the_opcodes_that_were_asked_for(self):
        database = velloreader.Database(COLUMNS)
        opcodes = {record["opcode"] for record in database.records(opcodes={OBJECT, FACE})}
        self.assertEqual(opcodes, {OBJECT, FACE})
        self.assertEqual(list(database.records(opcodes=())), [])
        self.assertEqual(list(database.records(opcodes=(9999,))), [])

    def test_tell_of_one_that_is_too_broken_to_be_read(self):
        broken, = velloreader.Database(FOLDER / "broken.flt").records([SWITCH])
        self.assertEqual(list(broken), ["opcode", "length", "offset", "error"])

    def test_come_beyond_what_is_made_at_once(self):
        offsets = [record["offset"] for record in velloreader.Database(COLUMNS).records([FACE])]
        self.assertEqual(len(offsets), 200)
        self.assertEqual(sorted(set(offsets)), offsets)


class ColumnsTest(unittest.TestCase):
    def setUp(self):
        self.database = velloreader.Database(COLUMNS)

    def values_of(self, opcode, field):
        return [record["fields"][field] for record in self.database.records([opcode])]

    def test_have_an_element_for_each_record(self):
        faces = self.database.columns(FACE)
        self.assertEqual(faces["colorNameIndex"].dtype, numpy.int64)
        self.assertEqual(faces["colorNameIndex"].tolist(), self.values_of(FACE, "colorNameIndex"))
        offsets = [record["offset"] for record in self.database.records([FACE])]
        self.assertEqual(faces["offset"].tolist(), offsets)

    def test_have_numbers_as_the_file_stores_them(self):
        vertex = self.database.columns(VERTEX)
        self.assertEqual(vertex["Ycoordinate"].dtype, numpy.float64)
        self.assertEqual(vertex["Ycoordinate"].tolist(), [2.5])
        self.assertEqual(vertex["vertexNormal"].dtype, numpy.float32)
        self.assertEqual(vertex["vertexNormal"][0, 2], numpy.float32(0.1))

    def test_have_a_row_of_two_dimensions_for_a_matrix(self):
        matrices = self.database.columns(MATRIX)
        matrix, = [column for column in matrices.values() if column.ndim == 3]
        self.assertEqual(matrix.shape, (2, 4, 4))
        self.assertEqual(matrix[1, 0, 1], 1)

    def test_have_texts_as_texts(self):
        names = self.database.columns(FACE)["idField"]
        self.assertEqual(names.dtype.kind, "U")
        self.assertEqual(names[:3].tolist(), ["f0", "f1", "f2"])
        self.assertEqual(self.database.columns(OBJECT)["idASCII"].tolist(), ["caf\u00e9"])

    def test_take_no_room_for_short_texts_because_one_is_long(self):
        comments = next(column for name, column in self.database.columns(COMMENT).items() if name != "offset")
        self.assertEqual(comments.dtype, object)
        self.assertEqual([len(comment) for comment in comments], [1, 1, 1, 1, 1, 60000])

    def test_have_texts_as_wide_as_the_longest_by_characters(self):
        self.assertEqual(self.database.columns(OBJECT)["idASCII"].dtype, numpy.dtype("U4"))
        self.assertEqual(self.database.columns(FACE)["idField"].dtype, numpy.dtype("U4"))

    def test_keep_their_values_when_all_else_is_gone(self):
        numbers = velloreader.Database(COLUMNS).columns(FACE)["colorNameIndex"]
        gc.collect()
        self.assertEqual(numbers.tolist(), list(range(200)))
        numbers[0] = 7
        self.assertEqual(numbers.tolist()[:2], [7, 1])

    def test_have_the_bits_of_flags_beside_the_word(self):
        faces = self.database.columns(FACE)
        bits = {name: column for name, column in faces.items() if name.startswith("flags.")}
        for name, column in bits.items():
            self.assertEqual(column.dtype, numpy.bool_)
            bit = name[len("flags."):]
            self.assertEqual(column.tolist(), [flags[bit] for flags in self.values_of(FACE, "flags")])
        self.assertGreater(len(bits), 1)
        self.assertEqual(faces["flags"].tolist(), [flags["word"] for flags in self.values_of(FACE, "flags")])

    def test_count_the_values_where_records_have_different_numbers_of_them(self):
        switches = self.database.columns(SWITCH)
        self.assertEqual(switches["masks.count"].tolist(), [2, 0, 3])
        self.assertEqual(switches["masks"].tolist(), [1, 2, 4, 5, 6])

    def test_mask_what_a_record_lacks(self):
        for revision in REVISIONS:
            database = velloreader.Database(FOLDER / f"every-{revision}.flt")
            for opcode in {record["opcode"] for record in database.records()}:
                fields = [record["fields"] for record in database.records([opcode])]
                for name, column in numbers_in(database.columns(opcode)):
                    with self.subTest(revision=revision, opcode=opcode, name=name):
                        self.assertEqual(column.tolist(), [word_of(record.get(name)) for record in fields])

    def test_are_empty_of_an_opcode_that_no_record_has(self):
        self.assertEqual(self.database.columns(9999), {})

    def test_leave_out_a_record_that_is_too_broken_to_be_read(self):
        self.assertEqual(velloreader.Database(FOLDER / "broken.flt").columns(SWITCH), {})

    def test_refuse_what_is_no_opcode(self):
        with self.assertRaises(TypeError):
            self.database.columns("face")


def numbers_in(columns):
    """The columns that have a whole number, a double or a text for each record, by the names of fields."""
    return [(name, column) for name, column in columns.items()
            if column.dtype.kind in "iU" or column.dtype == numpy.float64
            if column.ndim == 1 and "." not in name and name != "offset" and name + ".count" not in columns]


def word_of(value):
    """Flags as a column has them."""
    return value["word"] if isinstance(value, dict) else value


if __name__ == "__main__":
    unittest.main()
