"""Has the Khronos validator look at glTF files of many databases, where the machine has what it takes.

The arguments are the folder of the validator, the program that writes the files, the one that writes the
sample database, and a folder for both. What is missing is told, and the exit code is 77; with
VELLOREADER_NO_SKIPS it is 1.
"""

import os
import pathlib
import shutil
import subprocess
import sys


def what_is_missing(validator: pathlib.Path) -> str:
    """A sentence, or an empty text."""
    if shutil.which("node") is None:
        return "There is no node: install the package nodejs."
    if not (validator / "node_modules" / "gltf-validator").is_dir():
        return f"There are no modules for node: run 'npm ci --ignore-scripts' in {validator}."
    return ""


def main() -> None:
    """Exits with 0 if the validator has nothing to say."""
    validator, writer, sampler, folder = map(pathlib.Path, sys.argv[1:5])
    missing = what_is_missing(validator)
    if missing:
        print(missing)
        sys.exit(1 if "VELLOREADER_NO_SKIPS" in os.environ else 77)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    sample = folder / "airfield.flt"
    subprocess.run([sampler, sample], check=True, stdout=subprocess.DEVNULL)
    subprocess.run([writer, folder / "files", sample], check=True)
    done = subprocess.run(["node", "validate.mjs", folder / "files"], cwd=validator, check=False)
    sys.exit(done.returncode)


main()
