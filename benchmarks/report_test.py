#!/usr/bin/env python3
"""Holds report.py to its word: nothing that is built goes missing, and the numbers are those that were measured."""
import json
import os
import re
import tempfile
import unittest
from unittest import mock

import report

ROOT = os.path.dirname(report.HERE)
PAGE = os.path.join(ROOT, "docs", "performance.md")


def content(*parts):
    with open(os.path.join(ROOT, *parts), encoding="utf-8") as file:
        return file.read()


def google_run(name, time, unit="us", kind="iteration"):
    return {"run_name": name, "name": name, "run_type": kind, "cpu_time": time, "real_time": time * 10, "time_unit": unit}


class Results(unittest.TestCase):
    """A folder of results in which every program has one of each thing that there is an aim for."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.write("run.txt", "date\tnow\nprocessor\tsome\n")
        for program in report.programs():
            wanted = [(what, aim) for (owner, what), aim in report.AIMS.items() if owner == program]
            lines = [f"{what}\t{size}\tms\t2\t{aim.peer or 'peer'}\t4\n"
                     for what, aim in wanted or [("something", report.Aim())] for size in (1000, 1_000_000)]
            self.write(program + ".tsv", "".join(lines))

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
            file.write(text)

    def write_google(self, name, *runs):
        self.write(name + ".json", json.dumps({"benchmarks": runs}))


class Whole(Results):
    def test_every_program_has_its_place_in_the_page(self):
        page = report.filled_page(self.folder, content("docs", "performance.md"))
        for program in report.programs():
            part = re.search(rf"<!-- numbers: {program} -->(.*?)<!-- end -->", page, re.DOTALL)[1]
            self.assertIn("| 2 ms ", part)

    def test_the_page_that_is_handed_in_has_numbers_of_every_program(self):
        page = content("docs", "performance.md")
        for name in ["run"] + report.programs():
            parts = re.findall(rf"<!-- numbers: {name} -->(.*?)<!-- end -->", page, re.DOTALL)
            self.assertEqual(len(parts), 1, name)
            self.assertGreaterEqual(parts[0].count("\n|"), 3, name)

    def test_every_program_is_run_and_named_in_the_usage(self):
        lists = content("scripts", "benchmarks.sh")
        usage = content("bench")
        for program in report.programs():
            self.assertRegex(lists, rf"(?m)^(native|wine)_benchmarks=\(.*\b{program}\b")
            self.assertRegex(lists, rf"(?m)^measure_{program}\(\) ")
            self.assertRegex(usage, rf"(?m)^  {program} ")

    def test_the_programs_are_those_that_are_built(self):
        self.assertIn("ini_bench", report.programs())
        self.assertIn("trusted_paths_bench", report.programs())
        self.assertNotIn("bare_dialog", report.programs())
        self.assertEqual(len(report.programs()), content("benchmarks", "CMakeLists.txt").count("add_executable(") - 1)

    def test_a_program_without_a_result_is_noticed(self):
        os.remove(os.path.join(self.folder, "profile_bench.tsv"))
        with self.assertRaisesRegex(report.ReportError, "profile_bench has no result"):
            report.filled_page(self.folder, content("docs", "performance.md"))

    def test_a_program_without_a_place_is_noticed(self):
        with mock.patch("report.programs", return_value=["ini_bench", "new_bench"]):
            self.write("new_bench.tsv", "something\t0\tms\t1\tpeer\t2\n")
            with self.assertRaisesRegex(report.ReportError, "0 places for the numbers of new_bench"):
                report.filled_page(self.folder, content("docs", "performance.md"))

    def test_an_aim_for_what_is_no_longer_measured_is_noticed(self):
        self.write("ini_bench.tsv", "load\t1000\tms\t1\tinih\t2\n")
        with self.assertRaisesRegex(report.ReportError, 'aim for "find"'):
            report.filled_page(self.folder, content("docs", "performance.md"))

    def test_text_around_the_numbers_stays(self):
        page = content("docs", "performance.md")
        around = re.compile(r"(?<=-->).*?(?=<!-- end)", re.DOTALL)
        written = around.sub("", report.filled_page(self.folder, page))
        self.assertEqual(written, around.sub("", page))


class Reading(Results):
    def rows(self, name="ini_bench"):
        return report.read_program(self.folder, name)

    def test_a_side_that_is_missing_is_noticed(self):
        self.write_google("ini_bench", google_run("load/ours/100", 1))
        with self.assertRaisesRegex(report.ReportError, "one side is missing"):
            self.rows()
        self.write_google("ini_bench", google_run("load/inih/100", 1))
        with self.assertRaisesRegex(report.ReportError, "one side is missing"):
            self.rows()

    def test_an_error_of_a_benchmark_is_noticed(self):
        self.write_google("ini_bench", google_run("load/ours/100", 1) | {"error_occurred": True, "error_message": "no"})
        with self.assertRaisesRegex(report.ReportError, "load/ours/100: no"):
            self.rows()

    def test_an_empty_result_is_noticed(self):
        self.write("ini_bench.tsv", "")
        with self.assertRaisesRegex(report.ReportError, "no result"):
            self.rows()

    def test_a_line_of_another_form_is_noticed(self):
        for line in ("load 100 1 2\n", "load\t100\tweeks\t1\tpeer\t2\n"):
            self.write("ini_bench.tsv", line)
            with self.assertRaisesRegex(report.ReportError, "not a result"):
                self.rows()

    def test_a_time_of_nothing_is_noticed(self):
        self.write("ini_bench.tsv", "load\t100\tms\t0\tpeer\t2\n")
        with self.assertRaisesRegex(report.ReportError, "not positive"):
            self.rows()

    def test_medians_of_the_repetitions_alone_are_taken(self):
        runs = [google_run("load/ours/100", time) for time in (9, 1, 2)]
        runs += [google_run("load/ours/100", 1000, kind="aggregate"), google_run("load/inih/100", 4)]
        self.write_google("ini_bench", *runs)
        self.assertEqual([(row.what, row.size, row.ours, row.peers) for row in self.rows()],
                         [("load", 100, 2000, {"inih": 4000})])

    def test_what_was_registered_first_comes_first(self):
        runs = [google_run(f"{what}/{who}/10", 1) | {"family_index": index}
                for index, what in ((1, "find"), (0, "load")) for who in ("ours", "inih")]
        self.write_google("ini_bench", *runs)
        self.assertEqual([row.what for row in self.rows()], ["load", "find"])

    def test_the_clock_counts_where_the_benchmark_asks_for_it(self):
        self.write_google("ini_bench", google_run("walk/ours/10/real_time", 1), google_run("walk/find/10/real_time", 2))
        self.assertEqual([(row.ours, row.peers["find"]) for row in self.rows()], [(10_000, 20_000)])

    def test_peers_of_one_result_come_together_and_sizes_in_order(self):
        self.write("ini_bench.tsv", "b\t20\tms\t1\tx\t2\nb\t20\tms\t1\ty\t3\nb\t3\tms\t1\tx\t2\na\t1\tKiB\t1\tx\t2\n")
        self.assertEqual([(row.what, row.size, len(row.peers)) for row in self.rows()],
                         [("b", 3, 1), ("b", 20, 2), ("a", 1, 1)])


class Words(Results):
    def cells(self, row, aim=None):
        with mock.patch.dict(report.AIMS, {("p", row.what): aim} if aim else {}):
            text = report.program_text("p", [row]).split("\n")[2]
        return [cell.strip() for cell in text.split("|")[1:-1]]

    def test_ratio_is_to_the_fastest_peer(self):
        row = report.Row("w", 1000, False, 2e6, {"slow": 8e6, "fast": 4e6})
        self.assertEqual(self.cells(row), ["w", "1,000", "2 ms", "fast 4 ms; slow 8 ms", "0.50", ""])

    def test_aims_are_met_or_missed(self):
        row = report.Row("w", 1000, False, 2e6, {"slow": 8e6, "fast": 4e6})
        self.assertEqual(self.cells(row, report.Aim(0.5))[-1], "0.5, met")
        self.assertEqual(self.cells(row, report.Aim(0.4))[-1], "0.4, **missed**")
        self.assertEqual(self.cells(row, report.Aim(0.2, "slow"))[-1], "0.2 of slow, **missed** (0.25)")
        self.assertEqual(self.cells(row, report.Aim(0.4, from_size=2000))[-1], "")

    def test_sizes_of_files_have_a_limit_of_their_own(self):
        row = report.Row("file", report.NO_SIZE, True, 300 * 1024, {"bare": 20 * 1024})
        self.assertEqual(self.cells(row, report.Aim(most=400)), ["file", "", "300 KiB", "bare 20 KiB", "15.00",
                                                                 "400 KiB, met"])
        self.assertEqual(self.cells(row, report.Aim(most=299))[-1], "299 KiB, **missed**")

    def test_growth_begins_where_fixed_costs_end(self):
        self.assertEqual(report.growth([(10, 500), (1000, 1), (10_000, 10)]), (1000, 10_000, 1))
        self.assertAlmostEqual(report.growth([(4, 1), (16, 16)])[2], 2)
        self.assertAlmostEqual(report.growth([(10, 1), (1000, 100)])[2], 1)
        self.assertIsNone(report.growth([(1000, 1)]))
        self.assertIsNone(report.growth([(0, 1), (0, 2)]))

    def test_growth_is_said_beside_its_aim(self):
        rows = [report.Row("w", size, False, float(size * size), {"x": float(size)}) for size in (1000, 10_000)]
        with mock.patch.dict(report.AIMS, {("p", "w"): report.Aim(growth=1.2)}):
            self.assertEqual(list(report.growth_lines("p", rows)),
                             ['Growth of "w", 1,000 to 10,000: n^2.00, aim 1.2: **missed**; x n^1.00.'])

    def test_values_have_a_unit_that_can_be_read(self):
        shown = [report.shown_value(value, False) for value in (0.5, 12.34, 1234, 15_228_000, 2e9)]
        self.assertEqual(shown, ["0.5 ns", "12.3 ns", "1.23 µs", "15.2 ms", "2 s"])
        self.assertEqual(report.shown_value(16 * 1024 * 1024, True), "16 MiB")
        self.assertEqual([report.shown_ratio(ratio) for ratio in (1.04, 0.1, 0.001)], ["1.04", "0.10", "1/1000"])

    def test_a_run_without_a_fact_is_noticed(self):
        self.write("run.txt", "date\tnow\nWine\t\n")
        with self.assertRaisesRegex(report.ReportError, "without a value"):
            report.run_text(self.folder)


if __name__ == "__main__":
    unittest.main()
