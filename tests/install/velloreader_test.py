"""Tests of the installed Python package. The arguments are a good database and the version of the package."""

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

    def test_a_file_that_is_not_openflight_is_a_value_error_with_the_reason(self):
        path = self.folder / "text.flt"
        path.write_text("nothing of the kind")
        with self.assertRaisesRegex(ValueError, "text.flt: ERROR! Not an Openflight Input !$"):
            velloreader.load(path)
        path.write_bytes(SAMPLE.read_bytes()[:12] + bytes(3) + b"\x0a" + bytes(400))
        with self.assertRaisesRegex(ValueError, "Revision not supported"):
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

    def test_a_listing_goes_beside_the_database(self):
        path = self.folder / "a.flt"
        path.write_bytes(SAMPLE.read_bytes())
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            velloreader.load(path)
        self.assertIn("end of parsing", (self.folder / "a.flt.log").read_text())

    def test_two_hundred_refusals_leave_no_files_open(self):
        path = self.folder / "text.flt"
        path.write_text("nothing of the kind")
        before = len(os.listdir("/proc/self/fd"))
        for _ in range(200):
            with self.assertRaises(ValueError):
                velloreader.load(path)
        self.assertEqual(len(os.listdir("/proc/self/fd")), before)


if __name__ == "__main__":
    unittest.main()
