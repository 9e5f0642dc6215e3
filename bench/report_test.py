#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""The report from results that are small enough to work out by hand."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

sys.dont_write_bytecode = True
import pictures
import report

# Row, title, bytes, repetitions. Nobody but us does the last; its unit differs.
RUNS = [
    ("read/pxcl", "read it", 1000, [200, 900, 100], "ns"),
    ("read/slow", "read it", 1000, [600, 500, 700], "ns"),
    ("read/fast", "read it", 1000, [50, 40, 60], "ns"),
    ("read/floor", "read it", 1000, [1, 1, 1], "ns"),
    ("build/pxcl", "build it", 0, [10, 10, 10], "ns"),
    ("build/slow", "build it", 0, [80, 80, 80], "ns"),
    ("alone/pxcl", "alone", 500, [2, 2, 2], "us"),
]
INSTRUCTIONS = """3000 engine read/pxcl
1500 engine read/slow
2000 engine read/fast
70 other read/pxcl
40 engine build/pxcl
"""
GROWTH = """levels\tdeep\t1000\t0.001
levels\tdeep\t100000\t0.1
long runs\ta run of "<" & more\t1000\t0.0001
long runs\ta run of "<" & more\t10000\t0.001
counts\tone size\t1000\t0.001
counts\tone size\t1000\t0.002
"""


def results_json():
    runs = []
    # Mixed, as the program takes them, and with an aggregate that is no measurement.
    for repetition in range(3):
        for family, (name, title, document, times, unit) in reversed(list(enumerate(RUNS))):
            runs.append({"run_type": "iteration", "run_name": name, "family_index": family, "label": title,
                         "document": document, "cpu_time": times[repetition], "time_unit": unit,
                         "repetitions": 3})
    runs.append({"run_type": "aggregate", "run_name": "read/pxcl", "cpu_time": 7, "time_unit": "ns"})
    return json.dumps({"benchmarks": runs})


class ReportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "engine.json").write_text(results_json())
        (self.folder / "instructions.txt").write_text(INSTRUCTIONS)
        (self.folder / "growth.tsv").write_text(GROWTH)
        instructions = report.read_instructions(self.folder / "instructions.txt")
        self.tasks = report.read_tasks(self.folder / "engine.json", instructions)

    def test_every_row_has_its_median_spread_and_ratios(self):
        self.assertEqual(report.task_table(self.tasks).splitlines()[2:], [
            "| read it, 1,000 bytes | **pxcl** | 200 | 400% | 5,000 | 4.00 | 3,000 | 2.00 |",
            "|  | slow | 600 | 33% | 1,667 | 12.00 | 1,500 | 1.00 |",
            "|  | **fast** | 50 | 40% | 20,000 | 1.00 | 2,000 | 1.33 |",
            "|  | floor | 1 | 0% | 1,000,000 | 0.02 |  |  |",
            "| build it | **pxcl** | 10 | 0% |  | 0.12 | 40 |  |",
            "|  | **slow** | 80 | 0% |  | 1.00 |  |  |",
            "| alone, 500 bytes | **pxcl** | 2,000 | 0% | 250 |  |  |  |",
        ])

    def test_a_column_that_nobody_fills_is_left_out(self):
        alone = [task for task in self.tasks if task.name == "alone"]
        self.assertEqual(report.task_table(alone).splitlines(), [
            "| what | who | ns per call | spread | MB/s |", "|---|--:|--:|--:|--:|",
            "| alone, 500 bytes | **pxcl** | 2,000 | 0% | 250 |"])

    def test_the_summary_says_how_many_times_as_fast_and_leaves_out_what_has_no_peer(self):
        self.assertEqual(report.summary_table(self.tasks).splitlines()[2:], [
            "| read it | 200 ns | fast, 50 ns | **0.25** | 0.50 |",
            "| build it | 10 ns | slow, 80 ns | **8.00** |  |",
        ])

    def test_no_instructions_were_counted(self):
        missing = report.read_instructions(self.folder / "none")
        tasks = report.read_tasks(self.folder / "engine.json", missing)
        self.assertIn("| fast, 50 ns | **0.25** |\n", report.summary_table(tasks))

    def test_the_bars_are_the_peers_times_over_ours(self):
        self.assertEqual(report.columns(self.tasks), [
            ("Reading", [("read it", [("slow", 3.0), ("fast", 0.25)])]),
            ("Building commands", [("build it", [("slow", 8.0)])])])

    def test_a_page_without_a_place_for_a_table_is_refused(self):
        with self.assertRaisesRegex(SystemExit, "no markers for growth"):
            report.replace_section("<!-- speed -->\n<!-- end of speed -->\n", "growth", "x")

    def test_missing_results_are_named(self):
        (self.folder / "page.md").write_text("")
        script = pathlib.Path(report.__file__)
        run = subprocess.run([sys.executable, "-B", script, self.folder / "page.md", self.folder, self.folder],
                             capture_output=True, text=True)
        self.assertEqual(run.returncode, 1)
        self.assertRegex(run.stderr, r"replies\.json is missing; bench/run makes it")

    def test_equal_ratios_are_equal_distances(self):
        for just in (False, True):
            scale = pictures.LogScale([1, 1000], 50, 350, just)
            self.assertEqual([round(scale(value)) for value in scale.decades()], [50, 150, 250, 350])
        self.assertEqual(pictures.LogScale([0.5, 20], 0, 1).decades(), [0.1, 1, 10, 100])
        self.assertEqual(pictures.LogScale([0.5, 20], 0, 1, just=True).decades(), [1, 10])

    def test_the_pictures_show_everything(self):
        speed = ElementTree.fromstring(pictures.speed(report.columns(self.tasks)))
        texts = [text for text in speed.itertext()]
        for shown in ("read it", "build it", "slow", "fast", "3.00", "0.25", "8.00"):
            self.assertIn(shown, texts)
        growth = ElementTree.fromstring(pictures.growth(report.lines(self.folder / "growth.tsv")))
        texts = [text for text in growth.itertext()]
        for shown in ("deep", 'a run of "<" & more', "levels", "long runs", "100 ms", "1 MB/s"):
            self.assertIn(shown, texts)
        self.assertNotIn("one size", texts)  # nothing grows there


if __name__ == "__main__":
    unittest.main()
