"""Tests of what the package gives of databases besides a scene. The argument is their folder."""

import gc
import inspect
import pathlib
import subprocess
import sys
import tempfile
import unittest
import weakref

import numpy
import velloreader

FOLDER = pathlib.Path(sys.argv.pop(1))
PARTS = FOLDER / "parts.flt"

# Whether the toolkit was started.
STARTED = "__import__('ctypes').CDLL('libCoin.so.80c')._ZN4SoDB13isInitializedEv()"


def meshes_by_name(path=PARTS, **options):
    meshes = {}
    for mesh in velloreader.Database(path, **options).meshes():
        meshes.setdefault(mesh.name, []).append(mesh)
    return meshes


def in_world(mesh):
    """Where the corners of a mesh stand."""
    points = mesh.origin + mesh.positions.astype(float)
    return points @ mesh.transform[:3, :3].T + mesh.transform[:3, 3]


def run(program):
    """What a program prints that has the package as "velloreader" and the path of a database as "path"."""
    text = f"import velloreader\npath = {str(PARTS)!r}\n{program}"
    command = [sys.executable, "-W", "error", "-c", text]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()


class SaveTest(unittest.TestCase):
    def test_writes_the_form_of_the_name(self):
        with tempfile.TemporaryDirectory() as folder:
            database = velloreader.Database(PARTS)
            for name, begin in (("a.glb", b"glTF"), ("a.gltf", b"{"), ("a.html", b"<!doctype html>"),
                                ("a.obj", b"mtllib a.mtl")):
                path = pathlib.Path(folder, name)
                self.assertIsInstance(database.save(path), dict)
                self.assertTrue(path.read_bytes().startswith(begin), name)

    def test_tells_why_it_cant(self):
        database = velloreader.Database(PARTS)
        with self.assertRaisesRegex(ValueError, "a.png"):
            database.save("a.png")
        with self.assertRaises(OSError):
            database.save("/nowhere/a.glb")
        with self.assertRaisesRegex(ValueError, "exact conversion"):
            velloreader.Database(PARTS, exact=True).save("a.glb")


class MeshesTest(unittest.TestCase):
    def setUp(self):
        self.meshes = meshes_by_name()

    def only(self, name):
        mesh, = self.meshes[name]
        return mesh

    def test_are_what_is_drawn_of_each_part(self):
        self.assertEqual({name: len(meshes) for name, meshes in self.meshes.items()},
                         {"slab": 1, "tile": 2, "leaf": 1, "bright": 1, "fine": 1, "wire": 1})

    def test_have_arrays_of_these_shapes_and_types(self):
        mesh = self.only("slab")
        for array, shape, kind in (
            (mesh.origin, (3,), numpy.float64),
            (mesh.transform, (4, 4), numpy.float64),
            (mesh.positions, (5, 3), numpy.float32),
            (mesh.normals, (5, 3), numpy.float32),
            (mesh.uvs, (5, 2), numpy.float32),
            (mesh.colors, (5, 4), numpy.uint8),
            (mesh.triangles, (3, 3), numpy.uint32),
        ):
            self.assertIs(type(array), numpy.ndarray)
            self.assertEqual((array.shape, array.dtype), (shape, kind))
            self.assertFalse(array.flags.writeable)

    def test_faces_are_fans_of_triangles(self):
        mesh = self.only("slab")
        self.assertEqual(mesh.kind, "faces")
        self.assertIsNone(mesh.lines)
        self.assertEqual(mesh.triangles.tolist(), [[0, 1, 2], [0, 2, 3], [0, 3, 4]])
        self.assertEqual(mesh.positions[mesh.triangles[1]].tolist(), [[0, 0, 0], [2, 1, 0], [1, 2, 0]])
        self.assertEqual(mesh.normals.tolist(), [[0, 0, 1]] * 5)

    def test_lines_are_told_from_faces_and_need_no_normals(self):
        mesh = self.only("wire")
        self.assertEqual(mesh.kind, "lines")
        self.assertIsNone(mesh.triangles)
        self.assertIsNone(mesh.normals)
        self.assertEqual(mesh.lines.shape[1], 2)
        self.assertFalse(mesh.material.lit)

    def test_colours_are_red_green_blue_and_alpha_of_each_corner(self):
        self.assertEqual(self.only("slab").colors.tolist(), [[255, 0, 0, 255]] * 5)
        self.assertEqual(self.only("leaf").colors.tolist(), [[255, 255, 255, 255]] * 4)

    def test_material_names_the_texture_with_its_place(self):
        material = self.only("slab").material
        self.assertTrue(material.lit)
        self.assertEqual((material.texture.name, material.texture.path), ("brick.rgb", None))
        self.assertIs(material.cut_out, False)
        self.assertEqual(material.ambient, (1, 0, 0))
        self.assertIsNone(self.only("leaf").material.texture)
        self.assertIsNone(self.only("leaf").uvs)
        self.assertEqual(self.only("leaf").layers, [])

    def test_stand_where_their_transformations_bring_them(self):
        self.assertEqual(self.only("slab").transform.tolist(),
                         [[1, 0, 0, 10], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]])
        self.assertEqual([in_world(mesh).min(axis=0).tolist() for mesh in self.meshes["tile"]],
                         [[0, 20, 0], [0, 30, 0]])
        self.assertEqual(in_world(self.only("leaf")).min(axis=0).tolist(), [2, 0, 0])

    def test_of_a_part_at_several_places_share_their_arrays(self):
        first, second = self.meshes["tile"]
        for which in ("positions", "normals", "colors", "triangles"):
            self.assertTrue(numpy.shares_memory(getattr(first, which), getattr(second, which)), which)

    def test_tell_the_record_that_they_come_from(self):
        by_offset = {record["offset"]: record for record in velloreader.Database(PARTS).records()}
        for name in self.meshes:
            mesh = self.meshes[name][0]
            self.assertEqual(mesh.file, str(PARTS))
            self.assertEqual(by_offset[mesh.offset]["fields"]["idASCII"], name)
        files = {mesh.file for mesh in velloreader.Database(FOLDER / "site.flt").meshes()}
        self.assertEqual(files, {str(FOLDER / "site.flt"), str(FOLDER / "footprint.flt")})

    def test_are_the_triangles_of_the_scene(self):
        from pivy import coin
        database = velloreader.Database(PARTS, levels="highest")
        count = coin.SoGetPrimitiveCountAction()
        count.apply(database.scene)
        triangles = sum(len(mesh.triangles) for mesh in database.meshes() if mesh.kind == "faces")
        self.assertEqual(triangles, count.getTriangleCount())

    def test_are_the_same_before_and_after_the_scene(self):
        database = velloreader.Database(PARTS)
        before = [mesh.positions.tolist() for mesh in database.meshes()]
        self.assertGreater(database.scene.getNumChildren(), 0)
        self.assertEqual([mesh.positions.tolist() for mesh in database.meshes()], before)

    def test_say_what_they_are(self):
        self.assertEqual(repr(self.only("wire")), "<Mesh 'wire': lines>")

    def test_of_the_exact_conversion_are_a_value_error(self):
        with self.assertRaisesRegex(ValueError, "parts.flt: the exact conversion makes scenes only"):
            velloreader.Database(PARTS, exact=True).meshes()


class LifeTest(unittest.TestCase):
    def test_an_array_outlives_all_that_it_came_from(self):
        mesh = next(velloreader.Database(PARTS).meshes())
        arrays = [mesh.positions, mesh.colors, mesh.triangles, mesh.transform]
        kept = [array.copy() for array in arrays]
        gone = weakref.ref(mesh)
        del mesh
        gc.collect()
        self.assertIsNone(gone())
        for _ in range(20):
            for mesh in velloreader.Database(PARTS).meshes():
                mesh.colors, mesh.triangles
        for array, copy in zip(arrays, kept):
            self.assertEqual(array.tolist(), copy.tolist())

    def test_a_walk_outlives_its_database(self):
        meshes = velloreader.Database(PARTS).meshes()
        gc.collect()
        self.assertEqual(len(list(meshes)), 7)


class ToolkitTest(unittest.TestCase):
    def test_is_not_started_for_meshes(self):
        self.assertEqual(run(f"print(len(list(velloreader.Database(path).meshes())), {STARTED})"), ["7", "0"])

    def test_is_not_started_where_the_load_fails(self):
        self.assertEqual(run(f"try: velloreader.Database(path + '.none')\n"
                             f"except FileNotFoundError: print({STARTED})"), ["0"])

    def test_is_started_when_the_scene_is_asked_for(self):
        self.assertEqual(run(f"d = velloreader.Database(path)\nprint({STARTED})\nd.scene\nprint({STARTED})"),
                         ["0", "1"])

    def test_reads_databases_whether_pivy_comes_first_or_last(self):
        read = "s = coin.SoInput(); s.openFile(path); print(coin.SoDB.readAll(s).getNumChildren())"
        self.assertEqual(run(f"from pivy import coin\n{read}"), ["1"])
        self.assertEqual(run(f"import sys; del sys.modules['velloreader']\nfrom pivy import coin\n"
                             f"import velloreader\n{read}"), ["1"])


class NumpyTest(unittest.TestCase):
    def test_is_not_needed(self):
        printed = run("import sys; sys.modules['numpy'] = None\n"
                      "mesh = next(velloreader.Database(path).meshes())\n"
                      "for a in (mesh.positions, mesh.origin, mesh.transform, mesh.colors, mesh.triangles):\n"
                      "    print(type(a).__name__, a.format, *a.shape, a.readonly)\n"
                      "print(mesh.positions[2, 1], mesh.triangles.tolist()[2])")
        self.assertEqual(" ".join(printed), "memoryview f 5 3 True memoryview d 3 True memoryview d 4 4 True "
                                            "memoryview B 5 4 True memoryview I 3 3 True 1.0 [0, 3, 4]")

    def test_takes_what_there_is_without_it(self):
        printed = run("import sys; sys.modules['numpy'] = None\n"
                      "mesh = next(velloreader.Database(path).meshes()); mesh.positions\n"
                      "del sys.modules['numpy']; import numpy\n"
                      "print(numpy.shares_memory(numpy.asarray(mesh.positions), mesh.positions))")
        self.assertEqual(printed, ["True"])


class ControlsTest(unittest.TestCase):
    def test_switches_have_their_masks(self):
        switch, = velloreader.Database(PARTS).switches
        self.assertEqual(switch, velloreader.Switch("lamp", 1, [1, 2 | 0x100 << 32], ["", "on"]))

    def test_joints_have_their_ranges(self):
        joint, = velloreader.Database(PARTS).joints
        self.assertEqual(joint.name, "door")
        self.assertEqual(joint.translation[0], velloreader.Range(-1, 4, 2, 0.5, joint.translation[0].limited))
        self.assertEqual(joint.yaw.current, 0)
        self.assertEqual(len(joint.scale), 3)

    def test_the_exact_conversion_knows_of_none(self):
        database = velloreader.Database(PARTS, exact=True)
        self.assertEqual((database.switches, database.joints), ([], []))


class OptionsTest(unittest.TestCase):
    """Options of the loader that shape what is given."""

    def heights(self, path, **options):
        return sorted(round(float(in_world(mesh)[:, 1].max()), 4)
                      for mesh in velloreader.Database(path, **options).meshes())

    def test_units_are_metres_or_as_stored(self):
        self.assertEqual(self.heights(FOLDER / "footprint.flt"), [0.3048])
        self.assertEqual(self.heights(FOLDER / "footprint.flt", units="stored"), [1])

    def test_the_origin_is_stored_or_in_the_middle_of_a_far_database(self):
        stored = velloreader.Database(FOLDER / "far.flt")
        self.assertEqual(stored.info["offset"], (0, 0, 0))
        centred = velloreader.Database(FOLDER / "far.flt", origin="centre")
        place, moved = (in_world(next(database.meshes())) for database in (stored, centred))
        self.assertLess(abs(place[0] - (4500000.3, 5300000.7, 12)).max(), 1e-6)
        self.assertLess(abs(moved).max(), 2)
        self.assertLess(abs(moved + centred.info["offset"] - place).max(), 1e-6)
        near = velloreader.Database(PARTS, origin="centre")
        self.assertEqual(near.info["offset"], (0, 0, 0))

    def test_levels_may_be_the_coarsest(self):
        self.assertIn("coarse", meshes_by_name(levels="lowest"))
        self.assertNotIn("fine", meshes_by_name(levels="lowest"))

    def test_references_may_be_skipped_or_named(self):
        self.assertEqual(self.heights(FOLDER / "site.flt"), [0.3048, 1])
        for choice in ("skip", "file"):
            database = velloreader.Database(FOLDER / "site.flt", references=choice)
            self.assertEqual([reference.loaded for reference in database.references], [False])
            self.assertEqual(len(list(database.meshes())), 1)

    def test_larger_files_are_refused_or_left_out(self):
        with self.assertRaisesRegex(ValueError, "parts.flt"):
            velloreader.Database(PARTS, largest_file=100)
        size = PARTS.stat().st_size
        self.assertEqual(len(list(velloreader.Database(PARTS, largest_file=size).meshes())), 7)

    def test_nothing_is_read_outside_a_directory(self):
        below = FOLDER / "below"
        below.mkdir(exist_ok=True)
        self.assertEqual(self.heights(FOLDER / "site.flt", only_below=below), [1])
        self.assertEqual(self.heights(FOLDER / "site.flt", only_below=FOLDER), [0.3048, 1])

    def test_records_are_looked_for_after_damage_unless_they_are_not_to_be(self):
        data = PARTS.read_bytes()
        at = next(record["offset"] for record in velloreader.Database(PARTS).records()
                  if record["fields"].get("idASCII") == "door")
        damaged = FOLDER / "damaged.flt"
        damaged.write_bytes(data[:at] + bytes(4) + data[at:])
        self.assertIn("leaf", meshes_by_name(damaged))
        self.assertNotIn("leaf", meshes_by_name(damaged, salvage=False))

    def test_what_is_no_value_is_an_error_that_tells_what_is(self):
        for option, value, words in (("units", "feet", "units: 'feet' isn't one of metres, stored"),
                                     ("references", "none", "isn't one of follow, file, skip"),
                                     ("largest_file", -1, "largest_file: '-1' isn't a number"),
                                     ("only_below", "a\0b", "null byte")):
            with self.assertRaisesRegex(ValueError, words):
                velloreader.Database(PARTS, **{option: value})
        for option, value in (("units", 5), ("largest_file", "many"), ("largest_file", 1.5), ("textures", 5),
                              ("unit", "metres")):
            with self.assertRaises(TypeError):
                velloreader.Database(PARTS, **{option: value})

    def test_are_all_named_and_explained(self):
        for function in (velloreader.load, velloreader.Database):
            parameters = inspect.signature(function).parameters
            options = {name: parameter.default for name, parameter in parameters.items()
                       if parameter.kind is parameter.KEYWORD_ONLY and name != "progress"}
            self.assertEqual(options, {
                "textures": (), "levels": "all", "time": "day", "exact": False, "merge": False,
                "names": "all", "log": None,
                "references": "follow", "units": "metres", "origin": "stored", "salvage": True,
                "largest_file": None, "only_below": None, "texture_names_from": None,
            })
            for name in options:
                self.assertRegex(velloreader.load.__doc__, rf"\n        {name}\n            \w")


class DatabaseTest(unittest.TestCase):
    def test_says_which_one_it_is(self):
        self.assertEqual(repr(velloreader.Database(PARTS)), f"Database({str(PARTS)!r})")


if __name__ == "__main__":
    unittest.main()
