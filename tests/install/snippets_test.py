"""Compiles and runs the snippets of the documents as they stand, against the installed tree.

The arguments are the prefix, the folder of libraries in it, a good database, the compiler with its flags,
and the documents. C++ snippets are whole programs, Python snippets are scripts, and snippets for the shell
use the installed programs; each runs beside a copy of the database. A snippet for CMake is put into a
project. What builds VelloReader itself belongs to readme_test.py and to the project that takes the sources
in.
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

PREFIX, LIBRARIES, SAMPLE = map(pathlib.Path, sys.argv[1:4])
COMPILER = shlex.split(sys.argv[4])
DOCUMENTS = [pathlib.Path(name) for name in sys.argv[5:]]
SNIPPET = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


class SnippetTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        shutil.copy(SAMPLE, self.folder)
        shutil.copytree(SAMPLE.parent / SAMPLE.stem, self.folder / SAMPLE.stem)
        program = "#include <VelloReader/FltLoader.h>\nint main() { FltLoader(); }\n"
        (self.folder / "your_program.cpp").write_text(program)
        self.environment = os.environ | {
            "LD_LIBRARY_PATH": str(LIBRARIES),
            "PATH": f"{self.folder}:{PREFIX / 'bin'}:{os.environ['PATH']}",
            "PKG_CONFIG_PATH": str(LIBRARIES / "pkgconfig"),
            "CMAKE_PREFIX_PATH": str(PREFIX),
        }

    def run_here(self, *command, text=None):
        run = subprocess.run(
            command, cwd=self.folder, env=self.environment, input=text, capture_output=True, text=True
        )
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_every_snippet(self):
        done = []
        for document in DOCUMENTS:
            for language, text in SNIPPET.findall(document.read_text()):
                run = getattr(self, f"run_{language}", None)
                if run is None:
                    continue
                with self.subTest(document=document.name, snippet=text):
                    run(text)
                    done.append(language)
        self.assertEqual(set(done), {"cpp", "cmake", "python", "sh"})

    def run_cpp(self, text):
        flags = subprocess.run(
            ["pkg-config", "--cflags", "--libs", "velloreader"], capture_output=True, text=True, check=True,
            env=self.environment,
        ).stdout.split()
        (self.folder / "snippet.cpp").write_text(text)
        warnings = ["-Wall", "-Wextra", "-Werror"]
        self.run_here(*COMPILER, "-std=c++17", *warnings, "snippet.cpp", "-o", "snippet", *flags)
        self.run_here("./snippet")

    def run_cmake(self, text):
        if text.startswith("add_subdirectory"):
            return
        (self.folder / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(Snippet CXX)\n"
            "add_executable(your_program your_program.cpp)\n" + text
        )
        self.run_here("cmake", "-S", ".", "-B", "build", f"-DCMAKE_CXX_COMPILER={COMPILER[0]}",
                      f"-DCMAKE_CXX_FLAGS={' '.join(COMPILER[1:])}")
        self.run_here("cmake", "--build", "build")

    def run_python(self, text):
        self.run_here("/usr/bin/python3", "-W", "error", "-", text=text)

    def run_sh(self, text):
        if text.startswith("./dev"):
            return
        (self.folder / "c++").write_text(f'#!/bin/sh\nexec {shlex.join(COMPILER)} "$@"\n')
        (self.folder / "c++").chmod(0o755)
        self.run_here("sh", "-e", text=text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
