#!/usr/bin/env python3
"""Holds what the programs print as JSON against its schemas.

    schema_test.py PROGRAMS SCHEMAS
"""

from __future__ import annotations

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest
from typing import Any

import jsonschema

PROGRAMS, SCHEMAS = (pathlib.Path(path).resolve() for path in sys.argv[1:3])


class SchemaTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.sample = self.folder / "airfield.flt"
        subprocess.run([PROGRAMS / "make_sample", self.sample], check=True)
        self.cut = self.folder / "cut.flt"
        self.cut.write_bytes(self.sample.read_bytes()[:1_500_001])
        self.broken = self.folder / "a file.flt"
        self.broken.write_bytes(b"nothing")

    def output(self, *command: object) -> Any:
        program = PROGRAMS / str(command[0])
        run = subprocess.run([program, *map(str, command[1:])], text=True, capture_output=True)
        self.assertIn(run.returncode, (0, 1, 3), run.stderr)
        return json.loads(run.stdout)

    def assert_valid(self, document: Any, schema: pathlib.Path) -> None:
        rules = json.loads(schema.read_text())
        jsonschema.Draft202012Validator.check_schema(rules)
        jsonschema.validate(document, rules, jsonschema.Draft202012Validator)

    def test_fltinfo_keeps_to_its_schema(self) -> None:
        for options in ([], ["--fast"], ["--tree"], ["--tree=1"], ["--deps"]):
            for files in ([self.sample], [self.cut], [self.sample, self.cut]):
                document = self.output("fltinfo", "--json", *options, *files)
                self.assert_valid(document, SCHEMAS / "fltinfo.schema.json")

    def test_fltcheck_keeps_to_its_schema(self) -> None:
        for options in ([], ["--exact"]):
            document = self.output("fltcheck", "--json", *options, self.sample, self.cut, self.broken)
            self.assertEqual(3, len(document["files"]))
            self.assert_valid(document, SCHEMAS / "fltcheck.schema.json")

    def test_fltreport_keeps_to_its_schema(self) -> None:
        report = self.folder / "report.jsonl"
        options = ["-q", "--shard", "1/2", "--report", report, "-o", self.folder / "out", self.folder]
        subprocess.run([PROGRAMS / "flt2gltf", *options], check=False, stderr=subprocess.DEVNULL)
        document = self.output("fltreport", "--json", report)
        self.assertEqual([[0, 0]], document["gaps"])
        self.assert_valid(document, SCHEMAS / "fltreport.schema.json")

    def test_fltcheck_writes_sarif_as_the_standard_demands(self) -> None:
        document = self.output("fltcheck", "--sarif", self.sample, self.cut, self.broken)
        self.assertFalse(document["runs"][0]["invocations"][0]["executionSuccessful"])
        self.assertGreater(len(document["runs"][0]["results"]), 5)
        self.assert_valid(document, pathlib.Path(__file__).with_name("sarif.schema.json"))

    def test_the_schemas_refuse_what_is_not_so(self) -> None:
        document = self.output("fltinfo", "--json", self.sample)
        del document["geometry"]["triangles"]
        with self.assertRaises(jsonschema.ValidationError):
            self.assert_valid(document, SCHEMAS / "fltinfo.schema.json")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
