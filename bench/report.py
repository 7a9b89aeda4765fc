#!/usr/bin/env python3
"""Times every implementation of each operation and reports the results.

    report.py run PROGRAM RESULTS [--quick]   times all of them and prints a table
    report.py page RESULTS PAGE               writes the table into PAGE, and the charts beside it

Each operation is timed in several processes, interleaved with the other operations and pinned to one
CPU, except where threads are measured. Reported are the median over the processes and the median of
the ratios within each, because the machine may be shared.
"""
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

MARKS = "<!-- table: begin -->", "<!-- table: end -->"
ROWS = [  # of the page: title, operation, argument, strongest alternative
    ("name of a value", "name", "", "strerrordesc_np"),
    ("eight suppressed log statements", "eight suppressed statements", "", "glog"),
    ("traced setter, traces off", "traced setter", "", ""),
    ("argument check, passing", "argument check", "", "Boost.Outcome"),
    ("port type, accepted", "port type", "", "switch"),
    ("multicast key, passing, IPv4", "multicast key IPv4", "", ""),
    ("the same, IPv6", "multicast key IPv6", "", ""),
    ("multicast route, passing, IPv4", "multicast route IPv4", "", ""),
    ("the same, IPv6", "multicast route IPv6", "", ""),
    ("memory, get and put", "memory", "", "talloc"),
    ("the same, single-threaded process", "memory, alone", "", "talloc"),
    ("map of 255 keys, lookup", "map find", "255", "Boost.Intrusive"),
    ("the same, remove and insert", "map erase and insert", "255", "Boost.Intrusive"),
    ("pool, get and put", "pool get and put", "", "boost::pool"),
    ("event with 1 callback", "event", "1", "libsigc++"),
    ("event with 8 callbacks", "event", "8", "libsigc++"),
]
PICTURES = [  # file, operation, x axis, what the y axis counts nanoseconds for
    ("find", "map find", "keys", "a look-up"),
    ("event", "event", "callbacks", "an event"),
    ("memory", "memory by threads", "threads", "a block, of all threads together"),
]


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def run_once(program, operation, seconds):
    """Maps each implementation of an operation, with its argument, to nanoseconds."""
    def on_one_processor():
        if "threads" not in operation:
            os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})

    run = subprocess.run([program, f"--benchmark_filter=^{operation}/",
                          f"--benchmark_min_time={seconds}", "--benchmark_format=json"],
                         check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                         preexec_fn=on_one_processor)
    return {re.sub(r"real_time/threads:", "", way["name"].split("/", 1)[1]):
            1e9 / way["items_per_second"] for way in json.loads(run.stdout)["benchmarks"]}


def run(program, results, *options):
    quick = bool(options)
    names = subprocess.run([program, "--benchmark_list_tests"], check=True, text=True,
                           stdout=subprocess.PIPE).stdout.splitlines()
    operations = list(dict.fromkeys(name.split("/")[0] for name in names))
    times = {operation: {} for operation in operations}
    for _ in range(2 if quick else 9):
        for operation in operations:
            for way, time in run_once(program, operation, 0.005 if quick else 0.1).items():
                times[operation].setdefault(way, []).append(time)
    version = subprocess.run(["g++", "--version"], stdout=subprocess.PIPE, text=True).stdout
    found = {"processor": processor(), "compiler": version.splitlines()[0], "times": times}
    if not quick:  # the page needs many long runs
        pathlib.Path(results).write_text(json.dumps(found, indent=1))
    print("| operation | way | ns | library / this |\n|---|---|---:|---:|")
    for operation, ways in times.items():
        for way in ways:
            print(f"| {operation} | {way} | {statistics.median(ways[way]):.1f} "
                  f"| {ratio(ways, way):.1f} |")


def ratio(ways, way):
    """The library's time divided by another implementation's, with the same argument."""
    library = ways["/".join(["library", *way.split("/")[1:]])]
    return statistics.median(a / b for a, b in zip(library, ways[way]))


def table(found):
    yield "| operation | ns | ratio to floor | ratio to strongest alternative |\n|---|---:|---:|---|\n"
    for title, operation, argument, rival in ROWS:
        ways = found["times"][operation]
        library, floor, other = (f"{way}/{argument}".rstrip("/")
                                 for way in ("library", "floor", rival))
        beside = f"{ratio(ways, other):.1f} ({rival})" if rival else ""
        yield (f"| {title} | {statistics.median(ways[library]):.1f} "
               f"| {ratio(ways, floor):.1f} | {beside} |\n")


def draw(found, path, operation, what_grows, what):
    curves = {}
    for key, times in found["times"][operation].items():
        way, argument = key.split("/")
        curves.setdefault(way, []).append((int(argument), statistics.median(times)))
    xs = [x for x, _ in curves["library"]]
    ticks = [f"'{x:,}' {x}" for x in xs]
    blocks = [f"$way{i} << END\n" + "".join(f"{x} {y:.2f}\n" for x, y in points) + "END"
              for i, points in enumerate(curves.values())]
    lines = [f"$way{i} with linespoints linewidth 2 title '{way}'" for i, way in enumerate(curves)]
    script = ["set terminal svg size 760,400 font 'sans-serif,13' background 'white'",
              f"set output '{path}'", "set logscale xy", "set key outside", "set grid",
              f"set xlabel '{what_grows}'", f"set ylabel 'nanoseconds for {what}'",
              f"set xrange [{xs[0] / 1.1}:{xs[-1] * 1.1}]",
              f"set xtics ({', '.join(ticks)})", *blocks, "plot " + ", ".join(lines)]
    subprocess.run(["gnuplot"], input="\n".join(script) + "\n", check=True, text=True)


def page(results, document):
    found = json.loads(pathlib.Path(results).read_text())
    document = pathlib.Path(document)
    text = document.read_text()
    before, after = text.split(MARKS[0])[0], text.split(MARKS[1])[1]
    conditions = f"\n{found['processor']}; {found['compiler']}.\n"
    document.write_text(before + MARKS[0] + "\n" + "".join(table(found)) + conditions + MARKS[1]
                        + after)
    for name, *picture in PICTURES:
        draw(found, document.parent / f"{name}.svg", *picture)


if __name__ == "__main__":
    commands = {"run": run, "page": page}
    if len(sys.argv) < 4 or sys.argv[1] not in commands or sys.argv[4:] not in ([], ["--quick"]):
        sys.exit(__doc__)
    commands[sys.argv[1]](*sys.argv[2:])
