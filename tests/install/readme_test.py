"""Follows the README: what its section on installing says is done in a clean clone, line by line.

The arguments are the sources, a folder to work in, and the folder of libraries below a prefix. The folder
then holds the clone, as a part of another project; what was installed without packages, below "home"; and
what the packages hold, below "root".
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import unittest

SOURCE, WORK = map(pathlib.Path, sys.argv[1:3])
LIBRARIES = sys.argv[3]
CLONE, HOME, ROOT = WORK / "project" / "VelloReader", WORK / "home", WORK / "root"
PROGRAMS = {"flt2iv", "flt2gltf", "fltreport", "flttileset", "fltcheck", "fltinfo", "fltshot", "fltview"}
BLOCK = re.compile(r"^```sh\n(.*?)^```$", re.MULTILINE | re.DOTALL)

# Stands for apt-get: the packages go into a place of their own, and their dependencies are held against the
# packages of this machine. Only root can own files as the package wants it. The ldconfig of this machine
# is left alone.
APT_GET = """#!/bin/sh -e
[ "$1" = install ]
shift
if [ "$(id -u)" -ne 0 ]; then
    for package; do dpkg-deb --extract "$package" {root}; done
    exit
fi
[ -e {root}/dpkg ] || cp -a /var/lib/dpkg {root}/dpkg
PATH=$PATH:/usr/sbin:/sbin
exec dpkg --instdir={root} --admindir={root}/dpkg --no-triggers --force-script-chrootless --install "$@"
"""


def files_of_clone():
    """What a clone would hold if all was committed: not what was built."""
    command = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--deduplicate"]
    try:
        listed = subprocess.run(command, cwd=SOURCE, capture_output=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):  # no checkout, but the plain sources
        paths = (path.relative_to(SOURCE) for path in SOURCE.rglob("*") if not path.is_dir())
        return [path for path in paths if path.parts[0] not in ("build", ".git")]
    paths = [pathlib.Path(os.fsdecode(name)) for name in listed.split(b"\0") if name]
    return [path for path in paths if (SOURCE / path).exists()]


def make_clone():
    for path in files_of_clone():
        (CLONE / path).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(SOURCE / path, CLONE / path, follow_symlinks=False)
    shutil.copy(CLONE / "tests/install/subproject/CMakeLists.txt", CLONE.parent)


def lines_about_installing():
    section = (CLONE / "README.md").read_text().split("\n## Install\n")[1].split("\n## ")[0]
    return [line for block in BLOCK.findall(section) for line in block.splitlines()]


def environment():
    chosen = os.environ | {"HOME": str(HOME)}
    if shutil.which("ccache"):
        chosen["CCACHE_DIR"] = run("ccache", "--get-config", "cache_dir").strip()
    return chosen


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)} exits with {done.returncode}:\n{done.stdout}")
    return done.stdout


class ReadmeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(WORK, ignore_errors=True)
        make_clone()
        for folder in (HOME, ROOT, WORK / "bin"):
            folder.mkdir(parents=True)
        stand_ins = {"apt-get": APT_GET.format(root=shlex.quote(str(ROOT))), "ldconfig": "#!/bin/sh\n"}
        for name, script in stand_ins.items():
            (WORK / "bin" / name).write_text(script)
            (WORK / "bin" / name).chmod(0o755)
        cls.lines = lines_about_installing()
        for line in cls.lines:
            chosen = environment()
            if line.startswith("apt-get"):
                chosen["PATH"] = f"{WORK / 'bin'}:{chosen['PATH']}"
            run("bash", "-ec", line, cwd=CLONE, env=chosen)

    def test_the_section_names_every_way(self):
        commands = [" ".join(line.split()[:2]) for line in self.lines]
        ways = ["./dev build", "cmake --install", "./dev package", "apt-get install", "apt-get install"]
        self.assertEqual(commands, ways)

    def check_programs(self, prefix, man_ending, settings):
        self.assertEqual({path.name for path in (prefix / "bin").iterdir()}, PROGRAMS)
        pages = {path.name for path in (prefix / "share/man/man1").iterdir()}
        self.assertEqual(pages, {f"{name}.1{man_ending}" for name in PROGRAMS})
        for name in PROGRAMS:
            told = run(str(prefix / "bin" / name), "--version", env=os.environ | settings)
            self.assertTrue(told.startswith(f"{name} "), told)
        sample = WORK / "sample.flt"
        run(str(CLONE / "build/release/bin/make_sample"), "--force", str(sample))
        scene = run(str(prefix / "bin/flt2iv"), "-q", str(sample), env=os.environ | settings)
        self.assertTrue(scene.startswith("#Inventor"), scene[:200])

    def test_what_was_installed_without_packages_runs(self):
        self.check_programs(HOME / ".local", "", {})

    def test_what_both_packages_hold_runs(self):
        self.check_programs(ROOT / "usr", ".gz", {"LD_LIBRARY_PATH": str(ROOT / "usr" / LIBRARIES)})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
