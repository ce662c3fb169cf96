"""Tests of what progress functions may do."""

import unittest
from unittest import mock

import velloreader
from support import SceneTest, name_of, path_of, scenes_alive


class ProgressTest(SceneTest):
    def load(self, progress):
        return velloreader.load(path_of("alpha"), progress=progress)

    def test_may_load_other_databases(self):
        inner = []

        def load_another(*_):
            inner.append(velloreader.load(path_of("bravo"), progress=lambda *_: None))

        root = self.load(load_another)
        self.assertEqual(name_of(root), "alpha")
        self.assertGreater(len(inner), 1)
        self.assertEqual({name_of(scene) for scene in inner}, {"bravo"})
        self.assertEqual(scenes_alive(), 1 + len(inner))

    def test_ends_the_load_with_what_it_raises(self):
        for problem in (KeyError("a"), KeyboardInterrupt("b"), SystemExit("c"), MemoryError("d")):
            with self.assertRaises(type(problem)) as raised:
                self.load(mock.Mock(side_effect=problem))
            self.assertIs(raised.exception, problem)
            self.assertEqual(scenes_alive(), 0)

    def test_is_not_called_again_once_it_has_raised(self):
        progress = mock.Mock(side_effect=ValueError)
        with self.assertRaises(ValueError):
            self.load(progress)
        progress.assert_called_once()

    def test_raises_through_a_load_within_it(self):
        def load_and_raise(*_):
            self.load(lambda *_: {}["within"])

        with self.assertRaisesRegex(KeyError, "within"):
            self.load(load_and_raise)

    def test_cancels_by_false_alone(self):
        with self.assertRaises(velloreader.LoadCancelled):
            self.load(lambda *_: False)
        for answer in (None, 0, "", True):
            self.assertEqual(name_of(self.load(lambda *_: answer)), "alpha")

    def test_may_cancel_within_the_progress_of_another_load(self):
        cancelled = []

        def load_and_cancel(*_):
            try:
                self.load(lambda *_: False)
            except velloreader.LoadCancelled as problem:
                cancelled.append(str(problem))

        self.assertEqual(name_of(self.load(load_and_cancel)), "alpha")
        self.assertGreater(len(cancelled), 1)

    def test_that_cannot_be_called_is_a_type_error(self):
        with self.assertRaises(TypeError):
            self.load(5)
        with self.assertRaises(TypeError):
            self.load(lambda: True)


if __name__ == "__main__":
    unittest.main()
