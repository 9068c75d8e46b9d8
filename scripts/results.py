#!/usr/bin/env python3
"""Reads the JUnit file of one ctest run: prints "PASSED FAILED SKIPPED", then the names of failed tests, one a line."""

import sys
import xml.etree.ElementTree as ElementTree


def verdict(case):
    """passed, failed or skipped; a test that could not be started is a failed one."""
    status = case.get("status")
    if status == "run":
        return "passed"
    if status == "disabled":
        return "skipped"
    reason = case.find("skipped")
    if status == "notrun" and reason is not None and reason.get("message", "").startswith("SKIP_"):
        return "skipped"
    return "failed"


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: results.py FILE")
    count = {"passed": 0, "failed": 0, "skipped": 0}
    failed = []
    for case in ElementTree.parse(sys.argv[1]).getroot().iter("testcase"):
        kind = verdict(case)
        count[kind] += 1
        if kind == "failed":
            failed.append(" ".join(case.get("name", "?").split()))
    print(count["passed"], count["failed"], count["skipped"])
    print("\n".join(failed), end="\n" if failed else "")


main()
