"""Runs the benchmarks and writes docs/performance.md: ratios of processor times, never bare times."""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile

import decoding
import inspecting
import sessions
import starting
import streams

# Row, what is compared, tool, peer, highest ratio allowed. None has no bound and is only reported.
COMPARISONS = [
    ("a1", "one paint of a full row view", "a1/tool", "a1/QPlainTextEdit", 0.75),
    ("a2", "one row until idle, view full", "a2/tool", "a2/QPlainTextEdit", 2.5),
    ("b", "a report to a row, log off", "b/tool/log/0", "b/QPlainTextEdit/log/0", 0.5),
    ("b", "a report to a row, log off", "b/tool/log/0", "b/QListWidget/log/0", 1.3),
    ("b", "a report to a row, log on", "b/tool/log/1", "b/QPlainTextEdit/log/1", 0.5),
    ("b", "a report to a row, log on", "b/tool/log/1", "b/QListWidget/log/1", 1.3),
    ("c", "the bar graph's picture, classic", "c/tool/classic:1", "c/QtCharts", 1.0),
    ("c", "the bar graph's picture, classic", "c/tool/classic:1", "c/Qwt", 1.0),
    ("c", "the bar graph's picture, gradients", "c/tool/classic:0", "c/QtCharts", 1.0),
    ("c", "the bar graph's picture, gradients", "c/tool/classic:0", "c/Qwt", 1.0),
    ("c", "the gradients alone", "c/gradients", "c/Qwt", None),
    ("c", "the bar graph's picture, gradients", "c/tool/classic:0", "c/gradients", None),
    ("c", "a whole frame of the tab, classic", "c/wholeframe/classic:1", "c/Qwt", None),
    ("c", "a whole frame of the tab, gradients", "c/wholeframe/classic:0", "c/Qwt", None),
]
for zone, zone_name in ((0, "TZ unset"), (1, "TZ set")):
    for kind in (33, 50, 104):
        COMPARISONS.append(("d", f"a kept report of type {kind}, {zone_name}", f"d/tool/type:{kind}/TZ:{zone}",
                            f"d/floor/type:{kind}/TZ:{zone}", 1.2))
    COMPARISONS.append(("e", f"a dropped report, {zone_name}", f"e/tool/TZ:{zone}", f"e/floor/TZ:{zone}", 1.1))
COMPARISONS.append(("i", "from widget() to the first frame", "i/tool", "i/QWidget", 1.2))
COMPARISONS += [
    ("l", "a capture to text", "l/tool/text", "l/tshark/text", 1 / 40),
    ("l", "a capture to CSV", "l/tool/csv", "l/tshark/csv", 1 / 20),
    ("l", "a capture to JSON lines", "l/tool/jsonl", "l/tshark/jsonl", 1 / 20),
    ("l", "memory for a million packets", "l/tool/memory", "l/allowed/memory", 1.0),
]


def google_benchmark(program, smoke):
    """Processor time of one unit of work, per benchmark name: a list with one value a repetition."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run(
            [program, f"--benchmark_repetitions={1 if smoke else 9}",
             "--benchmark_enable_random_interleaving=true",
             f"--benchmark_min_time={0.01 if smoke else 0.2}",
             "--benchmark_report_aggregates_only=false",
             f"--benchmark_out={out.name}", "--benchmark_out_format=json"],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
        runs = json.load(open(out.name))["benchmarks"]
    times, counts = {}, {}
    for run in runs:
        if run["run_type"] != "iteration":
            continue
        name = run["run_name"].split("/iterations:")[0].split("/repeats:")[0]
        # Per item where items are counted, so that a batch with fewer items does not count as faster.
        rate = run.get("items_per_second")
        times.setdefault(name, []).append(1e9 / rate if rate else run["cpu_time"])
        counts[name] = {key: run[key] for key in ("paints", "pixels", "bars", "rows", "queued", "kept", "frames") if key in run}
    return times, counts


def spread(values):
    """Half the interquartile range, in percent of the median."""
    if len(values) < 4:
        return 0.0
    low, _, high = statistics.quantiles(values, n=4)
    return 50 * (high - low) / statistics.median(values)


def check_counts(counts):
    """Both sides of a comparison must have done the same number of units; paints may differ."""
    for _, _, tool, peer, _ in COMPARISONS:
        for what in ("bars", "rows", "queued", "frames"):
            if what in counts[tool] and what in counts[peer] and counts[tool][what] != counts[peer][what]:
                sys.exit(f"{tool} did {counts[tool][what]:g} {what}, {peer} did {counts[peer][what]:g}")


def listed(counts):
    return ", ".join(f"{value:,.0f} {key}" if value >= 10 else f"{value:.2g} {key}" for key, value in counts.items())


def shown(ratio):
    return f"{ratio:.2f}" if ratio >= 0.1 else f"{ratio:.2g}"


def table(times, counts):
    lines = ["| Row | Work | Beside | Ratio | Bound | Noise | Counted in the tool / in the peer |",
             "|---|---|---|---|---|---|---|"]
    missed = []
    for row, work, tool, peer, bound in COMPARISONS:
        ratio = statistics.median(times[tool]) / statistics.median(times[peer])
        noise = max(spread(times[tool]), spread(times[peer]))
        if bound is not None and ratio > bound:
            missed.append((row, work, peer, ratio, bound))
        limit = "none" if bound is None else f"{bound:g}"
        mark = "**" if bound is not None and ratio > bound else ""
        beside = peer.split("/")[1]
        lines.append(f"| {row} | {work} | {beside} | {mark}{shown(ratio)}{mark} | {limit} | {noise:.0f} % | "
                     f"{listed(counts[tool])} / {listed(counts[peer])} |")
    return lines, missed


def tap_cost(program, smoke):
    """Row k: what the tap adds to a call of eight threads at once, in nanoseconds: median and 99.9th percentile. With a
    small ring most reports are lost."""
    lines = ["| Row | What the tap adds to a report of 40 bytes, eight threads at once | Result | Bound |",
             "|---|---|---|---|"]
    missed = []
    for ring, arguments in (("default ring", ["16384"]), ("default ring, library that may replay", ["16384", "simulator"]),
                            ("ring of 64 KiB", ["64"])):
        printed = subprocess.run([program, "1" if smoke else "50", *arguments], check=True, capture_output=True, text=True).stdout
        times = {words[0]: words[1:] for words in map(str.split, printed.splitlines())}
        added = [int(tapped) - int(plain) for tapped, plain in zip(times["tapped"], times["untapped"])]
        lost, _, count = times["lost"]
        for what, result, bound in zip(("median", "99.9th percentile"), added, (300, 2000)):
            mark = "**" if result > bound else ""
            lines.append(f"| k | {what}, {ring}; {lost} of {count} reports lost | {mark}{result / 1000:.2f} us{mark} | "
                         f"{bound / 1000:g} us |")
            if result > bound:
                missed.append(f"k: {what}, {ring} {result} ns, bound {bound} ns")
    return lines, missed


def replace_between(text, name, lines):
    begin, end = f"<!-- {name} -->", f"<!-- /{name} -->"
    return text.split(begin)[0] + begin + "\n" + "\n".join(lines) + "\n" + end + text.split(end)[1]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--smoke", action="store_true")
    options = parser.parse_args()
    times, counts = google_benchmark(options.build / "benchmarks" / "padscope_benchmarks", options.smoke)
    for name, values in decoding.measure(options.build, options.smoke).items():
        times[name], counts[name] = values, {}
    check_counts(counts)
    lines, missed = table(times, counts)
    session_lines = ["| Row | What | Result | Bound |", "|---|---|---|---|"]
    for part in (streams, sessions, starting, inspecting):
        session_lines += part.measure(options.build, options.smoke)
    tap_lines, tap_missed = tap_cost(options.build / "benchmarks" / "tap" / "padscope_tapcost", options.smoke)
    if options.smoke:
        print("\n".join(lines + session_lines + tap_lines))
        return
    page = pathlib.Path("docs/performance.md")
    text = replace_between(page.read_text(), "measured", lines)
    text = replace_between(text, "sessions", session_lines)
    page.write_text(replace_between(text, "tap", tap_lines))
    for row, work, peer, ratio, bound in missed:
        print(f"{row}: {work} beside {peer}: {shown(ratio)}, bound {bound:g}", file=sys.stderr)
    for line in [line for line in session_lines if "**" in line] + tap_missed:
        print(line, file=sys.stderr)


if __name__ == "__main__":
    main()
