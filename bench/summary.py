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
  floor_cpu_ns  the processor time of the floor, for the ratio of processor times
  target_ns     the time the work must stay under
  target_ratio  the ratio to the floor the work must stay within
Memory has a table of its own, after the times, from these counters:
  bytes_per_line  bytes a line of the list costs; floor_bytes what the same texts cost in
                  plain strings; target_bytes what a line must stay under
  peak_MiB        the process's peak during the work measured; before_MiB what it held
                  as the work began (so that the work's own share shows)
A benchmark met its targets ("met") when its time is under each target it names; "cpu
only" when its processor time is, but not the time a clerk waits, as on a machine busy with
other work; one that names no target shows "-". The exit status does not depend on what
was met (the table informs; timings of a shared machine gate nothing): it is 1 only when a
file could not be read.
"""

import json
import sys

UNIT_NS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def ms(ns):
    return "-" if ns is None else f"{ns / 1e6:.1f} ms"


def verdict(time_ns, ratio, target_ns, target_ratio):
    if target_ns is not None and not time_ns < target_ns:
        return False
    if target_ratio is not None and (ratio is None or ratio > target_ratio):
        return False
    return True


def row_of(bench):
    time_ns = bench.get("time_ns")
    if time_ns is None:
        time_ns = bench["real_time"] * UNIT_NS[bench.get("time_unit", "ns")]
    cpu_ns = bench.get("cpu_ns")
    floor_ns = bench.get("floor_ns")
    floor_cpu_ns = bench.get("floor_cpu_ns")
    target_ns = bench.get("target_ns")
    target_ratio = bench.get("target_ratio")
    ratio = time_ns / floor_ns if floor_ns else None
    cpu_ratio = cpu_ns / floor_cpu_ns if cpu_ns is not None and floor_cpu_ns else None

    targets = []
    if target_ns is not None:
        targets.append(f"< {ms(target_ns)}")
    if target_ratio is not None:
        targets.append(f"<= {target_ratio:g}x")
    if bench.get("error_occurred"):
        met = "error"
    elif not targets:
        met = "-"
    elif verdict(time_ns, ratio, target_ns, target_ratio):
        met = "met"
    elif cpu_ns is not None and verdict(cpu_ns, cpu_ratio if floor_cpu_ns else ratio,
                                        target_ns, target_ratio):
        met = "cpu only"
    else:
        met = "MISSED"
    return [
        bench["name"],
        ms(time_ns),
        ms(cpu_ns),
        ms(floor_ns),
        "-" if ratio is None else f"{ratio:.2f}x",
        "-" if cpu_ratio is None else f"{cpu_ratio:.2f}x",
        ", ".join(targets) or "-",
        met,
    ]


def memory_rows_of(bench):
    rows = []
    if "bytes_per_line" in bench:
        target = bench.get("target_bytes")
        floor = bench.get("floor_bytes")
        rows.append([
            bench["name"], "bytes per list line", f"{bench['bytes_per_line']:.0f} B",
            "-" if floor is None else f"{floor:.0f} B",
            "-" if target is None else f"< {target:.0f} B",
            "-" if target is None else ("met" if bench["bytes_per_line"] < target else "MISSED"),
        ])
    if "peak_MiB" in bench:
        before = bench.get("before_MiB")
        what = "peak during the work"
        if before is not None:
            what += f" ({before:.1f} MiB held before)"
        rows.append([bench["name"], what, f"{bench['peak_MiB']:.1f} MiB", "-", "-", "-"])
    return rows


def print_table(header, rows):
    widths = [max(len(r[i]) for r in [header] + rows) for i in range(len(header))]

    def line(cells):
        # The name is read left to right, the figures are compared down the column.
        return "  ".join(c.ljust(w) if i == 0 else c.rjust(w)
                         for i, (c, w) in enumerate(zip(cells, widths))).rstrip()

    print(line(header))
    print("  ".join("-" * w for w in widths))
    for r in rows:
        print(line(r))


def main(paths):
    header = ["benchmark", "time", "cpu", "floor", "ratio", "cpu ratio", "target", "met"]
    rows = []
    memory = []
    unreadable = []
    for path in paths:
        try:
            with open(path, encoding="utf-8") as f:
                report = json.load(f)
        except (OSError, json.JSONDecodeError) as e:
            # A program that stopped half-way leaves its file cut off: the table shows
            # the others, and says which file it could not read.
            unreadable.append(f"{path}: {e}")
            continue
        for bench in report.get("benchmarks", []):
            # Repetitions add mean, median and deviation rows; the runs themselves are shown.
            if bench.get("run_type") == "aggregate":
                continue
            rows.append(row_of(bench))
            memory.extend(memory_rows_of(bench))
    print_table(header, rows)
    if memory:
        print()
        print_table(["benchmark", "memory", "figure", "floor", "target", "met"], memory)
    for u in unreadable:
        print(f"summary: no figures from {u}", file=sys.stderr)
    return 1 if unreadable else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit("usage: summary.py RESULT.json...")
    sys.exit(main(sys.argv[1:]))
