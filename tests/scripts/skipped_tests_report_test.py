#!/usr/bin/python3
"""The banner after a test run, read from JUnit files shaped as ctest writes them."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
import skipped_tests_report  # noqa: E402


def Case(name, status, output="", skipped=None):
    skip = f'<skipped message="{skipped}"/>' if skipped is not None else ""
    return (f'<testcase name="{name}" classname="{name}" time="0.1" status="{status}">{skip}'
            f"<system-out>{output}</system-out></testcase>")


def Results(*cases):
    folder = tempfile.mkdtemp()
    path = Path(folder) / "results.xml"
    path.write_text('<?xml version="1.0" encoding="UTF-8"?>\n<testsuite name="Fendrix" tests="%d">%s</testsuite>'
                    % (len(cases), "".join(cases)))
    return str(path)


PG_SKIP = ("[ RUN      ] Odbc.reads\n/src/tests/pds/odbc_test.cpp:70: Skipped\nno PostgreSQL test server: run "
           "scripts/run-tests.sh\n\n[  SKIPPED ] Odbc.reads (0 ms)\n")


class SkippedTestsReport(unittest.TestCase):
    def test_a_run_that_skipped_nothing_says_so_in_one_line(self):
        lines = skipped_tests_report.Report(Results(Case("A.a", "run"), Case("A.b", "run")))
        self.assertEqual(lines, ["All 2 tests ran: none was skipped."])

    def test_skipped_tests_are_counted_by_their_reason_the_most_frequent_first(self):
        lines = skipped_tests_report.Report(Results(
            Case("A.a", "run"),
            Case("Odbc.reads", "notrun", PG_SKIP, skipped="Skipped"),
            Case("Odbc.writes", "notrun", PG_SKIP.replace("reads", "writes"), skipped="Skipped"),
            Case("Files.move", "notrun", "x.cpp:58: Skipped\nno second file system at /dev/shm\n[  SKIPPED ] F", "Skipped"),
            Case("Fuzz.dump", "notrun", "", skipped="Disabled"),
            Case("fuzz_targets_need_clang", "notrun", "clang++ not found: the fuzz targets were not built\n",
                 skipped="SKIP_RETURN_CODE=77")))
        text = "\n".join(lines)
        self.assertIn("5 of 6 tests were SKIPPED: this was NOT a full run.", text)
        reasons = [line for line in lines if " x " in line]
        self.assertEqual(len(reasons), 4)
        self.assertIn("1 x clang++ not found: the fuzz targets were not built", text)
        self.assertTrue(reasons[0].endswith("2 x no PostgreSQL test server: run scripts/run-tests.sh"), reasons[0])
        self.assertIn("1 x no second file system at /dev/shm", text)
        self.assertIn("1 x Disabled", text)

    def test_an_unreadable_results_file_is_told_not_taken_for_a_full_run(self):
        broken = Results("<testcase")
        Path(broken).write_text("<testsuite><testcase")
        self.assertEqual(skipped_tests_report.main(["report", broken]), 1)


if __name__ == "__main__":
    unittest.main()
