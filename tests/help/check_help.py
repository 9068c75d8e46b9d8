#!/usr/bin/env python3
"""Reads the help pages and says what is wrong with them: check_help.py PAGES SOURCES [COMPILED LISTING_PROGRAM]
Links, anchors and pictures that lead nowhere; pages that the contents, the project or no other page name; entries of
contents and index that lead nowhere; pages without a title; messages that the program has not, texts of the program that
the pages have not; and files that the compiled help has not. Prints a line for each finding; exit code 1 when there is
one."""
import html
import html.parser
import pathlib
import re
import subprocess
import sys

START = "Introduction.htm"
PROJECT = "SiteKeeper.hhp"
CONTENTS = "Contents.hhc"
INDEX = "Index.hhk"
MESSAGES = "Messages.htm"

# From so many words on a text of the sources is taken for one that somebody reads.
READ_WORDS = 4
# What has so many words and is not read by itself: a pattern of the registry or of a command line, and the About box.
NOT_READ = re.compile(r"^Software\\|^/t /qb |Version")


class Page(html.parser.HTMLParser):
    """The parts of a page that the checks look at."""

    def __init__(self, text):
        super().__init__()
        self.title = ""
        self.links = []
        self.pictures = []
        self.anchors = set()
        self.messages = []  # each as its fixed pieces, between what differs
        self.text = ""
        self._open = []
        self.feed(text)
        self.unclosed = [tag for tag, _ in self._open]

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if tag == "a" and "href" in given:
            self.links.append(given["href"])
        if tag in ("img", "link"):
            self.pictures.append(given.get("src") or given.get("href", ""))
        if tag == "img" and not given.get("alt"):
            self.pictures.append("(a picture without a text in its place)")
        if "id" in given:
            self.anchors.add(given["id"])
        is_message = (given.get("class") or "").startswith("message")
        if is_message:
            self.messages.append([""])
        if tag == "i" and self._in_message():
            self.messages[-1].append("")
        if tag == "br":
            self.handle_data(" ")
        if tag not in ("br", "img", "link", "meta", "input", "hr"):
            self._open.append((tag, is_message))

    def handle_endtag(self, tag):
        if self._open and self._open[-1][0] == tag:
            self._open.pop()
        else:
            self._open.append(("/" + tag, False))

    def handle_data(self, data):
        tags = [tag for tag, _ in self._open]
        if "title" in tags:
            self.title += data
        else:
            self.text += data
        if self._in_message() and tags[-1] != "i":
            self.messages[-1][-1] += data

    def _in_message(self):
        return any(is_message for _, is_message in self._open)


def squeezed(text):
    return " ".join(text.split())


def texts_of(source):
    """The wide texts of a C++ source, neighbours joined, as their fixed pieces between what is filled in."""
    literal = r'L"((?:[^"\\\n]|\\.)*)"'
    for match in re.finditer(rf"{literal}(?:\s*{literal})*", source):
        joined = "".join(re.findall(literal, match.group(0)))
        plain = joined.replace("\\n", " ").replace("\\t", " ").replace('\\"', '"').replace("\\\\", "\\")
        yield [squeezed(piece) for piece in re.split(r"%[sd]", plain)]


def program_texts(sources):
    for path in sorted(sources.rglob("*.cpp")):
        yield from texts_of(path.read_text(encoding="utf-8"))


def pieces_match(pieces, text):
    """Whether the fixed pieces follow each other in the text."""
    at = 0
    for piece in pieces:
        at = text.find(piece, at)
        if at < 0:
            return False
        at += len(piece)
    return True


def site_entries(text):
    return [(html.unescape(name), html.unescape(local)) for name, local in re.findall(
        r'<param name="Name" value="([^"]*)">\s*<param name="Local" value="([^"]*)">', text)]


def project_files(text):
    return [line.strip() for line in text.split("[FILES]")[-1].splitlines() if line.strip()]


class Help:
    def __init__(self, folder, sources):
        self.folder = folder
        self.sources = sources
        self.pages = {path.name: Page(path.read_text(encoding="ascii")) for path in sorted(folder.glob("*.htm"))}

    def target_finding(self, where, link, base=""):
        """What is wrong with a link, or nothing."""
        if re.match(r"[a-z]+:", link):
            return f"{where}: the link {link} leads out of the help"
        name, _, anchor = link.partition("#")
        name = name or base
        if name not in self.pages:
            return f"{where}: there is no page {name}"
        if anchor and anchor not in self.pages[name].anchors:
            return f"{where}: {name} has no place {anchor}"
        return None

    def page_findings(self):
        reached = {START}
        for name, page in self.pages.items():
            if not page.title.strip():
                yield f"{name}: no title"
            for tag in page.unclosed:
                yield f"{name}: <{tag}> is not in its place"
            for link in page.links:
                yield self.target_finding(name, link, name)
                if link.partition("#")[0] != name:
                    reached.add(link.partition("#")[0])
            for picture in page.pictures:
                if not (self.folder / picture).is_file():
                    yield f"{name}: there is no {picture}"
        for name in sorted(set(self.pages) - reached):
            yield f"{name}: no other page leads to it"
        for path in sorted((self.folder / "pictures").glob("*")):
            if not any(f"pictures/{path.name}" in page.pictures for page in self.pages.values()):
                yield f"pictures/{path.name}: no page shows it"

    def list_findings(self):
        for name in (CONTENTS, INDEX):
            entries = site_entries((self.folder / name).read_text(encoding="ascii"))
            if not entries:
                yield f"{name}: no entries"
            for title, local in entries:
                yield self.target_finding(f"{name}, {title}", local)
            if len(set(entries)) != len(entries):
                yield f"{name}: an entry is there twice"
            missing = set(self.pages) - {local.partition("#")[0] for _, local in entries}
            for page in sorted(missing):
                yield f"{name}: no entry leads to {page}"
            if name == INDEX and [title.lower() for title, _ in entries] != sorted(
                    title.lower() for title, _ in entries):
                yield f"{name}: not in alphabetical order"

    def project_findings(self):
        text = (self.folder / PROJECT).read_text(encoding="ascii")
        for wanted in (f"Default topic={START}", f"Contents file={CONTENTS}", f"Index file={INDEX}",
                       "Full-text search=Yes", "Compiled file=SiteKeeper.chm"):
            if wanted not in text.splitlines():
                yield f"{PROJECT}: no line {wanted}"
        for name in sorted(self.needed_files() - set(project_files(text))):
            yield f"{PROJECT}: {name} is not among the files"
        for name in project_files(text):
            if not (self.folder / name).is_file():
                yield f"{PROJECT}: there is no {name}"

    def needed_files(self):
        pictures = {f"pictures/{path.name}" for path in (self.folder / "pictures").glob("*")}
        return set(self.pages) | pictures | {path.name for path in self.folder.glob("*.css")}

    def message_findings(self):
        """Pages and sources have the same messages."""
        texts = list(program_texts(self.sources))
        whole = [" ".join(pieces) for pieces in texts]
        for message in self.pages[MESSAGES].messages:
            pieces = [squeezed(piece) for piece in message]
            if not any(pieces_match(pieces, text) for text in whole):
                yield f"{MESSAGES}: the program does not say: {' ... '.join(pieces)}"
        pages = [squeezed(page.text) for page in self.pages.values()]
        for pieces, text in zip(texts, whole):
            is_read = len(text.split()) >= READ_WORDS and not NOT_READ.search(text)
            if is_read and not any(pieces_match(pieces, page) for page in pages):
                yield f"no page has what the program says: {text}"

    def compiled_findings(self, compiled, lister):
        listing = subprocess.run([lister, "list", str(compiled)], check=True, capture_output=True, text=True).stdout
        held = {line.split(maxsplit=3)[3].lstrip("/") for line in listing.splitlines() if line.count("/")}
        for name in sorted((self.needed_files() | {CONTENTS, INDEX}) - held):
            yield f"{compiled.name}: without {name}"

    def findings(self):
        for check in (self.page_findings, self.list_findings, self.project_findings, self.message_findings):
            yield from (finding for finding in check() if finding)


def main():
    help_pages = Help(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
    findings = list(help_pages.findings())
    if len(sys.argv) > 3:
        findings += help_pages.compiled_findings(pathlib.Path(sys.argv[3]), sys.argv[4])
    print("\n".join(findings))
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
