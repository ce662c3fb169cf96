"""Tests of exceptions that come between any two steps of a load: from signals, and for lack of memory."""

import contextlib
import json
import os
import pathlib
import random
import signal
import sys
import tempfile
import unittest
from unittest import mock

import velloreader
from pivy import coin
from support import NAMES, SceneTest, memory_in_use, name_of, path_of, scenes_alive


class Interruption(Exception):
    """What a handler of a signal, or a test, raises somewhere."""


def interrupt(*_):
    raise Interruption


class StepsTest(SceneTest):
    """An exception before each step that Python makes during a call, one step after another."""

    def interrupt_each_step_of(self, function):
        """Calls a function again and again with an exception one step later, until there are no more."""
        interruptions = 0
        while True:
            steps_left = interruptions

            def trace(frame, event, _):
                nonlocal steps_left
                frame.f_trace_opcodes = True
                if event == "opcode":
                    if steps_left == 0:
                        raise Interruption
                    steps_left -= 1
                return trace

            before = sys.gettrace()
            sys.settrace(trace)
            try:
                function()
                return interruptions
            except Interruption:
                interruptions += 1
            finally:
                sys.settrace(before)
            self.assertEqual(scenes_alive(), 0)

    def test_leaves_no_scene_of_a_load(self):
        steps = self.interrupt_each_step_of(lambda: velloreader.load(path_of("alpha")))
        self.assertGreater(steps, 100)

    def test_leaves_no_scene_of_a_watched_load(self):
        def watch(*_):
            return True

        steps = self.interrupt_each_step_of(lambda: velloreader.load(path_of("alpha"), progress=watch))
        self.assertGreater(steps, 100)

    def test_leaves_no_scene_that_is_made_when_it_is_asked_for(self):
        steps = self.interrupt_each_step_of(lambda: velloreader.Database(path_of("alpha")).scene)
        self.assertGreater(steps, 100)

    def test_leaves_no_plain_data(self):
        for _ in range(2):
            before = memory_in_use()
            self.interrupt_each_step_of(lambda: list(velloreader.Database(path_of("alpha")).meshes()))
        self.assertLess(memory_in_use() - before, 100 * os.path.getsize(path_of("alpha")))

    def test_leaves_no_reader_of_records(self):
        database = velloreader.Database(path_of("long"))
        for _ in range(2):
            before = memory_in_use()
            self.interrupt_each_step_of(lambda: next(database.records()))
        self.assertLess(memory_in_use() - before, os.path.getsize(path_of("long")) // 2)


class FirstStepTest(SceneTest):
    def test_an_exception_before_the_first_step_of_a_progress_function_ends_the_load(self):
        def trace(frame, event, _):
            within, _, name = frame.f_code.co_qualname.rpartition(".")
            if within == "Database.__init__.<locals>" and name.isidentifier():
                raise Interruption

        self.addCleanup(sys.settrace, sys.gettrace())
        sys.settrace(trace)
        with self.assertRaises(Interruption):
            velloreader.load(path_of("alpha"), progress=lambda *_: True)


class TimerTest(SceneTest):
    def test_the_next_load_has_its_own_scene_after_a_handler_has_raised(self):
        self.addCleanup(signal.signal, signal.SIGALRM, signal.signal(signal.SIGALRM, interrupt))
        chance = random.Random(1)
        interruptions = 0
        for turn in range(1200):
            name = NAMES[turn % len(NAMES)]
            progress = (None, lambda *call: True)[turn % 2]
            try:
                signal.setitimer(signal.ITIMER_REAL, chance.uniform(1e-6, 1e-3))
                self.assertEqual(name_of(velloreader.load(path_of(name), progress=progress)), name)
                signal.setitimer(signal.ITIMER_REAL, 0)
            except Interruption:
                interruptions += 1
            self.assertEqual(scenes_alive(), 0)
        self.assertGreater(interruptions, 0)


class SignalTest(SceneTest):
    def test_the_exception_of_a_handler_ends_a_load_before_its_time(self):
        self.addCleanup(signal.signal, signal.SIGALRM, signal.signal(signal.SIGALRM, interrupt))
        with tempfile.TemporaryDirectory() as folder:
            log = pathlib.Path(folder, "long.log")
            for turn in range(200):
                with contextlib.suppress(Interruption):
                    signal.setitimer(signal.ITIMER_REAL, 1e-3 * (turn % 20 + 1))
                    velloreader.load(path_of("long"), exact=True, log=log)
                    signal.setitimer(signal.ITIMER_REAL, 0)
                    continue
                if log.exists() and "end of parsing" not in log.read_text():
                    return
        self.fail("each load went on to its end")


class MemoryTest(SceneTest):
    def test_a_lack_of_memory_when_the_content_is_read_leaves_no_scene(self):
        with mock.patch.object(json, "loads", side_effect=MemoryError):
            with self.assertRaises(MemoryError):
                velloreader.load(path_of("alpha"))
            self.assertEqual(scenes_alive(), 0)

    def test_a_lack_of_memory_when_the_scene_is_handed_over_leaves_no_scene(self):
        for step in ("__init__", "getChild"):
            with mock.patch.object(coin.SoGroup, step, side_effect=MemoryError):
                with self.assertRaises(MemoryError):
                    velloreader.load(path_of("alpha"))
            self.assertEqual(scenes_alive(), 0)


if __name__ == "__main__":
    unittest.main()
