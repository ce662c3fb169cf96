"""The add-on for Blender, with a stand-in for Blender: what it asks flt2gltf for, and what it makes of that.

The arguments are the add-on, the folder of the programs, and a folder to work in.
"""

import importlib.util
import pathlib
import shutil
import subprocess
import sys
import types
import unittest
from unittest import mock

ADD_ON, PROGRAMS, WORK = map(pathlib.Path, sys.argv[1:4])


def stand_in():
    """What the add-on takes of Blender: classes, properties, and an importer that looks into its file."""
    def importer(filepath):
        bpy.opened.append((pathlib.Path(filepath).name, pathlib.Path(filepath).read_bytes()))
        return {"FINISHED"}

    def of_value(**words):
        return words.get("default", "")

    bpy = types.ModuleType("bpy")
    bpy.opened = []
    bpy.types = types.SimpleNamespace(AddonPreferences=object, Operator=type("Operator", (), {}),
                                      TOPBAR_MT_file_import=[])
    bpy.props = types.ModuleType("bpy.props")
    bpy.props.BoolProperty = bpy.props.EnumProperty = bpy.props.StringProperty = of_value
    bpy.utils = mock.Mock()
    bpy.ops = types.SimpleNamespace(import_scene=types.SimpleNamespace(gltf=importer))
    extras = types.ModuleType("bpy_extras.io_utils")
    extras.ImportHelper = type("ImportHelper", (), {})
    return bpy, {"bpy": bpy, "bpy.props": bpy.props, "bpy_extras": types.ModuleType("bpy_extras"),
                 "bpy_extras.io_utils": extras, "numpy": types.ModuleType("numpy")}


class ImportOpenFlight(unittest.TestCase):
    """One method a fact."""

    def setUp(self):
        self.bpy, modules = stand_in()
        patch = mock.patch.dict(sys.modules, modules)
        patch.start()
        self.addCleanup(patch.stop)
        description = importlib.util.spec_from_file_location("import_openflight", ADD_ON)
        self.add_on = importlib.util.module_from_spec(description)
        description.loader.exec_module(self.add_on)

    def run_operator(self, database, program=PROGRAMS / "flt2gltf"):
        """What the operator returns, and what it reports."""
        operator = self.add_on.ImportOpenFlight()
        # In Blender annotations become values of the object.
        vars(operator).update(type(operator).__annotations__, filepath=str(database), report=mock.Mock())
        addon = mock.Mock()
        addon.preferences.program = str(program)
        context = mock.Mock()
        context.preferences.addons = {"import_openflight": addon}
        result = operator.execute(context)
        return result, [(call.args[0], call.args[1]) for call in operator.report.call_args_list]

    def test_the_sample_is_opened(self):
        shutil.rmtree(WORK, ignore_errors=True)
        WORK.mkdir(parents=True)
        subprocess.run([PROGRAMS / "make_sample", WORK / "airfield.flt"], check=True)
        result, reports = self.run_operator(WORK / "airfield.flt")
        self.assertEqual(result, {"FINISHED"})
        [(name, content)] = self.bpy.opened
        self.assertEqual(name, "airfield.glb")
        self.assertEqual(content[:4], b"glTF")
        self.assertIn(b"control_tower", content)
        self.assertEqual([kind for kind, _ in reports], [{"WARNING"}])
        self.assertIn("turning faces", reports[0][1])

    def test_a_file_that_is_none_is_told_and_nothing_is_opened(self):
        WORK.mkdir(parents=True, exist_ok=True)
        (WORK / "text.flt").write_text("no database")
        result, reports = self.run_operator(WORK / "text.flt")
        self.assertEqual(result, {"CANCELLED"})
        self.assertEqual([kind for kind, _ in reports], [{"ERROR"}])
        self.assertIn("not an OpenFlight database", reports[0][1])
        self.assertEqual(self.bpy.opened, [])

    def test_without_the_program_it_says_what_to_do(self):
        result, reports = self.run_operator("airfield.flt", program="/nowhere/flt2gltf")
        self.assertEqual(result, {"CANCELLED"})
        self.assertRegex(reports[0][1], "^/nowhere/flt2gltf can't be run .*: install VelloReader")

    def test_choices_become_options(self):
        words = self.add_on.command_line("flt2gltf", "/data/-a b.flt", "/tmp/out.glb")
        self.assertEqual(words, ["flt2gltf", "--lod", "highest", "--origin", "centre", "-o", "/tmp/out.glb",
                                 "/data/-a b.flt"])
        words = self.all_choices("flt2gltf")
        self.assertEqual(words, ["flt2gltf", "--lod", "lowest", "--origin", "stored", "--texture-path",
                                 "/data/pictures", "-o", "/tmp/out.glb", "/data/a.flt"])

    def all_choices(self, program):
        """The command line in which nothing is as by default."""
        return self.add_on.command_line(program, "/data/a.flt", "/tmp/out.glb", levels="lowest",
                                        is_centred=False, texture_path="/data/pictures")

    def test_the_program_knows_all_of_these_options(self):
        words = self.all_choices(str(PROGRAMS / "flt2gltf"))
        done = subprocess.run(words, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 1, "not 2, which is wrong usage: " + done.stderr)
        self.assertIn("/data/a.flt: cannot open", done.stderr)

    def test_the_menu_has_it_while_it_is_switched_on(self):
        self.add_on.register()
        menu = mock.Mock()
        [add] = self.bpy.types.TOPBAR_MT_file_import
        add(menu, None)
        menu.layout.operator.assert_called_once_with("import_scene.openflight", text="OpenFlight (.flt)")
        self.add_on.unregister()
        self.assertEqual(self.bpy.types.TOPBAR_MT_file_import, [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
