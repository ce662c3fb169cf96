#!/usr/bin/env python3
"""Tests of "./dev mutants": small sources in, the changes that are found and the changed sources out."""

from __future__ import annotations

import os
import pathlib
import subprocess
import tempfile
import threading
import unittest

import choice
import schemata
from places import Change, PlaceFinder, next_number, other_fraction
from test_runs import Test, TestRuns
from translation_units import Includes, Unit, units_to_read

HERE = pathlib.Path(__file__).resolve().parent


class SampleTest(unittest.TestCase):
    """Gives a folder for samples."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()

    def write(self, name: str, text: str) -> pathlib.Path:
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
        return file

    def found(self, text: str) -> list[Change]:
        """The changes of a source."""
        file = self.write("src/sample/Sample.cpp", text)
        finder = PlaceFinder(self.root, ("src/sample",))
        self.assertEqual(finder.read(file, ["-std=c++17"]), [])
        return finder.changes()

    def becomes(self, line: str, before: str = "") -> list[str]:
        """What a line of a function, which has a few numbers, can become."""
        text = f"{before}\nint f(int a, int b, double x, bool yes)\n{{\n    {line}\n    return a;\n}}\n"
        return [change.after for change in self.found(text) if change.before == line]


class PlacesTest(SampleTest):
    def test_a_sign_is_turned(self) -> None:
        self.assertEqual(self.becomes("a = b + a;"), ["a = b - a;"])
        self.assertEqual(self.becomes("a -= b;"), ["a += b;"])
        self.assertEqual(self.becomes("a = -b;"), ["a = +b;"])
        self.assertEqual(self.becomes("a = b >> a;"), ["a = b << a;"])
        self.assertEqual(self.becomes("++a;"), ["--a;"])
        self.assertEqual(self.becomes("b--;"), ["b++;"])

    def test_a_bound_lets_its_end_in_or_is_off_by_one(self) -> None:
        self.assertEqual(self.becomes("while (a < b) {}"),
                         ["while (!(a < b)) {}", "while (a <= b) {}", "while (a < (b) - 1) {}"])
        self.assertEqual(self.becomes("yes = x >= x;"), ["yes = x > x;"], "nothing is counted by it")

    def test_a_condition_is_turned(self) -> None:
        self.assertEqual(self.becomes("if (yes) {}"), ["if (!(yes)) {}"])
        self.assertEqual(self.becomes("if (!yes) {}"), ["if (!!yes) {}"])
        self.assertEqual(self.becomes("if (a == b) {}"), ["if (a != b) {}"], "once")
        self.assertEqual(self.becomes("yes = yes && a;"), ["yes = yes || a;"])
        self.assertEqual(self.becomes("a = yes ? a : b;"), ["a = !(yes) ? a : b;"])

    def test_a_constant_becomes_another(self) -> None:
        self.assertEqual(self.becomes("a = 7;"), ["a = 8;"])
        self.assertEqual(self.becomes("x = 0.25;"), ["x = 0.5;"])
        self.assertEqual(self.becomes("yes = true;"), ["yes = false;"])
        self.assertEqual(self.becomes("a = b + limit;", "constexpr int limit = 3;"),
                         ["a = b - limit;", "a = b + (limit + 1);"])

    def test_literals_keep_their_form(self) -> None:
        self.assertEqual([next_number(text) for text in ("0", "9U", "0xffu", "1'000L", "017", "'a'")],
                         ["1", "10U", "0x100u", "1001L", None, None])
        self.assertEqual([other_fraction(text) for text in ("0.0F", "1e-3", "2.5f", "0x1p3")],
                         ["1.0F", "0.002", "5.0f", None])

    def test_a_comparison_of_a_class_is_a_condition(self) -> None:
        self.assertEqual(self.becomes("yes = C() == C();", "struct C {}; bool operator==(C, C);"),
                         ["yes = C() != C();"])

    def test_what_the_compiler_must_know_is_left_alone(self) -> None:
        template = "template <int n> struct T { int v[n]; }; template <int n> int g();"
        for line in ("int v[4];", "T<4> t;", "a = g<4>();", "static_assert(1 + 1 == 2);", "case 4:", "M(a);",
                     "if constexpr (1 < 2) a = b;"):
            text = f"switch (a) {{ {line} break; }}" if line.startswith("case") else line
            self.assertEqual(self.becomes(text, template + "\n#define M(n) n = n + 1"), [], line)

    def test_the_bits_of_a_member_and_its_first_nothing_are_left_alone(self) -> None:
        found = self.found("struct S { int a : 3; int b = 0; int c = 5; };")
        self.assertEqual([change.after for change in found],
                         ["struct S { int a : 3; int b = 0; int c = 6; };"])

    def test_tells_where_a_change_is_and_of_what_kind(self) -> None:
        change, = self.found("namespace n {\nstruct S {\n    void f(int& a) { a = 1; }\n};\n}\n")
        self.assertEqual(str(change), "src/sample/Sample.cpp:3: S::f: void f(int& a) { a = 1; }  ->  "
                                      "void f(int& a) { a = 2; }")
        self.assertEqual((change.folder, change.kind), ("src/sample", "constant"))

    def test_knows_what_the_compiler_may_work_out(self) -> None:
        for text in ("constexpr int t[] = {1};", "int const a = 1;", "enum E { e = 1 };",
                     "constexpr int f() { return 1; }", "int f() { static int a = 1; return a; }"):
            self.assertEqual([change.may_be_constant for change in self.found(text)], [True], text)
        for text in ("int f() { return 1; }", "int f() { int a = 1; return a; }"):
            self.assertEqual([change.may_be_constant for change in self.found(text)], [False], text)

    def test_code_of_templates_can_be_changed(self) -> None:
        found = self.found("template <class T> T f(T a) { return a + a; }")
        self.assertEqual([change.after for change in found],
                         ["template <class T> T f(T a) { return a - a; }"])

    def test_other_folders_are_not_looked_at(self) -> None:
        self.write("src/other/Other.h", "inline int f() { return 1; }\n")
        self.assertEqual(self.found('#include "../other/Other.h"\n'), [])

    def test_says_what_clang_says(self) -> None:
        finder = PlaceFinder(self.root, ("src/sample",))
        problems = finder.read(self.write("src/sample/Wrong.cpp", "int f() { return g(); }\n"), [])
        self.assertIn("undeclared identifier 'g'", problems[0])


class SchemataTest(SampleTest):
    def switched(self, text: str, *afters: str) -> str:
        changes = {change.after: change for change in self.found(text)}
        return schemata.switched(text.encode(), list(enumerate(changes[after] for after in afters))).decode()

    def test_a_change_becomes_a_choice(self) -> None:
        self.assertEqual(self.switched("int f(int a) { return a + 1; }", "int f(int a) { return a - 1; }"),
                         "int f(int a) { return (velloMutant(0) ? a - 1 : a + 1); }")

    def test_a_condition_is_a_choice_of_yes_and_no(self) -> None:
        self.assertEqual(self.switched("void f(int* a) { if (a) {} }", "void f(int* a) { if (!(a)) {} }"),
                         "void f(int* a) { if ((velloMutant(0) ? !(a) : static_cast<bool>(a))) {} }")

    def test_an_expression_within_another_has_a_choice_of_its_own(self) -> None:
        self.assertEqual(self.switched("int f(int a) { return a + 1; }", "int f(int a) { return a + 2; }",
                                       "int f(int a) { return a - 1; }"),
                         "int f(int a) { return (velloMutant(1) ? a - 1 : a + (velloMutant(0) ? 2 : 1)); }")

    def test_one_expression_can_have_several(self) -> None:
        self.assertEqual(self.switched("bool f(int a) { return a < 1; }", "bool f(int a) { return a <= 1; }",
                                       "bool f(int a) { return a < (1) - 1; }"),
                         "bool f(int a) { return (velloMutant(0) ? a <= 1 : "
                         "(velloMutant(1) ? a < (1) - 1 : a < 1)); }")

    def test_a_change_is_made_for_good(self) -> None:
        change, = self.found("int const a[] = {1};")
        self.assertEqual(schemata.changed(b"int const a[] = {1};", change), b"int const a[] = {2};")

    def test_a_message_of_the_compiler_leads_to_the_changes_of_its_line(self) -> None:
        text = b"one\n(velloMutant(3) ? a : b) (velloMutant(4) ? c : d)\nthree\n"
        self.assertEqual([schemata.numbers_near(text, line) for line in (1, 2, 3)], [set(), {3, 4}, {3, 4}])

    def test_a_program_asks_the_environment_which_change_is_on(self) -> None:
        source = self.switched("int f() { return 1; }", "int f() { return 2; }")
        file = self.write("program.cpp", "constexpr int early = velloMutant(0) ? 2 : 1;\n" + source +
                          "\nint main() { return 10 * early + f(); }\n")
        program = self.root / "program"
        command = ["c++", "-std=c++17", "-include", str(HERE / "Switch.h"), "-o", str(program), str(file)]
        subprocess.run(command, check=True)
        reached = self.root / "reached"
        reached.write_bytes(bytes(3))
        values = []
        for name, value in (("NOTHING", ""), ("MUTANT", "0"), ("MUTANTS_REACHED", str(reached))):
            environment = {**os.environ, f"VELLOREADER_{name}": value}
            values.append(subprocess.run([program], env=environment, check=False).returncode)
        self.assertEqual(values, [11, 12, 11], "a constant is worked out before")
        self.assertEqual(reached.read_bytes(), b"\1\0\0")


class ChoiceTest(SampleTest):
    def changes(self, folder: str, count: int) -> list[Change]:
        return [Change(f"{folder}/A.cpp", i, "f", "sign", i, i + 1, ((i, i + 1, "-"),), f"+{i}", f"-{i}")
                for i in range(count)]

    def test_every_folder_gets_its_share(self) -> None:
        folders = ["a", "b", "c"]
        self.assertEqual(list(choice.shares(9, folders, 5).values()), [3, 3, 3])
        given = [choice.shares(10, folders, seed) for seed in (1, 2, 3)]
        self.assertEqual([sum(shares.values()) for shares in given], [10, 10, 10])
        self.assertEqual({sum(shares[folder] for shares in given) for folder in folders}, {10}, "in turn")

    def test_a_seed_repeats_its_choice(self) -> None:
        changes = self.changes("a", 50)
        first, again, other = (choice.Choice(changes, {seed: {"a": 9}}).chosen for seed in (1, 1, 2))
        self.assertEqual(first, again)
        self.assertNotEqual(first, other)
        self.assertEqual(len(set(first)), 9)

    def test_a_seed_keeps_to_its_choice_where_changes_come_and_go(self) -> None:
        changes = self.changes("a", 30)
        before = [change for change in choice.in_turn(changes, 1) if change not in changes[:5]]
        self.assertEqual(list(choice.in_turn(changes[5:], 1)), before)

    def test_several_seeds_choose_nothing_twice(self) -> None:
        chosen = choice.Choice(self.changes("a", 30), {1: {"a": 12}, 2: {"a": 12}}).chosen
        self.assertEqual((len(chosen), len(set(chosen))), (24, 24))

    def test_kinds_take_turns_and_lines_come_again_last(self) -> None:
        found = self.found("int f(int a, bool b)\n{\n    a += a + a;\n    return b && a ? 7 : 8;\n}\n")
        order = list(choice.in_turn(found, 1))
        self.assertEqual({change.line for change in order[:2]}, {3, 4})
        self.assertEqual(len(order), len(found))

    def test_one_that_does_not_compile_gives_its_place_to_the_next(self) -> None:
        chosen = choice.Choice(self.changes("a", 3), {1: {"a": 2}})
        first = chosen.chosen[0]
        new = chosen.replace([first])
        self.assertEqual(len(new), 1)
        self.assertNotIn(first, chosen.chosen)
        self.assertEqual(chosen.replace(new), [], "there is none left")

    def test_excuses_have_reasons(self) -> None:
        file = self.write("excused.txt", "# About.\n\nsrc/a/A.cpp: f\n    +1\n    -1\n    It is nothing.\n")
        self.assertEqual(choice.read_excuses(file), {("src/a/A.cpp", "f", "+1", "-1"): "It is nothing."})

    def test_what_is_excused_is_still_there(self) -> None:
        for (name, _, before, after), reason in choice.read_excuses(HERE / "excused.txt").items():
            lines = [" ".join(line.split()) for line in (HERE.parent / name).read_text().splitlines()]
            self.assertIn(before, " ".join(lines), name)
            self.assertNotEqual(before, after)
            self.assertTrue(reason, before)


class TranslationUnitsTest(SampleTest):
    def includes(self, files: list[pathlib.Path]) -> Includes:
        return Includes(self.root, {file: file.read_bytes() for file in files})

    def test_a_header_is_part_of_what_includes_it_by_others(self) -> None:
        header = self.write("src/a/A.h", "")
        files = [header, self.write("src/a/B.h", '#include "a/A.h"\n'),
                 self.write("src/a/A.cpp", '#include "B.h"\n'), self.write("src/b/C.cpp", "")]
        self.assertEqual(self.includes(files).sources_of(header), {files[2]})

    def test_each_file_is_met_once(self) -> None:
        header = self.write("src/a/A.h", "")
        files = [header, self.write("src/a/A.cpp", '#include "a/A.h"\n'),
                 self.write("src/b/C.cpp", '#include "a/A.h"\n')]
        units = [Unit(file, str(self.root), ("c++", str(file))) for file in files[1:]]
        includes = self.includes(files)
        self.assertEqual(units_to_read(units, includes, files[:2]), units[:1])
        self.assertEqual(units_to_read(units, includes, files), units)
        self.assertEqual(units_to_read(units[1:], includes, files[:1]), units[1:])

    def test_clang_gets_the_options_of_the_compiler(self) -> None:
        unit = Unit(pathlib.Path("/a.cpp"), "/", ("ccache", "/usr/bin/c++", "-DA", "/a.cpp"))
        self.assertEqual(unit.for_clang(), ["-DA", "-w"])


class TestRunsTest(SampleTest):
    def shell(self, name: str, script: str) -> Test:
        return Test(name, ["sh", "-c", script], str(self.root), {}, 0)

    def test_a_failure_a_crash_and_a_hang_notice_a_change(self) -> None:
        runs = TestRuns(self.root / "scratch", 2)
        never = threading.Event()
        for script in ("exit 1", "kill -SEGV $$", "sleep 60"):
            self.assertIs(runs.run(self.shell("t", script), {}, 0.5, never), False, script)
        self.assertIs(runs.run(self.shell("t", "exit 0"), {}, 60, never), True)

    def test_the_first_test_that_fails_ends_the_others(self) -> None:
        runs = TestRuns(self.root / "scratch", 2)
        tests = [self.shell("long", "sleep 60"), self.shell("fails", 'test "$VELLOREADER_MUTANT" != 7')]
        self.assertEqual(runs.first_to_notice(tests, 7), "fails")
        self.assertIsNone(runs.first_to_notice(tests[1:], 8))

    def test_without_a_change_a_test_is_measured(self) -> None:
        passes = self.shell("passes", 'printf "\\0\\1" >"$VELLOREADER_MUTANTS_REACHED"')
        runs = TestRuns(self.root / "scratch", 1)
        self.assertEqual(runs.measure([passes, self.shell("fails", "exit 1")], 2), ["fails"])
        self.assertEqual(passes.reached, {1})
        self.assertGreater(passes.seconds, 0)

    def test_a_test_is_about_the_source_of_its_name(self) -> None:
        for name, is_about in (("FltFaceTest", True), ("FltFace", True), ("Each/FltFaceListTest", True),
                               ("Fltshot.draws", False)):
            self.assertEqual(self.shell(name, "").matches("src/a/FltFace.cpp"), is_about, name)


if __name__ == "__main__":
    unittest.main()
