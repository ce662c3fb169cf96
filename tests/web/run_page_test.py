"""Runs a test of the page for browsers, where the machine has what it takes.

The arguments are the folder of the page's sources, the test's name in its folder "test", and values for the
environment, NAME=VALUE each. What is missing is told, and the exit code is 77; with VELLOREADER_NO_SKIPS it
is 1.
"""

import os
import pathlib
import shutil
import sys


def what_is_missing(page: pathlib.Path) -> str:
    """A sentence, or an empty text."""
    if shutil.which("node") is None:
        return "There is no node: install the package nodejs."
    if not (page / "node_modules" / "playwright-core").is_dir():
        return f"There are no modules for node: run 'npm ci --ignore-scripts' in {page}."
    if shutil.which("chromium") is None:
        return "There is no browser: install the package chromium."
    return ""


def main() -> None:
    """Becomes node."""
    page, test = pathlib.Path(sys.argv[1]), sys.argv[2]
    missing = what_is_missing(page)
    if missing:
        print(missing)
        sys.exit(1 if "VELLOREADER_NO_SKIPS" in os.environ else 77)
    for setting in sys.argv[3:]:
        name, value = setting.split("=", 1)
        os.environ[name] = value
    os.chdir(page)
    os.execvp("node", ["node", f"test/{test}"])


main()
