"""fltview in a window, for tests that read what it prints, press its keys and click into it."""

from __future__ import annotations

import os
import queue
import subprocess
import threading
import time

PATIENCE = float(os.environ.get("PATIENCE", "120"))  # seconds, on a busy machine under a sanitizer


class Window:
    """fltview, running."""

    def __init__(self, program: str, folder: str, *arguments: str, remembers: bool = False) -> None:
        """@param remembers whether it has the size and the docks of the last time"""
        command = [program, "--print", "--print-widgets", *arguments]
        if "--size" not in arguments and not remembers:
            command += ["--size", "1280x800"]
        self.process = subprocess.Popen(command, text=True, stdout=subprocess.PIPE, cwd=folder)
        self.lines: queue.Queue[str] = queue.Queue()
        self.widgets: dict[str, list[int]] = {}
        self.seen: list[str] = []
        threading.Thread(target=self.read, daemon=True).start()

    def read(self) -> None:
        assert self.process.stdout
        for line in self.process.stdout:
            self.lines.put(line.rstrip("\n"))

    def next_line(self, beginning: str) -> str:
        """Waits for a line that begins so, and takes in what comes before it."""
        end = time.monotonic() + PATIENCE
        while True:
            try:
                line = self.lines.get(timeout=max(end - time.monotonic(), 0.01))
            except queue.Empty:
                raise AssertionError(f"no line '{beginning}' after {self.seen[-8:]}") from None
            self.seen.append(line)
            if line.startswith("widget "):
                name, place = line[len("widget "):].split("\t")
                self.widgets[name] = [int(number) for number in place.split()]
            if line.startswith(beginning):
                return line

    def forget(self) -> None:
        while not self.lines.empty():
            self.seen.append(self.lines.get())

    def box(self) -> list[float]:
        return [float(number) for number in self.next_line("box ").split()[1:]]

    def keys(self, *names: str) -> None:
        subprocess.run(["xdotool", "key", "--delay", "60", *names], check=True)

    def type(self, text: str) -> None:
        subprocess.run(["xdotool", "type", "--delay", "30", text], check=True)

    def click(self, x: float, y: float, times: int = 1) -> None:
        subprocess.run(["xdotool", "mousemove", str(int(x)), str(int(y)), "click", "--repeat", str(times),
                        "--delay", "60", "1"], check=True)

    def click_widget(self, name: str, x: float = 0.5, y: float = 0.5) -> None:
        left, top, width, height = self.widgets[name]
        self.click(left + x * width, top + y * height)

    def search(self, name: str) -> str:
        """Selects by name, and waits until the window stands still. @return what was selected"""
        self.forget()
        self.keys("ctrl+f")
        self.type(name)
        self.keys("Return")
        line = self.next_line("selected ")
        self.next_line("widgets end")
        return line

    def close(self) -> int:
        self.keys("ctrl+q")
        try:
            return self.process.wait(PATIENCE)
        finally:
            self.process.kill()


def on_window(name: str, *command: str, by: str = "--name") -> str:
    """Does something to a window as soon as it is there, and does it again while windows come and go below
    it, which the search doesn't bear. @return what the command prints, or the window's number
    """
    end = time.monotonic() + PATIENCE
    while True:
        run = subprocess.run(["xdotool", "search", "--onlyvisible", by, name, *command], text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if run.returncode == 0:
            return run.stdout
        assert time.monotonic() < end, f"no window is named {name}"
        time.sleep(0.2)


def focus(title: str) -> None:
    """Gives the keyboard to a window, as no window manager does it here."""
    on_window(title, "windowfocus", "--sync")


def drag_to_the_window(name: str) -> None:
    """Draws what drag_source offers at the right over a window at the left, and drops it there."""
    on_window(name)
    on_window("drag_source", by="--class")
    steps = ["mousemove", "1150", "150", "mousedown", "1"]
    for x in range(1140, 400, -60):
        steps += ["mousemove", str(x), "300", "sleep", "0.05"]
    subprocess.run(["xdotool", *steps, "sleep", "0.5", "mouseup", "1"], check=True)
