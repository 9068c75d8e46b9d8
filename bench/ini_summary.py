#!/usr/bin/env python3
"""ini_summary.py RESULTS [INI_MEMORY]: says how the store does beside its peers.

RESULTS is what `ini_bench --benchmark_out=RESULTS --benchmark_repetitions=N` wrote. Times are medians of processor time:
all work is in memory and in one thread. With the path of ini_memory the peaks of one load are measured too.
"""
import collections
import json
import math
import statistics
import subprocess
import sys

OURS = "ours"
AIMS = {"load": 0.4, "find": 1.0, "replace": 0.6}
TITLES = {"load": "load", "find": "load, find one", "replace": "load, replace a section, save sorted"}
GROWTH_AIM, MEMORY_AIM = 1.2, 2.0
GROWTH_FROM, GROWTH_TO = 1_000, 1_000_000
MEMORY_COUNTS = (100_000, 1_000_000)


def medians(path):
    """{task: {count: {library: microseconds}}}"""
    times = collections.defaultdict(list)
    with open(path, encoding="utf-8") as file:
        for run in json.load(file)["benchmarks"]:
            if run["run_type"] == "iteration" and not run.get("error_occurred"):
                times[run["run_name"]].append(run["cpu_time"])
    table = collections.defaultdict(lambda: collections.defaultdict(dict))
    for name, values in times.items():
        task, library, count = name.split("/")
        table[task][int(count)][library] = statistics.median(values)
    return table


def verdict(value, aim):
    return f"{value:5.2f}  aim {aim}  {'met' if value <= aim else 'MISSED'}"


def print_times(task, counts):
    print(f"{TITLES[task]}: microseconds")
    libraries = list(next(iter(counts.values())))
    print(f"{'entries':>9}" + "".join(f"{library:>13}" for library in libraries) + "   ratio to the fastest peer")
    for count, times in sorted(counts.items()):
        fastest = min((library for library in times if library != OURS), key=times.get)
        row = "".join(f"{times[library]:13.1f}" if library in times else f"{'-':>13}" for library in libraries)
        print(f"{count:9}{row}   {fastest:10}{verdict(times[OURS] / times[fastest], AIMS[task])}")
    ours = {count: times[OURS] for count, times in counts.items()}
    if GROWTH_FROM in ours and GROWTH_TO in ours:
        growth = math.log(ours[GROWTH_TO] / ours[GROWTH_FROM]) / math.log(GROWTH_TO / GROWTH_FROM)
        print(f"growth exponent of ours, {GROWTH_FROM} to {GROWTH_TO}: {verdict(growth, GROWTH_AIM)}")
    print()


def print_memory(program):
    def peak(library, count):
        return int(subprocess.run([program, library, str(count)], check=True, capture_output=True).stdout)

    print("peak memory of one load, without the input: KiB")
    for count in MEMORY_COUNTS:
        ours, inih = peak(OURS, count), peak("inih", count)
        print(f"{count:9}  ours {ours}  inih {inih}  ratio {verdict(ours / inih, MEMORY_AIM)}")


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    for task, counts in medians(sys.argv[1]).items():
        print_times(task, counts)
    if len(sys.argv) == 3:
        print_memory(sys.argv[2])


if __name__ == "__main__":
    main()
