#!/usr/bin/env python3
"""Tests of check_includes.py, on small trees of their own and on the real one."""

from __future__ import annotations

import pathlib
import subprocess
import sys
import tempfile
import unittest

import check_includes

REAL_TREE = pathlib.Path(__file__).resolve().parent.parent


class CheckIncludesTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("src/toolkit/Floor.h")
        self.write("src/records/Record.h", '#include "toolkit/Floor.h"', "#include <vector>")

    def write(self, path: str, *lines: str) -> None:
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text("".join(f"{line}\n" for line in lines))

    def problems(self) -> list[str]:
        return check_includes.check(self.root)

    def test_the_real_tree_passes(self) -> None:
        self.assertEqual(check_includes.check(REAL_TREE), [])

    def test_an_include_down_the_table_passes(self) -> None:
        self.assertEqual(self.problems(), [])

    def test_an_include_from_the_same_folder_passes_in_both_spellings(self) -> None:
        self.write("src/records/Other.h", '#include "Record.h"', '#include "records/Record.h"')
        self.assertEqual(self.problems(), [])

    def test_an_include_that_runs_back_up_is_found(self) -> None:
        self.write("src/toolkit/Wrong.cpp", "", '#  include "records/Record.h"')
        self.assertEqual(self.problems(),
                         ["src/toolkit/Wrong.cpp:2: src/toolkit must not include src/records/Record.h"])

    def test_an_include_that_is_nowhere_is_found(self) -> None:
        self.write("writer/Wrong.h", '#include "records/Gone.h"')
        self.assertEqual(self.problems(), ['writer/Wrong.h:1: "records/Gone.h" is nowhere to be found'])

    def test_the_library_must_not_include_its_tests(self) -> None:
        self.write("tests/support/Help.h", '#include "records/Record.h"')
        self.write("src/records/Wrong.h", '#include "tests/support/Help.h"')
        self.assertEqual(self.problems(),
                         ["src/records/Wrong.h:1: src/records must not include tests/support/Help.h"])

    def test_two_headers_of_one_name_are_found(self) -> None:
        self.write("src/records/Floor.h")
        self.assertEqual(self.problems(), ["src/toolkit/Floor.h has the name of src/records/Floor.h: "
                                           "two classes of one name become one when they are linked"])

    def test_a_source_folder_without_a_line_in_the_table_is_found(self) -> None:
        self.write("src/cellar/Bottle.h")
        self.assertEqual(self.problems(), ["src/cellar has no line in the table"])

    def test_the_program_prints_what_is_wrong_and_fails(self) -> None:
        self.write("src/toolkit/Wrong.h", '#include "records/Record.h"')
        run = subprocess.run([sys.executable, check_includes.__file__, str(self.root)],
                             capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 1)
        self.assertEqual(run.stderr,
                         "src/toolkit/Wrong.h:1: src/toolkit must not include src/records/Record.h\n")


if __name__ == "__main__":
    unittest.main()
