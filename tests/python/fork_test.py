"""Tests of loads in processes that fork."""

import threading
import unittest

import velloreader
from support import SceneTest, name_of, path_of, status_of_child


def loads(name, **options):
    return name_of(velloreader.load(path_of(name), **options)) == name


class ForkTest(SceneTest):
    def test_a_child_loads_before_its_parent_does(self):
        self.assertEqual(status_of_child(lambda: loads("alpha")), 0)
        self.assertTrue(loads("bravo"))

    def test_a_child_loads_after_its_parent_and_keeps_the_scenes_of_both(self):
        root = velloreader.load(path_of("alpha"))
        self.assertEqual(status_of_child(lambda: loads("bravo") and name_of(root) == "alpha"), 0)
        self.assertEqual(name_of(root), "alpha")

    def test_a_child_loads_where_another_thread_of_its_parent_is_within_a_load(self):
        is_within, may_go_on = threading.Event(), threading.Event()

        def wait(*_):
            is_within.set()
            may_go_on.wait()

        thread = threading.Thread(target=lambda: loads("alpha", progress=wait))
        thread.start()
        is_within.wait()
        try:
            self.assertEqual(status_of_child(lambda: loads("bravo")), 0)
            self.assertEqual(status_of_child(lambda: loads("bravo", progress=lambda *_: True)), 0)
        finally:
            may_go_on.set()
            thread.join()

    def test_a_child_that_is_made_within_a_load_loads_and_ends_that_load(self):
        statuses = []

        def fork(*_):
            if not statuses:
                statuses.append(status_of_child(lambda: loads("bravo")))

        self.assertTrue(loads("alpha", progress=fork))
        self.assertEqual(statuses, [0])


if __name__ == "__main__":
    unittest.main()
