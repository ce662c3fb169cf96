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


def focus(title: str) -> None:
    """Gives the keyboard to a window, as no window manager does it here."""
    end = time.monotonic() + PATIENCE
    while subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title, "windowfocus", "--sync"],
                         stderr=subprocess.DEVNULL).returncode != 0:
        assert time.monotonic() < end, f"no window is named {title}"
        time.sleep(0.2)
