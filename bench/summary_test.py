#!/usr/bin/env python3
"""The summary table of ./dev bench: which time it reads, how it judges a target."""

import contextlib
import io
import json
import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import summary  # noqa: E402


def table(*benchmarks, extra_files=()):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "one.json")
        with open(path, "w", encoding="utf-8") as f:
            json.dump({"benchmarks": list(benchmarks)}, f)
        out, err = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
            status = summary.main([path, *extra_files])
    tables = out.getvalue().split("\n\n")
    rows = [line.split() for line in tables[0].splitlines()[2:]]
    return rows, status, err.getvalue()


def memory_table(*benchmarks):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "one.json")
        with open(path, "w", encoding="utf-8") as f:
            json.dump({"benchmarks": list(benchmarks)}, f)
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            summary.main([path])
    tables = out.getvalue().split("\n\n")
    return tables[1].splitlines()[2:] if len(tables) > 1 else []


def bench(name, **fields):
    return {"name": name, "run_type": "iteration", "real_time": 40.0, "time_unit": "ms", **fields}


class SummaryTest(unittest.TestCase):
    def test_the_time_measured_wins_over_the_iterations_time(self):
        # The iteration timed the floor too: its 40 ms is not the work's time.
        rows, _, _ = table(bench("save", time_ns=25e6, floor_ns=10e6, target_ratio=2))
        self.assertEqual(rows[0][:5], ["save", "25.0", "ms", "-", "10.0"])
        self.assertIn("2.50x", rows[0])
        self.assertEqual(rows[0][-1], "MISSED")

    def test_a_target_is_met_only_strictly_under_it(self):
        rows, _, _ = table(bench("at", target_ns=40e6), bench("under", target_ns=40.1e6))
        self.assertEqual([r[-1] for r in rows], ["MISSED", "met"])

    def test_processor_time_alone_under_the_target_says_so(self):
        rows, _, _ = table(
            bench("busy", cpu_ns=30e6, target_ns=35e6),
            bench("ratio", time_ns=30e6, cpu_ns=12e6, floor_ns=10e6, floor_cpu_ns=8e6,
                  target_ratio=2),
            bench("slow", cpu_ns=36e6, target_ns=35e6))
        self.assertEqual([r[-2:] for r in rows],
                         [["cpu", "only"], ["cpu", "only"], ["ms", "MISSED"]])
        self.assertIn("1.50x", rows[1])

    def test_no_target_and_errors(self):
        rows, _, _ = table(bench("plain"), bench("broken", error_occurred=True, target_ns=1e9))
        self.assertEqual([r[-1] for r in rows], ["-", "error"])

    def test_repetition_aggregates_are_left_out(self):
        rows, _, _ = table(bench("r"), dict(bench("r_mean"), run_type="aggregate"))
        self.assertEqual([r[0] for r in rows], ["r"])

    def test_memory_has_its_own_table_judged_strictly_under_the_target(self):
        lines = memory_table(
            bench("list", bytes_per_line=1023.6, floor_bytes=635.2, target_bytes=1024),
            bench("fat", bytes_per_line=1024.0, target_bytes=1024),
            bench("save", peak_MiB=99.98, before_MiB=97.5),
            bench("plain"))
        self.assertEqual(len(lines), 3)
        self.assertTrue(lines[0].startswith("list"))
        self.assertIn("1024 B", lines[0])
        self.assertIn("635 B", lines[0])
        self.assertTrue(lines[0].endswith("met"))
        self.assertTrue(lines[1].endswith("MISSED"))
        self.assertIn("100.0 MiB", lines[2])
        self.assertIn("(97.5 MiB held before)", lines[2])
        # The times' table still lists every benchmark, the memory ones among them.
        rows, _, _ = table(bench("list", bytes_per_line=10, target_bytes=1024), bench("plain"))
        self.assertEqual([r[0] for r in rows], ["list", "plain"])

    def test_no_memory_counters_no_memory_table(self):
        self.assertEqual(memory_table(bench("plain", target_ns=1e9)), [])

    def test_a_cut_off_file_is_named_and_the_rest_shown(self):
        with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as f:
            f.write('{"benchmarks": [{"na')
        try:
            rows, status, err = table(bench("kept"), extra_files=[f.name])
        finally:
            os.unlink(f.name)
        self.assertEqual([r[0] for r in rows], ["kept"])
        self.assertEqual(status, 1)
        self.assertIn(f.name, err)


if __name__ == "__main__":
    unittest.main()
