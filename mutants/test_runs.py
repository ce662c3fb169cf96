"""Runs the tests of a build, without a change or with one."""

from __future__ import annotations

import dataclasses
import json
import os
import pathlib
import re
import signal
import subprocess
import threading
import time
from collections.abc import Callable, Iterable, Iterator

# Whatever a change does, it mustn't take all memory, fill the disk or spend its time on core files.
LIMITS = ("prlimit", "--core=0", "--as=16000000000", "--fsize=8000000000")


@dataclasses.dataclass
class Test:
    """A test as ctest knows it, and how it goes without a change."""

    name: str
    command: list[str]
    folder: str
    environment: dict[str, str]
    seconds: float = 0
    reached: frozenset[int] = frozenset()  # the places that it comes by

    def matches(self, file: str) -> bool:
        """Whether its name says that it is about a source."""
        about = re.sub(r"Test$", "", self.name.split(".")[0].split("/")[-1]).lower()
        stem = pathlib.PurePath(file).stem.lower()
        return about in stem or stem in about


def tests_of(build: pathlib.Path, labels: list[str]) -> list[Test]:
    """The tests with one of some labels."""
    command = ["ctest", "--test-dir", str(build), "--show-only=json-v1", "-L", f"^({'|'.join(labels)})$"]
    result = subprocess.run(command, capture_output=True, text=True, check=True)
    tests = []
    for entry in json.loads(result.stdout)["tests"]:
        properties = {one["name"]: one["value"] for one in entry["properties"]}
        environment = dict(setting.split("=", 1) for setting in properties.get("ENVIRONMENT", []))
        tests.append(Test(entry["name"], entry["command"], properties["WORKING_DIRECTORY"], environment))
    return tests


class TestRuns:
    """Runs tests, so many at a time, but none twice at a time."""

    def __init__(self, scratch: pathlib.Path, jobs: int) -> None:
        self.scratch = scratch
        self.jobs = jobs
        scratch.mkdir(parents=True, exist_ok=True)

    def run(self, test: Test, settings: dict[str, str], limit: float, stop: threading.Event) -> bool | None:
        """@return whether the test passed; None if it was stopped"""
        environment = {**os.environ, "TMPDIR": str(self.scratch), "GTEST_FAIL_FAST": "1", **test.environment,
                       **settings}
        nothing = subprocess.DEVNULL
        with subprocess.Popen([*LIMITS, *test.command], cwd=test.folder, env=environment, stdin=nothing,
                              stdout=nothing, stderr=nothing, start_new_session=True) as process:
            end = time.monotonic() + limit
            while True:
                try:
                    return process.wait(0.02) == 0
                except subprocess.TimeoutExpired:
                    if stop.is_set() or time.monotonic() > end:
                        os.killpg(process.pid, signal.SIGKILL)
                        process.wait()
                        return None if stop.is_set() else False

    def measure(self, tests: list[Test], places: int) -> list[str]:
        """Runs each without a change, and notes how long it takes and by which places it comes.
        @return those that fail"""
        failed = []
        never = threading.Event()

        def measure_one(test: Test) -> bool:
            map_file = self.scratch / f"reached-{threading.get_ident()}"
            map_file.write_bytes(bytes(places))
            begin = time.monotonic()
            if not self.run(test, {"VELLOREADER_MUTANTS_REACHED": str(map_file)}, 900, never):
                failed.append(test.name)
            test.seconds = time.monotonic() - begin
            test.reached = frozenset(i for i, byte in enumerate(map_file.read_bytes()) if byte)
            return False

        self.each(tests, measure_one)
        return failed

    def first_to_notice(self, tests: Iterable[Test], number: int | None) -> str | None:
        """Runs tests with a change until one fails.
        @param number the change to switch on, or None where it is made for good
        @return the name of that test"""
        settings = {"VELLOREADER_MUTANT": str(number)} if number is not None else {}
        stop = threading.Event()
        noticed = []

        def try_one(test: Test) -> bool:
            # A machine that does other things as well mustn't make a hang of a run.
            if self.run(test, settings, 20 + 8 * test.seconds, stop) is False:
                noticed.append(test.name)
                stop.set()
            return stop.is_set()

        self.each(tests, try_one)
        return noticed[0] if noticed else None

    def each(self, tests: Iterable[Test], act: Callable[[Test], bool]) -> None:
        """Does something with each test, until it says that this is enough."""
        waiting: Iterator[Test] = iter(list(tests))
        lock = threading.Lock()

        def work() -> None:
            while True:
                with lock:
                    test = next(waiting, None)
                if test is None or act(test):
                    return

        threads = [threading.Thread(target=work) for _ in range(self.jobs)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
