"""Tests of what tools of Python see of the installed package. The arguments are its folder and version."""

import importlib.metadata
import pathlib
import subprocess
import sys
import tempfile
import unittest

import velloreader

FOLDER, VERSION = sys.argv.pop(1), sys.argv.pop(1)

PROGRAM = '''
import numpy
import velloreader


def report(path: str) -> list[str]:
    database = velloreader.Database(path, units="stored", levels="lowest", largest_file=10**9)
    for mesh in database.meshes():
        if mesh.kind == "faces" and mesh.material.texture is not None:
            corners = numpy.asarray(mesh.positions)[numpy.asarray(mesh.triangles)]
            print(corners.shape, memoryview(mesh.colors).nbytes, mesh.material.texture.path or "missing")
    for joint in database.joints:
        print(joint.name, joint.yaw.current + 1)
    return [switch.name for switch in database.switches] + [message.text for message in database.messages]


root = velloreader.load("a.flt", references="file", salvage=False, log=True, textures=["b"], only_below="/")
print(root.getNumChildren())
'''


class MetadataTest(unittest.TestCase):
    def test_tells_name_version_and_who_installed_it(self):
        package = importlib.metadata.distribution("velloreader")
        folder = pathlib.Path(str(package.locate_file("velloreader")))
        self.assertEqual(folder, pathlib.Path(velloreader.__file__).parent)
        self.assertEqual((package.version, velloreader.__version__), (VERSION, VERSION))
        self.assertEqual(package.metadata["Name"], "velloreader")
        self.assertIn("OpenFlight", package.metadata["Summary"])
        self.assertEqual(package.read_text("INSTALLER"), "cmake\n")
        self.assertEqual(package.requires, ['numpy; extra == "arrays"'])


class TypesTest(unittest.TestCase):
    def check(self, text):
        """What the strict checker says of a program that uses the package."""
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program.py"
            program.write_text(text)
            command = [sys.executable, "-m", "mypy", "--strict", "--no-error-summary", "--cache-dir",
                       f"{folder}/cache", str(program), f"{FOLDER}/velloreader/__init__.py"]
            run = subprocess.run(
                command, env={"MYPYPATH": FOLDER}, cwd=folder, capture_output=True, text=True
            )
            return run.stdout + run.stderr

    def test_of_the_package_and_of_a_program_that_uses_it_are_right(self):
        self.assertEqual(self.check(PROGRAM), "")

    def test_know_the_words_of_an_option(self):
        for wrong in ('units="feet"', 'levels="finest"', 'references="inline"', "largest_file=1.5", "unit=1"):
            said = self.check(f'import velloreader\nvelloreader.load("a.flt", {wrong})\n')
            self.assertEqual(said.count("error:"), 1, said)


if __name__ == "__main__":
    unittest.main()
