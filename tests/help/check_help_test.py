#!/usr/bin/env python3
"""Sees the check of the help pages fail: each flaw is put into a copy of good pages and must be named.
check_help_test.py PAGES SOURCES"""
import pathlib
import shutil
import sys
import tempfile

from check_help import Help, texts_of

# File, what is replaced in it, by what, and what must be said then.
FLAWS = (
    ("Applying.htm", 'href="Shortcuts.htm"', 'href="Shortcut.htm"', "there is no page Shortcut.htm"),
    ("Applying.htm", 'href="Shortcuts.htm"', 'href="http://www.orivel.example/"', "leads out of the help"),
    ("Introduction.htm", "UserAccess.htm#sitekeeper", "UserAccess.htm#site", "UserAccess.htm has no place site"),
    ("Introduction.htm", "pictures/main-window.png", "pictures/window.png", "there is no pictures/window.png"),
    ("Introduction.htm", 'alt="', 'name="', "a picture without a text in its place"),
    ("Introduction.htm", "pictures/main-window.png", "style.css", "pictures/main-window.png: no page shows it"),
    ("Introduction.htm", 'href="style.css"', 'href="styles.css"', "there is no styles.css"),
    ("Printing.htm", "<title>Printing the settings</title>", "<title></title>", "Printing.htm: no title"),
    ("Printing.htm", "</ul>", "", "is not in its place"),
    ("Introduction.htm", 'href="Questions.htm"', 'href="About.htm"', "Questions.htm: no other page leads to it"),
    ("Contents.hhc", 'value="About.htm"', 'value="Abut.htm"', "there is no page Abut.htm"),
    ("Contents.hhc", 'value="About.htm"', 'value="Folders.htm"', "Contents.hhc: no entry leads to About.htm"),
    ("Index.hhk", "Shortcuts.htm#manage", "Shortcuts.htm#managed", "Shortcuts.htm has no place managed"),
    ("Index.hhk", 'value="Backup"', 'value="Security copy"', "not in alphabetical order"),
    ("SiteKeeper.hhp", "About.htm\n", "", "About.htm is not among the files"),
    ("SiteKeeper.hhp", "About.htm\n", "About.html\n", "there is no About.html"),
    ("SiteKeeper.hhp", "Full-text search=Yes", "Full-text search=No", "no line Full-text search=Yes"),
    ("Messages.htm", "You do not have permission to run", "You have no permission to run", "the program does not say"),
    ("Messages.htm", "Error reading common desktop folder", "Error", "no page has what the program says: Error reading"),
)


def findings_with(pages, sources, name, wanted, other):
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "help"
        shutil.copytree(pages, copy)
        path = copy / name
        text = path.read_text(encoding="ascii")
        if wanted not in text:
            return [f"{name} has no {wanted}"]
        path.write_text(text.replace(wanted, other), encoding="ascii")
        return list(Help(copy, sources).findings())


def main():
    pages, sources = (pathlib.Path(argument) for argument in sys.argv[1:3])
    failures = [f"not noticed: {expected} ({name})" for name, wanted, other, expected in FLAWS
                if not any(expected in finding for finding in findings_with(pages, sources, name, wanted, other))]
    pieces = list(texts_of('Show(L"One %s of\\n" L"\\"two\\"\\\\", L"three")'))
    if pieces != [["One", 'of "two"\\'], ["three"]]:
        failures.append(f"read from a source: {pieces}")
    print("\n".join(failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
