#!/usr/bin/env python3
"""Prints one table of every benchmark run by ./dev bench, from Google Benchmark's JSON files.

A benchmark tells the table what it measured through its counters (all optional):
  time_ns       the time of the work measured, per iteration, when the iteration's own
                time holds more than that work (a floor timed in the same loop, say);
                without it, the benchmark's real time per iteration is taken
  cpu_ns        the processor time of that work, per iteration: shown beside the time,
                since wall times on a busy machine say little
  floor_ns      the floor measured in the same run (the same writes done by SQLite's own
                prepared statements, or the same work done directly on the data)
  target_ns     the time the work must stay under
  target_ratio  the ratio to the floor the work must stay within
A benchmark met its targets when its time is under each target it names; one that names
none shows "-". The exit status is 0 whatever was met: the table informs, CI does not gate
on timings of a shared machine.
"""

import json
import sys

UNIT_NS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def ms(ns):
    return "-" if ns is None else f"{ns / 1e6:.1f} ms"


def row_of(bench):
    time_ns = bench.get("time_ns")
    if time_ns is None:
        time_ns = bench["real_time"] * UNIT_NS[bench.get("time_unit", "ns")]
    floor_ns = bench.get("floor_ns")
    target_ns = bench.get("target_ns")
    target_ratio = bench.get("target_ratio")
    ratio = time_ns / floor_ns if floor_ns else None

    targets = []
    met = True
    if target_ns is not None:
        targets.append(f"< {ms(target_ns)}")
        met = met and time_ns < target_ns
    if target_ratio is not None:
        targets.append(f"<= {target_ratio:g}x")
        met = met and ratio is not None and ratio <= target_ratio
    if bench.get("error_occurred"):
        verdict = "error"
    elif not targets:
        verdict = "-"
    else:
        verdict = "met" if met else "MISSED"
    return [
        bench["name"],
        ms(time_ns),
        ms(bench.get("cpu_ns")),
        ms(floor_ns),
        "-" if ratio is None else f"{ratio:.2f}x",
        ", ".join(targets) or "-",
        verdict,
    ]


def main(paths):
    header = ["benchmark", "time", "cpu", "floor", "ratio", "target", "met"]
    rows = []
    for path in paths:
        with open(path, encoding="utf-8") as f:
            report = json.load(f)
        for bench in report.get("benchmarks", []):
            # Repetitions add mean, median and deviation rows; the runs themselves are shown.
            if bench.get("run_type") == "aggregate":
                continue
            rows.append(row_of(bench))
    widths = [max(len(r[i]) for r in [header] + rows) for i in range(len(header))]

    def line(cells):
        # The name is read left to right, the figures are compared down the column.
        return "  ".join(c.ljust(w) if i == 0 else c.rjust(w)
                         for i, (c, w) in enumerate(zip(cells, widths))).rstrip()

    print(line(header))
    print("  ".join("-" * w for w in widths))
    for r in rows:
        print(line(r))


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit("usage: summary.py RESULT.json...")
    main(sys.argv[1:])
