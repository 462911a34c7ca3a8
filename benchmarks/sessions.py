"""Rows g, h and j: sessions of the tool in a process of its own, offscreen."""

import contextlib
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile


def command(build, kind, *options):
    return [build / "benchmarks" / "sessions" / "padscope_session", kind, *(str(option) for option in options)]


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


def marked(value, bound, text):
    return f"**{text}**" if value > bound else text


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
    seconds = 1 if smoke else 30
    clicks = session(build, "clicks", "--rate", 5000, "--seconds", seconds)
    slowest = marked(clicks["longest"], 100, f"{clicks['longest']:.1f} ms")
    return [f"| g | {reports:,} reports from four threads, sent twice: lost, and out of their thread's order | 0 and 0 | 0 |",
            f"| g | heap in use, from the first {reports:,} to the second | {marked(grown, 1, f'{grown:.3f} MiB')} | 1 MiB |",
            f"| g | longest time without an event handled, as a multiple of the cost of the {longest['rowsMeanwhile']:,} rows "
            f"shown in it | {longest['deafMs'] / whole if whole else 0:.2f} | none |",
            f"| g | {clicks['clicks']} clicks during 5,000 reports a second, {clicks['rows']:,} rows: slowest, median | "
            f"{slowest}, {clicks['median']:.1f} ms | 100 ms |"]


def idle_lines(build, smoke):
    counts = idle_pairs(build, 1 if smoke else 20, 1 if smoke else 3)
    shown = " and ".join(f"{rows}, {bars}, {bare}" for rows, bars, bare in zip(*counts.values()))
    return [f"| h | wake-ups of the GUI thread while nothing arrives: Monitor, Bar Graph, a bare window with a focused line "
            f"edit, in each of {len(counts['rows'])} runs | {shown} | the bare window's |"]


def growth_lines(build, smoke):
    rows = session(build, "rows", "--reports", 10000 if smoke else 1000000)
    base = rows["10000"]
    upto = {int(count): cost / base for count, cost in rows.items() if count != "10000"}
    reports = 1000 if smoke else 20000

    def cost(boards, attaches):
        return statistics.median(
            session(build, "attaches", "--attaches", attaches, "--reports", reports, boards=boards)["seconds"]
            for _ in range(1 if smoke else 5))

    def line(what, costs):
        names = [f"{count:,}" for count in costs]
        counts = " and ".join(filter(None, (", ".join(names[:-1]), names[-1])))
        return f"| j | cost of a report {what.format(counts)} | {', '.join(f'{value:.2f}' for value in costs.values())} | none |"

    one = cost(1, 1)
    return [line("up to row {}, as a multiple of that up to row 10,000", dict(sorted(upto.items()))),
            line("with {} boards, as a multiple of that with one",
                 {count: cost(count, 1) / one for count in ((4,) if smoke else (4, 16, 32))}),
            line("after {} attaches, as a multiple of that after one",
                 {count: cost(1, count) / one for count in ((10,) if smoke else (10, 100, 1000))})]


def measure(build, smoke):
    """Lines of the document."""
    return [*flood_lines(build, smoke), *idle_lines(build, smoke), *growth_lines(build, smoke)]
