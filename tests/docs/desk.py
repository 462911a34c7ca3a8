"""A folder, a home and a screen for the commands of a page, and the hands that use the windows."""

import os
import pathlib
import shutil
import subprocess
import time
from typing import Callable

TIMEOUT = 30.0
# More than two seconds of a board, and some of a replay.
RECORDED_BYTES, REPLAYED_BYTES = 40_000, 5_000
# The build is done, and so are installations.
DONE = {"cmake": "exit 0", "dpkg-query": "printf installed"}


class Desk:
    def __init__(self, root: pathlib.Path, build: pathlib.Path, work: pathlib.Path) -> None:
        self.project = work / "project"
        self.home = work / "home"
        self.home.mkdir()
        shutil.copytree(root, self.project, symlinks=True, ignore=lambda folder, names:
                        {".git", "build", "out"} & set(names) if folder == str(root) else set())
        (self.project / "build").mkdir()
        for preset in ("dev", "release"):
            (self.project / "build" / preset).symlink_to(build)
        self.write_commands(work / "commands")
        self.install([*root.glob("tools/padscope/*.1"), *root.glob("host/*.1")], work / "man/man1")
        self.install([root / "tools/dissector/padscope.lua"], self.home / ".local/lib/wireshark/plugins")
        programs = [work / "commands", build / "tools/padscope", build / "host"]
        self.environment = {
            **{name: value for name, value in os.environ.items()
               if not name.startswith(("XDG_", "QT_", "WAYLAND")) and name not in ("LANGUAGE", "TZ")},
            "HOME": str(self.home), "LC_ALL": "C.UTF-8", "MANPATH": str(work / "man"), "PAGER": "cat",
            "LD_LIBRARY_PATH": str(build / "simulator"),
            "PATH": ":".join(map(str, programs)) + ":" + os.environ["PATH"],
        }
        self.screen: "subprocess.Popen[str] | None" = None
        self.window: "subprocess.Popen[str] | None" = None
        self.work = work
        # Of the command that ended last.
        self.output = self.errors = work / "none"

    @staticmethod
    def install(files: "list[pathlib.Path]", folder: pathlib.Path) -> None:
        """As the packages do it elsewhere."""
        folder.mkdir(parents=True)
        for file in files:
            shutil.copy(file, folder)

    @staticmethod
    def write_commands(folder: pathlib.Path) -> None:
        folder.mkdir()
        for name, text in DONE.items():
            (folder / name).write_text(f"#!/bin/sh\n{text}\n")
            (folder / name).chmod(0o755)

    def show(self) -> None:
        """Turns the screen on."""
        self.screen = subprocess.Popen(
            ["Xvfb", "-displayfd", "1", "-noreset", "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        assert self.screen.stdout
        self.environment["DISPLAY"] = ":" + self.screen.stdout.readline().strip()

    def close(self) -> None:
        for process in (self.window, self.screen):
            if process and process.poll() is None:
                process.terminate()
                process.wait()

    def start(self, command: str, name: str) -> "subprocess.Popen[str]":
        with open(self.work / f"{name}.output", "w", encoding="utf-8") as output, \
                open(self.work / f"{name}.errors", "w", encoding="utf-8") as errors:
            return subprocess.Popen(["bash", "-c", command], cwd=self.project, env=self.environment,
                                    stdin=subprocess.DEVNULL, stdout=output, stderr=errors, text=True)

    def ended(self, name: str) -> None:
        self.output, self.errors = self.work / f"{name}.output", self.work / f"{name}.errors"

    def run(self, command: str) -> int:
        process = self.start(command, "command")
        self.ended("command")
        try:
            return process.wait(TIMEOUT)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            return -1

    def xdotool(self, *arguments: str) -> "list[str]":
        done = subprocess.run(["xdotool", *arguments], env=self.environment, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return done.stdout.split() if done.returncode == 0 else []

    def wait(self, what: "Callable[[], object]") -> None:
        """Until it is there, or the window's command has ended, which its status tells."""
        end = time.monotonic() + TIMEOUT
        while not what() and self.window.poll() is None:
            if time.monotonic() > end:
                raise TimeoutError
            time.sleep(0.05)

    def open_window(self, command: str) -> None:
        """Starts what opens a window, opens the tool in it, and types a command."""
        for settings in self.settings():
            settings.unlink()
        self.window = self.start(command, "window")
        self.wait(self.find_window)
        for found in self.find_window()[:1]:
            self.xdotool("windowfocus", "--sync", found)
            self.xdotool("key", "ctrl+1")
            self.xdotool("type", "?")
            self.xdotool("key", "Return")
        if " -o " in command and " --on " not in command:
            capture = self.project / command.split(" -o ")[1].split(" ")[0]
            needed = REPLAYED_BYTES if " replay " in command else RECORDED_BYTES
            self.wait(lambda: capture.exists() and capture.stat().st_size > needed)

    def find_window(self) -> "list[str]":
        return self.xdotool("search", "--onlyvisible", "--class", "tendro-host")

    def close_window(self) -> int:
        """Quits the host by its key.
        \return the status; -1 when it does not end, -2 when what was typed has not arrived
        """
        self.xdotool("key", "ctrl+q")
        window, self.window = self.window, None
        self.ended("window")
        try:
            status = window.wait(TIMEOUT)
        except subprocess.TimeoutExpired:
            window.terminate()
            return -1
        # The tool keeps its history there.
        return status or (0 if any("0=?" in file.read_text() for file in self.settings()) else -2)

    def settings(self) -> "list[pathlib.Path]":
        return [*self.home.rglob("qorvexgraph.conf"), *(self.project / "build/demo").rglob("qorvexgraph.conf")]
