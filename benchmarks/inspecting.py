"""Row n: `padscope info` of a capture of 1 GiB that is in the page cache."""

import pathlib
import statistics
import tempfile
import time

import decoding

BOUND_SECONDS = 2


def measure(build, smoke):
    """Lines of the document."""
    size, runs = (1 << 20, 1) if smoke else (1 << 30, 5)
    with tempfile.TemporaryDirectory() as folder:
        capture = pathlib.Path(folder) / "capture.pcapng"
        packets = decoding.write_capture_of_size(capture, size)
        times = []
        for _ in range(runs + 1): # the first warms the cache
            start = time.monotonic()
            # The file has no end packet: status 3.
            decoding.run([str(build / "tools" / "padscope" / "padscope"), "info", str(capture)], (3,))
            times.append(time.monotonic() - start)
    seconds = statistics.median(times[1:])
    text = f"{seconds:.2f} s"
    text = f"**{text}**" if seconds > BOUND_SECONDS else text
    return [f"| n | `padscope info` of {size >> 20:,} MiB, {packets:,} packets, in a warm cache: time on the clock | {text} | "
            f"{BOUND_SECONDS} s |"]
