"""Row l: `padscope decode` beside tshark with the dissector, on the same file; processor time of a packet."""

import os
import pathlib
import struct
import subprocess
import sys
import tempfile

MAX_BYTES = 64 * 1024 * 1024
START_NS = 1_700_000_000_000_000_000

# Length byte, type, sub-type and length of what the boards send.
KINDS = [(40, 47, 1, 40), (40, 47, 2, 40), (14, 47, 3, 14), (10, 47, 4, 10), (16, 47, 5, 16), (25, 47, 6, 25),
         (40, 104, 1, 40), (9, 162, 0, 9), (26, 163, 0, 26), (31, 164, 0, 31)]


def block(kind, body):
    length = len(body) + 12
    return struct.pack("<II", kind, length) + body + struct.pack("<I", length)


def option(code, value):
    return struct.pack("<HH", code, len(value)) + value + bytes(-len(value) % 4)


def packet(number):
    length, kind, sub_type, size = KINDS[number % len(KINDS)]
    data = struct.pack("<2sBBBBHiiQIIII", b"PD", 1, 40, 1, 1, 0, 1001, 0, number, 0x5F0C93A1, 1234, 1, 0)
    data += bytes([length, kind, sub_type]) + ((number * 2654435761) % 2**64).to_bytes(8, "little") * 5
    data = data[:40 + size]
    time = START_NS + number * 1_000_000
    return block(6, struct.pack("<5I", 1, time >> 32, time % 2**32, len(data), len(data)) + data +
                 bytes(-len(data) % 4) + option(2, struct.pack("<I", 1)) + bytes(4))


def write_start(file):
    file.write(block(0x0A0D0D0A, struct.pack("<IHHq", 0x1A2B3C4D, 1, 0, -1)))
    for name in (b"driver", b"board 1001"):
        file.write(block(1, struct.pack("<HHI", 147, 0, 65535) + option(2, name) + option(9, b"\x09") + bytes(4)))


def write_capture(path, count):
    """Reports as a board sends them, one a millisecond, without an end."""
    with open(path, "wb") as file:
        write_start(file)
        for number in range(count):
            file.write(packet(number))


def write_capture_of_size(path, size):
    """The same up to a size in bytes; returns the count of packets."""
    with open(path, "wb") as file:
        write_start(file)
        number = 0
        while file.tell() < size:
            file.write(b"".join(packet(number + i) for i in range(1000)))
            number += 1000
    return number


def run(command, statuses=(0,)):
    """Processor time in seconds, and the most memory in bytes."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) not in statuses:
        sys.exit(f"{' '.join(command[:6])} ended with {os.waitstatus_to_exitcode(status)}")
    return usage.ru_utime + usage.ru_stime, 1024 * usage.ru_maxrss


def measure(build, smoke):
    """Processor time of a packet for each benchmark's name, and the memory that a million packets take."""
    program = str(build / "tools" / "padscope" / "padscope")
    times = {}
    count, repetitions = (1000, 1) if smoke else (20_000, 5)
    with tempfile.TemporaryDirectory() as folder:
        capture = str(pathlib.Path(folder) / "capture.pcapng")
        script = str(pathlib.Path(folder) / "padscope.lua")
        write_capture(capture, count)
        with open(script, "wb") as file:
            subprocess.run([program, "dissector"], stdout=file, check=True)
        header = subprocess.run([program, "decode", "--format", "csv", "--limit", "0", capture], check=True,
                                stdout=subprocess.PIPE, text=True).stdout
        fields = [argument for name in header.strip().split(",")[2:] for argument in ("-e", "padscope." + name)]
        tshark = ["tshark", "-X", f"lua_script:{script}", "-r", capture]
        for name, peer in (("text", []), ("csv", ["-T", "fields", "-E", "separator=,", *fields]),
                           ("jsonl", ["-T", "ek", *fields])):
            for _ in range(repetitions):
                # The file has no end packet: status 3.
                own = run([program, "decode", "--format", name, capture], (3,))[0]
                times.setdefault(f"l/tool/{name}", []).append(own / count)
                times.setdefault(f"l/tshark/{name}", []).append(run(tshark + peer)[0] / count)
        large = 10_000 if smoke else 1_000_000
        write_capture(capture, large)
        commands = [["info"], ["check"], *(["decode", "--format", name] for name in ("text", "rows", "csv", "jsonl"))]
        times["l/tool/memory"] = [max(run([program, *command, capture], (3,))[1] for command in commands)]
        times["l/allowed/memory"] = [MAX_BYTES]
    return times
