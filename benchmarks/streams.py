"""Row f: rows that come at a rate, beside CuteCom with the same texts as lines. Tool and X server together."""

import array
import fcntl
import json
import os
import pathlib
import pty
import statistics
import subprocess
import sys
import termios
import time
import tty

from sessions import command, environment
from xserver import used, x_server

WINDOW = ("800", "684")


def row_text(number):
    """The row that the monitor shows for the report with this number."""
    report = b"\x10\x21" + str(number).rjust(14, ".").encode()
    digits = "".join(f"{byte:02x} " + (" " if index == 8 else "") for index, byte in enumerate(report))
    return ".!" + report[2:].decode() + "   " + digits


def takes_reports(build, kind, rate, seconds):
    with x_server() as server, environment(build, 1, QT_QPA_PLATFORM="xcb", DISPLAY=server["display"]) as env:
        tool = subprocess.Popen(command(build, kind, "--rate", rate, "--seconds", seconds), env=env,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        counted = json.loads(tool.stdout.read())
        own = used(tool)
    return own + server["seconds"], counted["rows"]


def unread(terminal):
    count = array.array("i", [0])
    fcntl.ioctl(terminal, termios.FIONREAD, count)
    return count[0]


def write_lines(terminal, rate, count):
    start = time.monotonic()
    for number in range(count):
        time.sleep(max(0, start + number / rate - time.monotonic()))
        os.write(terminal, (row_text(number) + "\n").encode())


def cutecom_shows_lines(build, rate, seconds):
    master, slave = pty.openpty()
    tty.setraw(slave)
    with x_server() as server, environment(build, 0, QT_QPA_PLATFORM="xcb", DISPLAY=server["display"]) as env:
        settings = pathlib.Path(env["HOME"], ".config", "CuteCom", "CuteCom5.conf")
        settings.parent.mkdir(parents=True)
        settings.write_text("[sessions]\n1\\BaudRate=115200\n1\\DataBits=8\n1\\FlowControl=0\n1\\OpenMode=3\n"
                            "1\\Parity=0\n1\\StopBits=1\n1\\name=Default\nsize=1\n"
                            f"1\\Device={os.ttyname(slave)}\n")
        env["XDG_CONFIG_HOME"] = str(settings.parent.parent)
        env["LD_PRELOAD"] = str(build.resolve() / "benchmarks" / "sessions" / "libserialsignals.so")
        cutecom = subprocess.Popen(["cutecom"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        window = subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "CuteCom"], env=env,
                                check=True, capture_output=True, text=True).stdout.split()[0]
        subprocess.run(["xdotool", "windowsize", "--sync", window, *WINDOW], env=env, check=True)
        subprocess.run(["xdotool", "mousemove", "50", "43", "click", "1"], env=env, check=True)
        time.sleep(1)
        write_lines(master, rate, rate * seconds)
        time.sleep(0.5)
        if unread(slave) or not opened(cutecom.pid, os.ttyname(slave)):
            sys.exit("CuteCom has not read what it was sent")
        cutecom.terminate()
        own = used(cutecom)
    os.close(master)
    os.close(slave)
    return own + server["seconds"], rate * seconds


def opened(pid, path):
    """Whether a process has a file open."""
    return any(os.path.realpath(entry) == path for entry in pathlib.Path("/proc", str(pid), "fd").iterdir())


def stream_pairs(build, rate, seconds, pairs):
    """Row f, interleaved: what the tool and a bare window cost beside CuteCom, and the rows of either side."""
    ratios = {"stream": [], "wake": []}
    for _ in range(pairs):
        counted = {kind: takes_reports(build, kind, rate, seconds) for kind in ratios}
        peer, lines = cutecom_shows_lines(build, rate, seconds)
        for kind, (used_by, rows) in counted.items():
            ratios[kind].append(used_by / peer)
            if rows != lines:
                sys.exit(f"{kind}: {rows} of {lines} reports")
    return ratios, lines


def measure(build, smoke):
    """Lines of the document."""
    ratios, lines = stream_pairs(build, 1000, 1 if smoke else 20, 1 if smoke else 3)
    each = ", ".join(f"{ratio:.2f}" for ratio in ratios["stream"])
    return [f"| f | 1,000 rows a second: processor time of tool and X server, as a multiple of CuteCom's, in "
            f"{len(ratios['stream'])} pairs of runs with {lines:,} rows on either side | {each} | none |",
            f"| f | the same for a bare window that takes one queued call a report and shows nothing | "
            f"{statistics.median(ratios['wake']):.2f} | none |"]
