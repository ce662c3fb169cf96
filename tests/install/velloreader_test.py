"""Tests of the installed Python package. The arguments are a good database and the version of the package."""

import ctypes
import doctest
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import warnings

import velloreader
from pivy import coin

SAMPLE = pathlib.Path(sys.argv.pop(1))
VERSION = sys.argv.pop(1)


class VersionTest(unittest.TestCase):
    def test_is_that_of_the_whole_package(self):
        self.assertEqual(velloreader.__version__, VERSION)


class LoadTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def load(self, *arguments):
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            return velloreader.load(*arguments)

    def test_gives_a_separator_whose_only_reference_it_owns(self):
        root = self.load(str(SAMPLE))
        self.assertIs(type(root), coin.SoSeparator)
        self.assertEqual(root.getRefCount(), 1)
        self.assertGreater(root.getNumChildren(), 0)

    def test_gives_the_reference_back_when_the_root_goes(self):
        root = self.load(SAMPLE)
        child = root.getChild(0)
        child.ref()
        self.assertEqual(child.getRefCount(), 2)
        del root
        self.assertEqual(child.getRefCount(), 1)
        child.unref()

    def test_a_hundred_loads_in_one_process(self):
        path = self.folder / "small.flt"
        path.write_bytes(SAMPLE.read_bytes()[:400])
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            for _ in range(100):
                self.assertIs(type(velloreader.load(path)), coin.SoSeparator)

    def test_a_scene_outlives_its_proxy_in_a_parent(self):
        parent = coin.SoSeparator()
        parent.addChild(self.load(SAMPLE))
        self.assertEqual(parent.getChild(0).getRefCount(), 1)
        count = coin.SoGetPrimitiveCountAction()
        count.apply(parent)
        self.assertGreater(count.getTriangleCount(), 1000)

    def test_takes_texts_bytes_and_paths(self):
        for path in (str(SAMPLE), os.fsencode(SAMPLE), SAMPLE):
            self.assertGreater(self.load(path).getNumChildren(), 0)

    def test_takes_a_name_without_a_directory_and_finds_textures_beside_it(self):
        before = os.getcwd()
        os.chdir(SAMPLE.parent)
        self.addCleanup(os.chdir, before)
        self.assertGreater(self.load(SAMPLE.name).getNumChildren(), 0)

    def test_a_missing_file_is_an_os_error(self):
        with self.assertRaises(FileNotFoundError):
            velloreader.load(self.folder / "none.flt")
        with self.assertRaises(IsADirectoryError):
            velloreader.load(self.folder)
        with self.assertRaises(NotADirectoryError):
            velloreader.load(SAMPLE / "none.flt")
        with self.assertRaises(FileNotFoundError) as missing:
            velloreader.load("none.flt")
        self.assertEqual(str(missing.exception), "[Errno 2] No such file or directory: 'none.flt'")

    def test_a_pipe_is_an_os_error_and_is_not_opened(self):
        path = self.folder / "pipe.flt"
        os.mkfifo(path)
        # With both ends open nobody would have to wait.
        pipe = os.open(path, os.O_RDWR)
        self.addCleanup(os.close, pipe)
        libc = ctypes.CDLL(None)
        watch = libc.inotify_init1(os.O_NONBLOCK)
        self.addCleanup(os.close, watch)
        libc.inotify_add_watch(watch, os.fsencode(path), 0x20)  # IN_OPEN
        with self.assertRaisesRegex(OSError, "not a regular file"):
            velloreader.load(path)
        with self.assertRaises(BlockingIOError):
            os.read(watch, 4096)

    def test_a_file_that_is_not_openflight_is_a_value_error_with_the_reason(self):
        path = self.folder / "text.flt"
        path.write_text("nothing of the kind")
        with self.assertRaisesRegex(ValueError, "text.flt: not an OpenFlight database"):
            velloreader.load(path)
        path.write_bytes(SAMPLE.read_bytes()[:12] + bytes(3) + b"\x0a" + bytes(400))
        with self.assertRaisesRegex(ValueError, "revision 10 isn't supported"):
            velloreader.load(path)

    def test_a_null_in_a_name_is_a_value_error(self):
        with self.assertRaises(ValueError):
            velloreader.load("a\0b")

    def test_a_wrong_type_is_a_type_error(self):
        with self.assertRaises(TypeError):
            velloreader.load(5)

    def test_damage_is_a_warning_and_the_rest_is_loaded(self):
        path = self.folder / "cut.flt"
        path.write_bytes(SAMPLE.read_bytes()[:-10])
        shutil.copytree(SAMPLE.parent / SAMPLE.stem, self.folder / SAMPLE.stem)
        with self.assertWarns(velloreader.DatabaseWarning) as told:
            root = velloreader.load(path)
        self.assertIn("cut.flt", str(told.warning))
        self.assertEqual(told.filename, __file__)
        self.assertGreater(root.getNumChildren(), 0)

    def test_missing_textures_are_warnings(self):
        path = self.folder / "alone.flt"
        shutil.copy(SAMPLE, path)
        with self.assertWarnsRegex(velloreader.DatabaseWarning, r"asphalt\.png"):
            velloreader.load(path)

    def test_nothing_is_printed_and_later_output_is_kept(self):
        broken = self.folder / "text.flt"
        broken.write_text("nothing of the kind")
        program = (
            "import ctypes, sys, velloreader\n"
            f"velloreader.load({str(SAMPLE)!r})\n"
            f"try: velloreader.load({str(broken)!r})\n"
            "except ValueError: print('refused', flush=True)\n"
            # std::cout << 'x', by the standard library's own symbols
            "cxx = ctypes.CDLL('libstdc++.so.6')\n"
            "put, flush = cxx._ZNSo3putEc, cxx._ZNSo5flushEv\n"
            "put.argtypes, put.restype = [ctypes.c_void_p, ctypes.c_char], ctypes.c_void_p\n"
            "flush.argtypes, flush.restype = [ctypes.c_void_p], ctypes.c_void_p\n"
            "cout = ctypes.addressof(ctypes.c_char.in_dll(cxx, '_ZSt4cout'))\n"
            "put(cout, b'x'); flush(cout)\n"
        )
        run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=True)
        self.assertEqual(run.stdout, "refused\nx")
        self.assertEqual(run.stderr, "")

    def test_a_listing_is_written_only_if_asked_for(self):
        path = self.folder / "a.flt"
        path.write_bytes(SAMPLE.read_bytes())
        for log, name in ((None, None), (True, "a.flt.log"), (self.folder / "b.txt", "b.txt")):
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                velloreader.load(path, log=log)
            expected = {"a.flt"} if name is None else {"a.flt", name}
            self.assertEqual({entry.name for entry in self.folder.iterdir()}, expected)
            if name is not None:
                self.assertIn("end of parsing", (self.folder / name).read_text())
                (self.folder / name).unlink()
        (self.folder / "a.flt.log").write_text("mine")
        with self.assertRaisesRegex(ValueError, "no log is written"):
            velloreader.load(path, log=True)

    def test_textures_are_found_in_the_directories_given(self):
        path = self.folder / "alone.flt"
        shutil.copy(SAMPLE, path)
        shutil.copytree(SAMPLE.parent / SAMPLE.stem, self.folder / "elsewhere" / "deep")
        database = velloreader.Database(path, textures=[self.folder / "elsewhere" / "deep"])
        self.assertEqual([texture.path for texture in database.textures if texture.path is None], [])
        self.assertEqual([reference.loaded for reference in database.references], [False])

    def test_a_load_can_be_watched_and_cancelled(self):
        calls = []
        self.load_watched(lambda *call: calls.append(call))
        files = {os.path.basename(call[0]) for call in calls}
        self.assertLessEqual({"airfield.flt", "terminal.flt"}, files)
        with self.assertRaises(velloreader.LoadCancelled):
            self.load_watched(lambda *call: False)
        with self.assertRaises(KeyError):
            self.load_watched(lambda *call: {}["none"])
        self.assertGreater(self.load(SAMPLE).getNumChildren(), 0)

    def load_watched(self, progress):
        return velloreader.load(SAMPLE, progress=progress)

    def test_two_hundred_refusals_leave_no_files_open(self):
        path = self.folder / "text.flt"
        path.write_text("nothing of the kind")
        before = len(os.listdir("/proc/self/fd"))
        for _ in range(200):
            with self.assertRaises(ValueError):
                velloreader.load(path)
        self.assertEqual(len(os.listdir("/proc/self/fd")), before)


class DatabaseTest(unittest.TestCase):
    def test_lists_what_is_to_be_known(self):
        database = velloreader.Database(SAMPLE)
        self.assertIs(type(database.scene), coin.SoSeparator)
        self.assertEqual(database.messages, [])
        self.assertEqual(database.info["revision"], 1570)
        self.assertEqual(database.info["bytes"], SAMPLE.stat().st_size)
        self.assertTrue(all(os.path.isfile(texture.path) for texture in database.textures))
        self.assertEqual([reference.loaded for reference in database.references], [True])
        skipped = velloreader.Database(SAMPLE, references="skip")
        self.assertEqual([reference.loaded for reference in skipped.references], [False])
        with self.assertRaises(ValueError):
            velloreader.Database(SAMPLE, references="nonsense")

    def test_places_damage(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "cut.flt"
            path.write_bytes(SAMPLE.read_bytes()[:-10])
            messages = velloreader.Database(path).messages
        damage = [message for message in messages if message.offset is not None]
        self.assertEqual(len(damage), 1)
        self.assertEqual(damage[0].file, str(path))
        self.assertEqual(damage[0].level, "warning")

    def test_reads_records_one_by_one(self):
        database = velloreader.Database(SAMPLE)
        self.assertEqual(sum(1 for _ in database.records()), database.info["records"])
        records = database.records()
        self.assertEqual(next(records)["fields"]["formatRevisionLevel"], 1570)
        records.close()


class ToolkitTest(unittest.TestCase):
    """What the toolkit reads by itself, once the package is imported."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        # Feet, and a multiplier other than 1.
        database = bytearray(SAMPLE.read_bytes())
        database[60:63] = bytes((0, 3, 4))
        self.path = pathlib.Path(folder.name) / SAMPLE.name
        self.path.write_bytes(database)
        shutil.copytree(SAMPLE.parent / SAMPLE.stem, self.path.parent / SAMPLE.stem)

    def triangles_of(self, text):
        source = coin.SoInput()
        source.setBuffer(text)
        root = coin.SoDB.readAll(source)
        count = coin.SoGetPrimitiveCountAction()
        count.apply(root)
        return count.getTriangleCount()

    def test_reads_a_database_as_its_own(self):
        source = coin.SoInput()
        self.assertTrue(source.openFile(str(self.path)))
        root = coin.SoDB.readAll(source)
        count = coin.SoGetPrimitiveCountAction()
        count.apply(root)
        self.assertGreater(count.getTriangleCount(), 1000)

    def test_reads_a_database_that_a_file_node_names(self):
        text = f'#Inventor V2.1 ascii\nFile {{ name "{self.path}" }}\n'
        self.assertGreater(self.triangles_of(text), 1000)


class DocumentationTest(unittest.TestCase):
    def test_the_examples_do_as_they_say(self):
        before = os.getcwd()
        os.chdir(SAMPLE.parent)
        self.addCleanup(os.chdir, before)
        failed, tried = doctest.testmod(velloreader)
        self.assertEqual(failed, 0)
        self.assertGreater(tried, 8)


if __name__ == "__main__":
    unittest.main()
