"""Sessions of the tool in a process of its own, and of its peers; processor times are the kernel's accounts."""

import array
import contextlib
import fcntl
import json
import os
import pathlib
import pty
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import termios
import time
import tty

WINDOW = ("800", "684")


def used(process):
    """Waits for a process; seconds of processor time that it has used."""
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return usage.ru_utime + usage.ru_stime


def command(build, kind, *options):
    return [build / "benchmarks" / "padscope_session", kind, *(str(option) for option in options)]


@contextlib.contextmanager
def environment(build, boards, **more):
    """Where the tool finds so many boards, and a home folder of its own."""
    with tempfile.TemporaryDirectory() as folder:
        scenario = pathlib.Path(folder, "boards.json")
        # Without a text before them, reports of this kind are dropped: only what a session sends is shown.
        quiet = {"rate": 1, "lines": False, "unknowns": False, "kinds": {"signal-1": 1}}
        boards = [{"id": 1 + index, **quiet} for index in range(boards)]
        scenario.write_text(json.dumps({"title": "Boards", "boards": boards}))
        yield {**os.environ, "LD_LIBRARY_PATH": str(build / "simulator"), "ORVEXSIM_SCENARIO": str(scenario),
               "HOME": folder, "XDG_RUNTIME_DIR": folder, "QT_QPA_PLATFORM": "offscreen", **more}


def session(build, kind, *options, boards=1):
    """What a session offscreen has counted and measured."""
    with environment(build, boards) as env:
        run = subprocess.run(command(build, kind, *options), env=env, check=True, stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL)
    return json.loads(run.stdout)


@contextlib.contextmanager
def x_server():
    """An X server of its own, and a dictionary that gets its processor time when it has ended."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with open(reading, encoding="ascii") as told:
        account = {"display": ":" + told.readline().strip()}
    try:
        yield account
    finally:
        server.send_signal(signal.SIGTERM)
        account["seconds"] = used(server)


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
        env["LD_PRELOAD"] = str(build / "benchmarks" / "libserialsignals.so")
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


def idle_pairs(build, seconds, pairs):
    """Row h: wake-ups of the GUI's thread in the tool's two tabs and in a bare window."""
    shown = ("rows", "bars", "bare")
    counts = {which: [] for which in shown}
    for _ in range(pairs):
        for which in shown:
            result = session(build, "idle", "--show", which, "--seconds", seconds)
            if not result["focused"]:
                sys.exit(f"{which}: the line edit was not focused, and has no cursor that blinks")
            counts[which].append(result["wakeups"])
    return counts


def sessions(build, smoke):
    """Lines of the document for the rows f, g, h and j."""
    for program in ("cutecom", "Xvfb", "xdotool"):
        if not shutil.which(program):
            sys.exit(f"{program} is missing; packaging/install-packages installs it")
    return [*stream_lines(build, smoke), *flood_lines(build, smoke), *idle_lines(build, smoke),
            *growth_lines(build, smoke)]


def stream_lines(build, smoke):
    ratios, lines = stream_pairs(build, 1000, 2 if smoke else 20, 1 if smoke else 3)
    each = ", ".join(f"{ratio:.2f}" for ratio in ratios["stream"])
    return [f"- **f**: At 1,000 rows a second tool and X server together take "
            f"**{statistics.median(ratios['stream']):.2f}** times CuteCom's processor time. The pairs of runs "
            f"gave {each}, each with {lines:,} rows on either side. A bare window that takes one queued call a report, "
            f"and shows nothing, takes {statistics.median(ratios['wake']):.2f} times CuteCom's."]


def flood_lines(build, smoke):
    reports = 20000 if smoke else 1000000
    result = session(build, "flood", "--reports", reports, boards=4)
    first, second = result["first"], result["second"]
    for flood in (first, second):
        if flood["rows"] != reports or flood["outOfOrder"]:
            sys.exit(f"{flood['rows']} rows of {reports}, {flood['outOfOrder']} out of order")
    longest = max(first, second, key=lambda flood: flood["deafMs"])
    whole = longest["rowsMeanwhile"] * longest["secondsPerRow"] * 1000
    grown = (second["heapBytes"] - first["heapBytes"]) / 1048576
    clicks = session(build, "clicks", "--rate", 5000, "--seconds", 2 if smoke else 30)
    return [f"- **g**: Of {reports:,} reports from four threads, sent twice, none is lost, and none leaves its thread's "
            f"order. The heap in use changes by {grown:+.3f} MiB from the first time to the second (bound 1 MiB). The "
            f"longest time without an event handled is {longest['deafMs'] / whole if whole else 0:.2f} times what the "
            f"{longest['rowsMeanwhile']:,} rows shown in it cost on average.",
            f"- **g**: At 5,000 reports a second the slowest of {clicks['clicks']} clicks is answered after "
            f"{clicks['longest']:.1f} ms (bound 100 ms), the median after {clicks['median']:.1f} ms. "
            f"{clicks['rows']:,} rows are shown meanwhile."]


def idle_lines(build, smoke):
    counts = idle_pairs(build, 3 if smoke else 20, 1 if smoke else 3)
    middle = {which: statistics.median(values) for which, values in counts.items()}
    each = "; ".join(f"{name} {', '.join(map(str, counts[which]))}"
                     for which, name in (("rows", "Monitor"), ("bars", "Bar Graph"), ("bare", "bare window")))
    return [f"- **h**: While nothing arrives the tool's thread wakes up as often as that of a bare window with a focused "
            f"line edit, but for {middle['rows'] - middle['bare']:+g} in the Monitor and "
            f"{middle['bars'] - middle['bare']:+g} in the Bar Graph (bound 0). Counts of the runs: {each}."]


def growth_lines(build, smoke):
    rows = session(build, "rows", "--reports", 10000 if smoke else 1000000)
    base = rows["10000"]
    told = ", ".join(f"{cost / base:.2f} up to row {int(count):,}"
                     for count, cost in sorted(rows.items(), key=lambda item: int(item[0])))
    reports = 2000 if smoke else 20000
    cost = lambda boards, attaches: statistics.median(
        session(build, "attaches", "--attaches", attaches, "--reports", reports, boards=boards)["seconds"]
        for _ in range(1 if smoke else 5))
    one = cost(1, 1)
    boards = ", ".join(f"{cost(count, 1) / one:.2f} with {count}" for count in (4, 16, 32))
    attaches = ", ".join(f"{cost(1, count) / one:.2f} after {count:,}" for count in ((10,) if smoke else (10, 100, 1000)))
    return [f"- **j**: Cost of a report as a multiple of that up to row 10,000: {told}.",
            f"- **j**: Cost of a report as a multiple of that with one board: {boards}.",
            f"- **j**: Cost of a report as a multiple of that after one attach: {attaches}. Each attach adds a "
            f"connection, by design, so each report makes one more call that finds the queue empty."]
