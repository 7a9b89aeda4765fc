#!/usr/bin/env python3
"""Runs the benchmark program and prints what it found, or compares instruction counts.

    run.py PROGRAM report [--quick]   times and counts each way to do each operation
    run.py PROGRAM compare TABLE      fails if the library takes more instructions than TABLE says
    run.py PROGRAM update TABLE       writes TABLE

Times are nanoseconds for one operation: the 20th percentile of the repetitions, which are
interleaved at random with those of the other ways, and their median; with two threads, the time
that passes divided by the operations of both. Instructions are callgrind's, the loop around the
operation included.
"""
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

GROWTH_MAX = 2  # instructions
ENVIRONMENT = {
    **os.environ,
    "LD_BIND_NOW": "1",
    "GLIBC_TUNABLES": "glibc.rtld.optional_static_tls=16384",  # for allocators loaded aside
}
LARGE = re.compile(r"100000")  # keys: too many to count, and for a quick look


def operations_of(program, with_large):
    """The operations that the program knows, in its order, and the ways to do each."""
    listed = subprocess.run([program, "--benchmark_list_tests=true"], check=True,
                            stdout=subprocess.PIPE, text=True, env=ENVIRONMENT).stdout
    operations = {}
    for line in listed.splitlines():
        operation, way = line.split("/")[:2]
        if with_large or not LARGE.search(operation):
            operations.setdefault(operation, []).append(way)
    return operations


def time_ways(program, operation, repetitions, seconds):
    """Maps each way to do an operation to its times, and says what was left out."""
    def on_one_processor():
        if "threads" not in operation:
            os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})

    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run([program, f"--benchmark_filter=^{operation}/",
                        f"--benchmark_repetitions={repetitions}",
                        f"--benchmark_min_time={seconds}",
                        "--benchmark_enable_random_interleaving=true",
                        f"--benchmark_out={out.name}", "--benchmark_out_format=json"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       env=ENVIRONMENT, preexec_fn=on_one_processor)
        result = json.load(out)
    times = {}
    for run in result["benchmarks"]:
        if run["run_type"] == "iteration":
            way = run["name"].split("/")[1]
            clock = "real_time" if "real_time" in run["name"] else "cpu_time"
            times.setdefault(way, []).append(run[clock] / run["times"])
    return times, result["context"]["not_installed"]


def callgrind(*command):
    """Runs a command under callgrind; maps the name of each dump to its instructions."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind",
                        f"--callgrind-out-file={folder}/out", *command],
                       check=True, env=ENVIRONMENT)
        counts = {}
        for path in pathlib.Path(folder).iterdir():
            text = path.read_text()
            trigger = re.search(r"^desc: Trigger: (?:Client Request: )?(.*)$", text, re.M)
            total = re.search(r"^(?:totals|summary): (\d+)$", text, re.M)
            counts[trigger.group(1)] = int(total.group(1))
    return counts


def count_ways(program, operations):
    """Maps (operation, way) to the instructions for one operation."""
    counts = {}
    for name, count in callgrind("--instr-atstart=no", program, "--count", *operations).items():
        if name.count("/") == 2:
            operation, way, times = name.split("/")
            counts[operation, way] = count / int(times)
    return counts


def report(program, quick):
    """Prints a table of all operations, and what loading the library costs."""
    operations = operations_of(program, with_large=not quick)
    counts = count_ways(program, [name for name in operations if not LARGE.search(name)])
    seconds = 0.002 if quick else 0.005
    not_installed = ""

    print("| Operation | Way | p20, ns | Median, ns | Instructions | Library / this (p20) |")
    print("|---|---|---:|---:|---:|---:|")
    for operation, ways in operations.items():
        repetitions = 5 if LARGE.search(operation) else 9 if quick else 41
        times, not_installed = time_ways(program, operation, repetitions, seconds)
        p20 = {way: statistics.quantiles(times[way], n=5)[0] for way in ways}
        for way in ways:
            title = operation if way == ways[0] else ""
            count = f"{counts[operation, way]:.1f}" if (operation, way) in counts else ""
            print(f"| {title} | {way} | {p20[way]:.2f} | {statistics.median(times[way]):.2f} "
                  f"| {count} | {p20['library'] / p20[way]:.2f} |", flush=True)
    if not_installed:
        print(f"\nNot installed, and left out: {not_installed}")

    folder = pathlib.Path(program).parent
    bare, with_runtime = (sum(callgrind(str(folder / name)).values())
                          for name in ("load", "load_with_runtime"))
    print(f"\nLoading: {bare:,} instructions from the start of a program to its end; with a C++ "
          f"runtime {with_runtime:,}.")


def count_library(program):
    """The instructions of the library's own ways, as lines of the table."""
    counts = count_ways(program, operations_of(program, with_large=False))
    return {f"{operation}: {way}": count for (operation, way), count in counts.items()
            if way.startswith("library")}


def update(program, table):
    """Writes the table."""
    rows = sorted(count_library(program).items())
    table.write_text("".join(f"{count:9.1f}  {name}\n" for name, count in rows))


def compare(program, table):
    """Compares with the table; tells every difference that matters."""
    expected = {}
    for line in table.read_text().splitlines():
        count, name = line.split(maxsplit=1)
        expected[name] = float(count)
    found = count_library(program)
    faults = 0
    for name in sorted(expected.keys() | found.keys()):
        if name not in expected or name not in found:
            print(f"{name}: {'not in the table' if name in found else 'not measured any more'}")
            faults += 1
        elif found[name] > expected[name] + GROWTH_MAX:
            print(f"{name}: {found[name]:.1f} instructions, up from {expected[name]:.1f}")
            faults += 1
        elif found[name] < expected[name] - GROWTH_MAX:
            print(f"{name}: {found[name]:.1f} instructions, down from {expected[name]:.1f}: "
                  "update the table to keep it so")
    print(f"{len(found)} hot paths counted, {faults} of them at fault")
    return faults == 0


def main(arguments):
    if len(arguments) >= 2 and arguments[1] == "report" and arguments[2:] in ([], ["--quick"]):
        report(arguments[0], quick=bool(arguments[2:]))
    elif len(arguments) == 3 and arguments[1] == "update":
        update(arguments[0], pathlib.Path(arguments[2]))
    elif len(arguments) == 3 and arguments[1] == "compare":
        return 0 if compare(arguments[0], pathlib.Path(arguments[2])) else 1
    else:
        print(__doc__, file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
