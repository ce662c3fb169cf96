"""Opens OpenFlight databases (.flt) in Blender: File, Import, OpenFlight.

The program flt2gltf makes a glTF file of the database, and Blender's own importer opens that. Install this
file by Edit, Preferences, Add-ons, Install.
"""

import pathlib
import subprocess
import tempfile

import bpy
from bpy.props import BoolProperty, EnumProperty, StringProperty
from bpy_extras.io_utils import ImportHelper

bl_info = {
    "name": "Import OpenFlight (.flt)",
    "description": "Opens OpenFlight databases by the program flt2gltf",
    "author": "VelloReader",
    "version": (1, 0, 0),
    "blender": (3, 0, 0),
    "location": "File > Import > OpenFlight (.flt)",
    "category": "Import-Export",
}


def command_line(program, database, result, *, levels="highest", is_centred=True, texture_path=""):
    """The words that have flt2gltf make a result of a database."""
    words = [program, "--lod", levels, "--origin", "centre" if is_centred else "stored"]
    if texture_path:
        words += ["--texture-path", texture_path]
    # A name that begins with a hyphen isn't an option, since it has its folder in front.
    return [*words, "-o", str(pathlib.Path(result).absolute()), str(pathlib.Path(database).absolute())]


def convert(words):
    """Runs flt2gltf. Returns what it warns of; raises RuntimeError with the reason if there is no result."""
    try:
        done = subprocess.run(words, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              errors="replace", check=False)
    except OSError as problem:
        raise RuntimeError(f"{words[0]} can't be run ({problem.strerror}): install VelloReader, or set the "
                           "program's place in the preferences of this add-on") from problem
    if done.returncode != 0:
        raise RuntimeError(done.stderr.strip() or f"{words[0]} ended with {done.returncode}")
    return done.stderr.strip()


def open_gltf(path):
    """Has Blender's own importer open a file."""
    import numpy
    if "bool" not in vars(numpy):
        numpy.bool = bool  # The importer of Blender 3.4 asks for it; numpy has it no more since 1.24.
    return bpy.ops.import_scene.gltf(filepath=str(path))


# What Blender asks for: it takes them from the annotations of classes.
PROGRAM = StringProperty(name="flt2gltf", description="The program that converts: its name or its place",
                         default="flt2gltf", subtype="FILE_PATH")
ENDINGS = StringProperty(default="*.flt;*.FLT", options={"HIDDEN"})
LEVELS = EnumProperty(
    name="Levels of detail", default="highest",
    items=(("highest", "Finest", "What is seen from near"), ("lowest", "Coarsest", "What is seen from afar")))
IS_CENTRED = BoolProperty(
    name="Move to zero", default=True,
    description="A database far away from its zero, as in the coordinates of a map, gets its middle there: "
                "Blender has no fine numbers for large coordinates")
TEXTURE_PATH = StringProperty(name="Textures", description="Another folder to look for textures in")


class OpenFlightPreferences(bpy.types.AddonPreferences):
    """Where the program is."""

    bl_idname = __name__

    program: PROGRAM

    def draw(self, context):
        """Shows the only field."""
        self.layout.prop(self, "program")


class ImportOpenFlight(bpy.types.Operator, ImportHelper):
    """Open an OpenFlight database"""

    bl_idname = "import_scene.openflight"
    bl_label = "Import OpenFlight"
    bl_options = {"REGISTER", "UNDO"}

    filename_ext = ".flt"
    filter_glob: ENDINGS
    levels: LEVELS
    is_centred: IS_CENTRED
    texture_path: TEXTURE_PATH

    def execute(self, context):
        """Converts and opens."""
        addon = context.preferences.addons.get(__name__)
        program = addon.preferences.program if addon else "flt2gltf"
        with tempfile.TemporaryDirectory(prefix="openflight-") as folder:
            result = pathlib.Path(folder) / (pathlib.Path(self.filepath).stem + ".glb")
            try:
                warnings = convert(command_line(program, self.filepath, result, levels=self.levels,
                                                is_centred=self.is_centred, texture_path=self.texture_path))
            except RuntimeError as problem:
                self.report({"ERROR"}, str(problem))
                return {"CANCELLED"}
            if warnings:
                self.report({"WARNING"}, warnings)
            return open_gltf(result)


def add_to_menu(menu, _context):
    """The line in File, Import."""
    menu.layout.operator(ImportOpenFlight.bl_idname, text="OpenFlight (.flt)")


def register():
    """Called when the add-on is switched on."""
    for one in (OpenFlightPreferences, ImportOpenFlight):
        bpy.utils.register_class(one)
    bpy.types.TOPBAR_MT_file_import.append(add_to_menu)


def unregister():
    """Called when it is switched off."""
    bpy.types.TOPBAR_MT_file_import.remove(add_to_menu)
    for one in (ImportOpenFlight, OpenFlightPreferences):
        bpy.utils.unregister_class(one)
