#!/usr/bin/env python3
"""Runs benchmark programs and prints, for each question and size, our CPU time per item beside that of
every peer in the same run, the ratios, and the bytes per item.

  benchmarks/compare.py build/bench/bin                       all programs there, largest sizes
  benchmarks/compare.py --sizes all --repetitions 3 DIR       every size, and how time per item grows
  benchmarks/compare.py --filter 'clone' DIR/bench_clone      some of them
  benchmarks/compare.py --from run.json                       print a run that --save has kept

A benchmark is named question/shape/who/size and has a counter per_item (seconds); "zel" is us. Figures are
medians over the repetitions, which are made in random order so that a busy moment of the machine does not
fall on one of them alone.
"""
import argparse
import collections
import json
import os
import statistics
import subprocess
import sys
import tempfile

US = "zel"


def programs(paths):
    for path in paths:
        if os.path.isdir(path):
            yield from sorted(os.path.join(path, name) for name in os.listdir(path) if name.startswith("bench_"))
        else:
            yield path


def run(program, repetitions, wanted):
    with tempfile.TemporaryDirectory() as home:
        result = os.path.join(home, "result.json")
        command = [program, f"--benchmark_filter={wanted}", f"--benchmark_repetitions={repetitions}",
                   "--benchmark_enable_random_interleaving=true", f"--benchmark_out={result}",
                   "--benchmark_out_format=json"]
        print("Running", os.path.basename(program), file=sys.stderr)
        done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                              env={**os.environ, "ZELORA_HOME": home})
        if done.returncode != 0:
            sys.exit(f"{program} failed:\n{done.stderr}")
        if not os.path.getsize(result):
            return []  # nothing matched
        with open(result) as file:
            return json.load(file)["benchmarks"]


def medians(entries):
    """{(question, shape, size): {who: {counter: median}}}"""
    values = collections.defaultdict(list)
    for entry in entries:
        parts = entry["name"].removesuffix("/manual_time").split("/")
        if entry.get("run_type") == "aggregate" or len(parts) != 4 or "per_item" not in entry:
            continue
        question, shape, who, size = parts
        for counter in ("per_item", "bytes"):
            if counter in entry:
                values[question, shape, int(size), who, counter].append(entry[counter])
    table = collections.defaultdict(lambda: collections.defaultdict(dict))
    for (question, shape, size, who, counter), found in values.items():
        table[question, shape, size][who][counter] = statistics.median(found)
    return table


def largest_only(table):
    largest = {}
    for question, shape, size in table:
        largest[question, shape] = max(size, largest.get((question, shape), 0))
    return {row: columns for row, columns in table.items() if row[2] == largest[row[:2]] or row[1] == "MB"}


def microseconds(seconds):
    return f"{seconds * 1e6:.3f}"


def print_times(table):
    print("| work | size | us an item | peers: us (our ratio) | bytes an item | peers: bytes |")
    print("|---|---|---|---|---|---|")
    for (question, shape, size), columns in sorted(table.items()):
        ours = columns.get(US, {})
        peers = {who: found for who, found in columns.items() if who != US}
        times = [f"{who} {microseconds(found['per_item'])}"
                 + (f" ({ours['per_item'] / found['per_item']:.2f})" if ours else "") for who, found in sorted(peers.items())]
        sizes = [f"{who} {found['bytes']:.0f}" for who, found in sorted(peers.items()) if "bytes" in found]
        print(f"| {question}, {shape} | {size} | {microseconds(ours['per_item']) if ours else '-'} | {', '.join(times)} |"
              f" {format(ours['bytes'], '.0f') if 'bytes' in ours else ''} | {', '.join(sizes)} |")


def print_growth(table):
    """Time per item at the largest size over that at the smallest, where somebody has both."""
    sizes = collections.defaultdict(lambda: collections.defaultdict(dict))
    for (question, shape, size), columns in table.items():
        for who, found in columns.items():
            sizes[question, shape][who][size] = found["per_item"]
    rows = []
    for (question, shape), columns in sorted(sizes.items()):
        growth = [f"{who} {times[max(times)] / times[min(times)]:.1f}" + f" ({min(times)} to {max(times)})"
                  for who, times in columns.items() if len(times) > 1]
        if growth:
            rows.append(f"| {question}, {shape} | {', '.join(growth)} |")
    if rows:
        print("\n| work | time an item grows by |\n|---|---|", *rows, sep="\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs", nargs="*", help="benchmark programs, or folders of them")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--filter", default=".", help="regular expression over the names")
    parser.add_argument("--sizes", choices=("all", "largest"), default="largest")
    parser.add_argument("--save", metavar="FILE", help="keep the run as JSON")
    parser.add_argument("--from", dest="kept", metavar="FILE", action="append", default=[], help="print a kept run")
    arguments = parser.parse_args()
    if not arguments.programs and not arguments.kept:
        parser.error("name a program, a folder or a kept run")

    entries = []
    for name in arguments.kept:
        with open(name) as file:
            entries += json.load(file)["benchmarks"]
    wanted = arguments.filter
    if wanted == "." and arguments.sizes == "largest":
        wanted = "/(1000000|5|50|100|1000|5000000|10000000)$"
    for program in programs(arguments.programs):
        entries += run(program, arguments.repetitions, wanted)
    if arguments.save:
        with open(arguments.save, "w") as file:
            json.dump({"benchmarks": entries}, file, indent=1)
    table = medians(entries)
    print_times(table if arguments.sizes == "all" else largest_only(table))
    print_growth(table)


main()
