"""Tests of loads in several threads, which are switched at each chance."""

import subprocess
import sys
import threading
import unittest

import velloreader
from pivy import coin
from support import NAMES, SceneTest, name_of, path_of

LOADS = 100


class ThreadsTest(SceneTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(sys.setswitchinterval, sys.getswitchinterval())
        sys.setswitchinterval(1e-6)

    def run_threads(self, *works):
        """Runs functions in threads of their own, each with a database of its own; raises what they raise."""
        failures = []

        def run(work, name):
            try:
                for _ in range(LOADS):
                    work(name)
            except BaseException as problem:
                failures.append(problem)

        threads = [threading.Thread(target=run, args=pair) for pair in zip(works, NAMES)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if failures:
            raise failures[0]

    def load(self, name):
        self.assertEqual(name_of(velloreader.load(path_of(name))), name)

    def load_watched(self, name):
        calls = []
        root = velloreader.load(path_of(name), progress=lambda *call: calls.append(call))
        self.assertEqual(name_of(root), name)
        self.assertEqual({call[0] for call in calls}, {str(path_of(name))})

    def read_records(self, name):
        records = velloreader.Database(path_of(name)).records()
        self.assertEqual([next(records)["opcode"] for _ in range(2)], [1, 10])
        self.assertEqual(next(records)["fields"]["idASCII"], name)

    def make_scene_of_plain_data(self, name):
        database = velloreader.Database(path_of(name))
        self.assertEqual(list(database.meshes()), [])
        self.assertEqual(name_of(database.scene), name)

    def read_by_the_toolkit(self, name):
        source = coin.SoInput()
        self.assertTrue(source.openFile(str(path_of(name))))
        root = coin.SoDB.readAll(source)
        root.ref()
        self.assertEqual(root.getNumChildren(), 1)
        root.unref()

    def test_each_thread_gets_its_own_scene(self):
        self.run_threads(self.load, self.load, self.load, self.load)

    def test_threads_with_a_progress_function_do_not_wait_for_ever(self):
        self.run_threads(self.load_watched, self.load_watched, self.load_watched)

    def test_threads_with_and_without_a_progress_function_share_the_loader(self):
        self.run_threads(self.load, self.load_watched, self.load, self.load_watched)

    def test_records_are_read_beside_loads(self):
        self.run_threads(self.read_records, self.load_watched, self.read_records, self.load)

    def test_scenes_are_made_of_plain_data_beside_loads(self):
        self.run_threads(self.make_scene_of_plain_data, self.load_watched, self.make_scene_of_plain_data)

    def test_the_toolkit_reads_a_database_when_the_load_of_another_thread_is_over(self):
        self.run_threads(self.read_by_the_toolkit, self.load_watched)

    def test_a_reader_of_records_may_be_closed_by_another_thread(self):
        for name in NAMES:
            records = velloreader.Database(path_of(name)).records()
            next(records)
            thread = threading.Thread(target=records.close)
            thread.start()
            thread.join()
            self.assertEqual(list(records), [])


class EndTest(unittest.TestCase):
    def test_a_program_may_end_while_a_thread_loads(self):
        program = (
            "import sys, threading, velloreader\n"
            "sys.setswitchinterval(1e-6)\n"
            "begun = threading.Event()\n"
            "def work():\n"
            "    while True:\n"
            f"        velloreader.load({str(path_of('alpha'))!r}, progress=lambda *call: begun.set())\n"
            "threading.Thread(target=work, daemon=True).start()\n"
            "begun.wait()\n"
        )
        for _ in range(8):
            run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
            self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def test_a_program_may_end_with_a_scene_in_its_hands(self):
        program = f"import velloreader\nroot = velloreader.load({str(path_of('alpha'))!r})\n"
        run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))


if __name__ == "__main__":
    unittest.main()
