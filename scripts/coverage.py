#!/usr/bin/env python3
"""Holds docs/testing.md to what a run of the tests counted: coverage.py [--write] NATIVE.json WINE.json PAGE.md

The two files are gcovr's. Rules count in the native build, everything else under Wine; a line of a header that only one of them
compiles counts there. The page has two tables between markers: rooms with their shares, and files with gaps, each with a reason
written by hand. Without --write the run fails when a file with a gap has no reason, or a room's share fell below the page's.
"""

import argparse
import collections
import json
import re
import sys

LOWER_BY = 0.3  # points a share may fall, since some lines are taken by timing alone
REASON_MISSING = "?"


class Counts:
    def __init__(self):
        self.lines = self.lines_taken = self.branches = self.branches_taken = 0

    def add(self, other):
        for name in vars(self):
            setattr(self, name, getattr(self, name) + getattr(other, name))

    def gap(self):
        parts = []
        for missing, word in (
            (self.lines - self.lines_taken, "line"),
            (self.branches - self.branches_taken, "branch"),
        ):
            if missing:
                plural = {"line": "lines", "branch": "branches"}[word] if missing > 1 else word
                parts.append(f"{missing} {plural}")
        return ", ".join(parts)


def share(taken, whole):
    return 100.0 if whole == 0 else 100.0 * taken / whole


def read_files(path):
    """Each file of the run: line number to (count, [branch counts])."""
    with open(path, encoding="utf-8") as stream:
        return {
            entry["file"]: {
                line["line_number"]: (line["count"], [branch["count"] for branch in line["branches"]])
                for line in entry["lines"]
                if not line.get("gcovr/noncode")
            }
            for entry in json.load(stream)["files"]
        }


def counts_of(lines):
    counts = Counts()
    for count, branches in lines.values():
        counts.lines += 1
        counts.lines_taken += count > 0
        counts.branches += len(branches)
        counts.branches_taken += sum(branch > 0 for branch in branches)
    return counts


def merged(native, wine):
    """A source counts in one build, the native one where it is compiled there; a header's line in either."""
    files = dict(wine)
    for name, lines in native.items():
        if name in wine and name.endswith(".h"):
            both = dict(lines)
            for number, (count, branches) in wine[name].items():
                if number not in both or both[number][0] == 0:
                    both[number] = (count, branches)
            files[name] = both
        else:
            files[name] = lines
    return {name: counts_of(lines) for name, lines in files.items()}


def room_of(name):
    return "/".join(name.split("/")[:2])


def rooms_table(files):
    rooms = collections.defaultdict(Counts)
    whole = Counts()
    for name, counts in files.items():
        rooms[room_of(name)].add(counts)
        whole.add(counts)
    rows = ["| folder | lines | taken | branches | taken |", "|---|---:|---:|---:|---:|"]
    for name, counts in [*sorted(rooms.items()), ("all", whole)]:
        rows.append(
            f"| {name} | {counts.lines} | {share(counts.lines_taken, counts.lines):.1f} % "
            f"| {counts.branches} | {share(counts.branches_taken, counts.branches):.1f} % |"
        )
    return rows


def gaps_table(files, reasons):
    rows = ["| file | not taken | why |", "|---|---|---|"]
    for name, counts in sorted(files.items()):
        if counts.gap():
            rows.append(f"| {name} | {counts.gap()} | {reasons.get(name, REASON_MISSING)} |")
    return rows


def between(page, marker):
    found = re.search(rf"(?<=<!-- {marker} -->\n).*?(?=<!-- end of {marker} -->)", page, re.DOTALL)
    if not found:
        sys.exit(f"the page has no markers for {marker}")
    return found


def cells(row):
    return [cell.strip() for cell in row.strip().strip("|").split("|")]


def reasons_of(page):
    return {cells(row)[0]: cells(row)[2] for row in between(page, "gaps").group().splitlines()[2:]}


def shares_of(rows):
    return {
        cells(row)[0]: tuple(float(cells(row)[column].rstrip(" %")) for column in (2, 4)) for row in rows[2:]
    }


def findings(page, files):
    reasons = reasons_of(page)
    found = [
        f"{name}: {counts.gap()} not taken, and no reason is given"
        for name, counts in sorted(files.items())
        if counts.gap() and reasons.get(name, REASON_MISSING) == REASON_MISSING
    ]
    before = shares_of(between(page, "folders").group().splitlines())
    for room, now in shares_of(rooms_table(files)).items():
        for was, is_now, what in zip(before.get(room, (0.0, 0.0)), now, ("lines", "branches")):
            if is_now < was - LOWER_BY:
                found.append(f"{room}: {is_now} % of the {what} taken, {was} % before")
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--write", action="store_true")
    parser.add_argument("native")
    parser.add_argument("wine")
    parser.add_argument("page")
    arguments = parser.parse_args()
    files = merged(read_files(arguments.native), read_files(arguments.wine))
    with open(arguments.page, encoding="utf-8") as stream:
        page = stream.read()
    if arguments.write:
        for marker, rows in (("folders", rooms_table(files)), ("gaps", gaps_table(files, reasons_of(page)))):
            place = between(page, marker)
            page = page[: place.start()] + "\n".join(rows) + "\n" + page[place.end() :]
        with open(arguments.page, "w", encoding="utf-8") as stream:
            stream.write(page)
    found = findings(page, files)
    print("\n".join(rooms_table(files) + found))
    sys.exit(1 if found else 0)


main()
