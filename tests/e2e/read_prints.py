#!/usr/bin/env python3
"""Reads the reports that the journeys PrintedReport.* printed into their Wine prefix.

The PostScript becomes a PDF (ghostscript), whose words are read back with their places (poppler): all of the text is
there, once and in order, on as many pages as the PostScript says; on the first page each item stands on a line of its own
with the labels at the first tab stop and the values at later ones.
"""

import argparse
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass
from datetime import datetime, timedelta
from pathlib import Path

PAGES = {"one page": range(1, 2), "several pages": range(3, 100)}
MARGIN = 18.0  # points, around the printable area
TIME = re.compile(r"\d\d-[A-Z][a-z][a-z]-\d{4} (?:1[0-2]|[1-9]):[0-5]\d[ap]m")
LATEST = timedelta(minutes=5)  # between the time on the paper and the file's
# The first word of each item's label, and the line it stands on.
LINES = {"Date:": 2, "Program": 4, "Application": 5, "Datafiles": 6, "AutoCAD": 8}


@dataclass
class Word:
    """One word on a page, with the place of its box in points from the upper left corner of the paper."""

    text: str
    left: float
    top: float


class Fault(Exception):
    """What was printed is not what it must be."""


def run(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def pages_of(print_file, folder):
    """The words of each page."""
    pdf = folder / "out.pdf"
    run("ps2pdf", print_file, pdf)
    root = ElementTree.fromstring(run("pdftotext", "-bbox", pdf, "-"))
    space = "{http://www.w3.org/1999/xhtml}"
    return [
        [Word(word.text or "", float(word.get("xMin")), float(word.get("yMin"))) for word in page.iter(space + "word")]
        for page in root.iter(space + "page")
    ]


def solid(text):
    return "".join(text.split())


def check_text(pages, expected, printed):
    text = "".join(solid(word.text) for page in pages for word in page)
    before, after = (solid(part) for part in expected.split("<time>"))
    if not (text.startswith(before) and text.endswith(after)):
        raise Fault(f"the text is {text[:300]!r}, not {before!r} … {after[:300]!r}")
    words = [word.text for word in pages[0]]
    stamp = " ".join(words[words.index("Date:") + 1 :][:2])
    if not TIME.fullmatch(stamp) or solid(stamp) != text[len(before) : len(text) - len(after)]:
        raise Fault(f"the time is {stamp!r}")
    if abs(datetime.strptime(stamp, "%d-%b-%Y %I:%M%p") - printed) > LATEST:
        raise Fault(f"the time is {stamp!r}, printed was {printed}")


def first_words(page):
    """The leftmost word of each line, from top to bottom."""
    lines = {}
    for word in page:
        line = round(word.top)
        if line not in lines or word.left < lines[line].left:
            lines[line] = word
    return [lines[line] for line in sorted(lines)]


def check_places(page):
    labels = {word.text: word for word in first_words(page) if word.text in LINES}
    if list(labels) != list(LINES):
        raise Fault(f"the lines begin with {list(labels)}")
    pitch = (labels["AutoCAD"].top - labels["Date:"].top) / (LINES["AutoCAD"] - LINES["Date:"])
    for text, line in LINES.items():
        row = (labels[text].top - labels["Date:"].top) / pitch + LINES["Date:"]
        if abs(row - line) > 0.05:
            raise Fault(f"{text!r} stands on line {row:.2f}, not {line}")
    tab = labels["Date:"].left - MARGIN
    values = {"Date:": 1, "Program": 2, "Application": 2, "Datafiles": 2}  # how many words behind the label's first
    for text, words in values.items():
        row = sorted((word for word in page if abs(word.top - labels[text].top) < 1), key=lambda word: word.left)
        stops = [(row[index].left - MARGIN) / tab for index in (0, words)]
        if abs(stops[0] - 1) > 0.03 or stops[1] < 1.9 or abs(stops[1] - round(stops[1])) > 0.03 * stops[1]:
            raise Fault(f"behind {text!r} the tab stops are {stops}")


def check(folder, name):
    print_file = folder / f"{name}.ps"
    expected = (folder / f"{name}.txt").read_text("utf-8")
    with tempfile.TemporaryDirectory() as scratch:
        pages = pages_of(print_file, Path(scratch))
    if len(pages) not in PAGES[name]:
        raise Fault(f"{len(pages)} pages")
    check_text(pages, expected, datetime.fromtimestamp(print_file.stat().st_mtime))
    check_places(pages[0])
    return len(pages)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--default-prefix", required=True, help="the prefix when SITEKEEPER_WINEPREFIX names none")
    arguments = parser.parse_args()
    prefix = Path(os.environ.get("SITEKEEPER_WINEPREFIX") or arguments.default_prefix)
    faults = 0
    for name in PAGES:
        try:
            print(f"{name}: {check(prefix / 'drive_c' / 'SiteKeeper prints', name)}")
        except (Fault, OSError, ValueError, subprocess.CalledProcessError, ElementTree.ParseError) as error:
            print(f"{name}: {error}")
            faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
