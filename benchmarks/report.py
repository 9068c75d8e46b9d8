#!/usr/bin/env python3
"""Makes tables of what ./bench has measured.

report.py tables RESULTS        prints the run and a table for each program that has a result
report.py page RESULTS PAGE     writes them into the page, between the comments that name them

RESULTS is the folder of one run: run.txt and, for each program, NAME.json as Google Benchmark writes it (names are
"what/who/size") or NAME.tsv (what, size, unit, ours, the peer, its value). Medians are compared with medians.
"""
import collections
import dataclasses
import json
import math
import os
import re
import statistics
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
OURS = "ours"
NOT_MEASURED = {"bare_dialog"}  # programs that are peers of others
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
KIB = 1024
NO_SIZE = -1
GROWTH_FROM = 1000  # below it fixed costs hide how the work grows


class ReportError(Exception):
    """The results, or the page, are not whole."""


@dataclasses.dataclass
class Aim:
    """The most that is allowed: beside a peer (the fastest where none is named), by itself, or in growth."""

    ratio: float = None
    peer: str = None
    from_size: int = NO_SIZE
    most: float = None
    growth: float = None


AIMS = {
    ("ini_bench", "load"): Aim(0.4, growth=1.2),
    ("ini_bench", "find"): Aim(1, growth=1.2),
    ("ini_bench", "replace"): Aim(0.6, growth=1.2),
    ("ini_memory", "peak of one load"): Aim(2, "inih"),
    ("windows_bench", "start to main window, without the splash"): Aim(1.25),
    ("windows_bench", "file, artwork aside"): Aim(most=400),
    ("name_list_bench", "fill a list with names"): Aim(1.3),
    ("name_list_bench", "move every tenth name"): Aim(1.5, from_size=100_000),
    ("profile_bench", "load, find each of a section"): Aim(1 / 20, from_size=10_000),
    ("profile_bench", "the same, key by key"): Aim(1 / 20, from_size=10_000),
    ("reminder_bench", "newest of so many files"): Aim(1.2),
    ("reminder_bench", "page of so many bytes, collected and searched"): Aim(5, "copy", KIB * KIB),
    ("trusted_paths_bench", "find the products"): Aim(1.1, growth=1.1),
}


@dataclasses.dataclass
class Row:
    """One thing measured, in nanoseconds or bytes."""

    what: str
    size: int  # NO_SIZE where there is none
    is_memory: bool = False
    ours: float = None
    peers: dict = dataclasses.field(default_factory=dict)


# --- reading -------------------------------------------------------------------------------------------------------


def read_google(path):
    """{(what, size): Row}; time on the clock where the benchmark asks for it, of the processor otherwise."""
    samples = collections.defaultdict(list)
    with open(path, encoding="utf-8") as file:
        # The repetitions come in a mixed order.
        for run in sorted(json.load(file)["benchmarks"], key=lambda run: run.get("family_index", 0)):
            if run.get("error_occurred"):
                raise ReportError(f"{path}: {run['name']}: {run.get('error_message')}")
            if run["run_type"] == "iteration":
                what, who, *rest = run["run_name"].split("/")
                time = run["real_time" if "real_time" in rest else "cpu_time"] * NANOSECONDS[run["time_unit"]]
                size = next((int(part) for part in rest if part.isdigit()), NO_SIZE)
                samples[what, size, who].append(time)
    rows = {}
    for (what, size, who), times in samples.items():
        row = rows.setdefault((what, size), Row(what, size))
        if who == OURS:
            row.ours = statistics.median(times)
        else:
            row.peers[who] = statistics.median(times)
    return rows


def read_lines(path):
    rows = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            fields = line.rstrip("\n").split("\t")
            if len(fields) != 6 or fields[2] not in ("ms", "KiB"):
                raise ReportError(f"{path}: not a result: {line!r}")
            what, size, unit, ours, peer, peers = fields
            factor = KIB if unit == "KiB" else NANOSECONDS[unit]
            count = int(size) or NO_SIZE
            row = rows.setdefault((what, count), Row(what, count, unit == "KiB"))
            row.ours = float(ours) * factor
            row.peers[peer] = float(peers) * factor
    return rows


def read_program(folder, program):
    """The rows of one program, smaller sizes first; nothing when it was not measured."""
    for ending, read in ((".json", read_google), (".tsv", read_lines)):
        path = os.path.join(folder, program + ending)
        if os.path.exists(path):
            rows = list(read(path).values())
            order = list(dict.fromkeys(row.what for row in rows))
            rows.sort(key=lambda row: (order.index(row.what), row.size))
            check_rows(path, rows)
            return rows
    return None


def check_rows(path, rows):
    if not rows:
        raise ReportError(f"{path}: no result")
    for row in rows:
        if row.ours is None or not row.peers:
            raise ReportError(f"{path}: {row.what}, {row.size}: one side is missing")
        if min(row.ours, *row.peers.values()) <= 0:
            raise ReportError(f"{path}: {row.what}, {row.size}: not positive")


def programs():
    """All benchmarks that are built, in the order of their build file."""
    with open(os.path.join(HERE, "CMakeLists.txt"), encoding="utf-8") as file:
        names = re.findall(r"^\s*add_executable\((\w+)", file.read(), re.MULTILINE)
    return [name for name in names if name not in NOT_MEASURED]


# --- words ---------------------------------------------------------------------------------------------------------


def digits(value):
    return f"{value:.0f}" if value >= 100 else f"{value:.3g}"


def shown_value(value, is_memory):
    units = [(1, "B"), (KIB, "KiB"), (KIB * KIB, "MiB")] if is_memory else [
        (1, "ns"), (1e3, "µs"), (1e6, "ms"), (1e9, "s")]
    factor, unit = next(pair for pair in reversed(units) if value >= pair[0] or pair is units[0])
    return f"{digits(value / factor)} {unit}"


def shown_size(row):
    if row.size == NO_SIZE:
        return ""
    if "bytes" in row.what:
        return shown_value(row.size, True)
    return f"{row.size:,}"


def shown_ratio(ratio):
    return f"{ratio:.2f}" if ratio >= 0.1 else f"1/{digits(1 / ratio)}"


def shown_peers(row):
    ordered = sorted(row.peers.items(), key=lambda pair: pair[1])
    return "; ".join(f"{name} {shown_value(value, row.is_memory)}" for name, value in ordered)


def ratio_of(row, aim):
    peers = row.peers
    if aim and aim.peer:
        return row.ours / peers[aim.peer]
    return row.ours / min(peers.values())


def shown_aim(row, aim):
    if not aim or row.size < aim.from_size or (aim.ratio is None and aim.most is None):
        return ""
    if aim.most is not None:
        return f"{digits(aim.most)} KiB, {verdict(row.ours / KIB, aim.most)}"
    beside = f" of {aim.peer}" if aim.peer else ""
    ratio = ratio_of(row, aim)
    own = f" ({shown_ratio(ratio)})" if aim.peer and len(row.peers) > 1 else ""
    most = f"{aim.ratio:g}" if aim.ratio >= 0.1 else shown_ratio(aim.ratio)
    return f"{most}{beside}, {verdict(ratio, aim.ratio)}{own}"


def verdict(value, most):
    return "met" if value <= most else "**missed**"


def growth(points):
    """The exponent of n between the first size that counts and the last; nothing where there are no two sizes."""
    points = sorted(points)
    if any(size >= GROWTH_FROM for size, _ in points[:-1]):
        points = [point for point in points if point[0] >= GROWTH_FROM]
    if len(points) < 2 or points[0][0] <= 0:
        return None
    (first, before), (last, after) = points[0], points[-1]
    return first, last, math.log(after / before) / math.log(last / first)


def growth_lines(program, rows):
    for what in dict.fromkeys(row.what for row in rows):
        of_what = [row for row in rows if row.what == what and row.size > 0]
        ours = growth([(row.size, row.ours) for row in of_what])
        if ours:
            aim = AIMS.get((program, what), Aim()).growth
            said = f", aim {aim}: {verdict(ours[2], aim)}" if aim else ""
            beside = fastest_growth(of_what)
            sizes = " to ".join(shown_size(Row(what, size)) for size in ours[:2])
            yield f"Growth of \"{what}\", {sizes}: n^{ours[2]:.2f}{said}{beside}."


def fastest_growth(rows):
    name = min(rows[-1].peers, key=rows[-1].peers.get)
    peers = growth([(row.size, row.peers[name]) for row in rows if name in row.peers])
    return f"; {name} n^{peers[2]:.2f}" if peers else ""


# --- tables --------------------------------------------------------------------------------------------------------


def table(cells):
    widths = [max(len(row[column]) for row in cells) for column in range(len(cells[0]))]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in cells]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(lines)


def program_text(program, rows):
    cells = [["what", "size", OURS, "peers, best first", "ratio to the best", "aim"]]
    for row in rows:
        aim = AIMS.get((program, row.what))
        cells.append([row.what, shown_size(row), shown_value(row.ours, row.is_memory), shown_peers(row),
                      shown_ratio(ratio_of(row, None)), shown_aim(row, aim)])
    lines = list(growth_lines(program, rows))
    return table(cells) + "".join(f"\n\n{line}" for line in lines)


def run_text(folder):
    with open(os.path.join(folder, "run.txt"), encoding="utf-8") as file:
        facts = [line.rstrip("\n").split("\t") for line in file]
    if any(len(fact) != 2 or not fact[1] for fact in facts):
        raise ReportError("run.txt: a fact without a value")
    return table([["the run", ""]] + facts)


def print_tables(folder):
    print("\n" + run_text(folder))
    for program in programs():
        rows = read_program(folder, program)
        if rows:
            print(f"\n{program}\n\n{program_text(program, rows)}")


def check_aims(program, rows):
    for owner, what in AIMS:
        if owner == program and all(row.what != what for row in rows):
            raise ReportError(f"{program}: there is an aim for \"{what}\", which it does not measure")


def filled_page(folder, page):
    """The page with this run's numbers; every program that is built must have its place and its result."""
    texts = {"run": run_text(folder)}
    for program in programs():
        rows = read_program(folder, program)
        if rows is None:
            raise ReportError(f"{program} has no result")
        check_aims(program, rows)
        texts[program] = program_text(program, rows)
    for name, text in texts.items():
        pattern = re.compile(rf"(<!-- numbers: {name} -->\n).*?(<!-- end -->)", re.DOTALL)
        page, count = pattern.subn(lambda found: f"{found[1]}\n{text}\n\n{found[2]}", page)
        if count != 1:
            raise ReportError(f"the page has {count} places for the numbers of {name}")
    return page


def write_page(folder, path):
    with open(path, encoding="utf-8") as file:
        page = filled_page(folder, file.read())
    with open(path + ".new", "w", encoding="utf-8") as file:
        file.write(page)
    os.replace(path + ".new", path)


def main():
    arguments = sys.argv[1:]
    try:
        if len(arguments) == 2 and arguments[0] == "tables":
            print_tables(arguments[1])
        elif len(arguments) == 3 and arguments[0] == "page":
            write_page(arguments[1], arguments[2])
        else:
            sys.exit(__doc__)
    except ReportError as error:
        sys.exit(f"report.py: {error}")


if __name__ == "__main__":
    main()
