"""An X server of its own for a benchmark."""

import contextlib
import os
import signal
import subprocess


def used(process):
    """Waits for a process; seconds of processor time that it has used."""
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return usage.ru_utime + usage.ru_stime


@contextlib.contextmanager
def x_server():
    """A dictionary with the display, which gets the server's processor time when it has ended."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-noreset", "-screen", "0", "1024x768x24"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with open(reading, encoding="ascii") as told:
        account = {"display": ":" + told.readline().strip()}
    try:
        yield account
    finally:
        server.send_signal(signal.SIGTERM)
        account["seconds"] = used(server)
