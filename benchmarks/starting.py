"""Row m: from the start of the host to the first live picture, beside a bare window with one label."""

import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

from xserver import x_server

# What the rate limit lets pass first by rule: a report of the next interval.
INTERVAL_MS = 50
REPORTS_PER_SECOND = 100


def first_picture(command, build, display, home, **more):
    """Milliseconds from the start of a process to its first picture."""
    env = {**os.environ, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8", "HOME": home,
           "XDG_CONFIG_HOME": home, "XDG_RUNTIME_DIR": home,
           "LD_PRELOAD": str(build.resolve() / "benchmarks" / "sessions" / "libfirstpicture.so"),
           "FIRST_PICTURE_START": str(time.monotonic_ns()), **more}
    run = subprocess.run(command, env=env, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=60)
    return int(run.stdout) / 1e6


def measure(build, smoke):
    """Lines of the document."""
    host, bare = [], []
    with x_server() as server, tempfile.TemporaryDirectory() as home:
        scenario = pathlib.Path(home, "signals.json")
        board = {"id": 1001, "rate": REPORTS_PER_SECOND, "kinds": {"signal-1": 1}}
        scenario.write_text(json.dumps({"title": "Signals alone", "boards": [board]}))
        for _ in range(1 if smoke else 25):
            host.append(first_picture(
                [build / "host" / "tendro-host", "--simulate", scenario, "--open", "TendroPadscope", "--type", "?"],
                build, server["display"], home, FIRST_PICTURE_OF_SIGNALS="1"))
            bare.append(first_picture([build / "benchmarks" / "sessions" / "padscope_barewindow"], build,
                                      server["display"], home))
    by_rule = INTERVAL_MS + 1000 / REPORTS_PER_SECOND
    ratio = (statistics.median(host) - by_rule) / statistics.median(bare)
    mark = "**" if ratio > 1.5 else ""
    return [f"| m | start of the host to the first picture with signals, less the {by_rule:.0f} ms that the rate limit takes "
            f"by rule, as a multiple of the start of a bare window with one label; {len(host)} starts each | "
            f"{mark}{ratio:.2f}{mark} | 1.5 |"]


if __name__ == "__main__":
    print("\n".join(measure(pathlib.Path(sys.argv[1]), "--smoke" in sys.argv)))
