#!/usr/bin/env python3
"""Runs the benchmarks and prints a table of medians.

    report.py PROGRAM [--quick | --page]

--quick runs each benchmark briefly; its times mean little. --page also writes the table into
docs/performance.md, and the pictures beside it.
"""
import json
import pathlib
import re
import statistics
import subprocess
import sys

PAGE = pathlib.Path(__file__).parents[1] / "docs/performance.md"
MARKS = "<!-- table: begin -->\n", "<!-- table: end -->\n"
PICTURES = {"event": "event, callbacks", "find": "lookup in a map, keys"}


def run(program, processes, seconds):
    """Returns the medians in nanoseconds, by operation and size, by way; and the conditions."""
    times = {}
    # A process that has had a thread stays multi-threaded.
    for part in ("-thread", "thread") * processes:
        found = json.loads(subprocess.check_output(
            [program, f"--benchmark_filter={part}", f"--benchmark_min_time={seconds}",
             "--benchmark_repetitions=3", "--benchmark_enable_random_interleaving",
             "--benchmark_report_aggregates_only", "--benchmark_format=json"],
            stderr=subprocess.DEVNULL))
        for result in found["benchmarks"]:
            if result["aggregate_name"] == "median":
                name = result["run_name"].removesuffix("/real_time/threads:2")
                operation, way, *size = name.split("/")
                ways = times.setdefault((operation, *map(int, size)), {})
                ways.setdefault(way, []).append(1e9 / result["items_per_second"])
    medians = {operation: {way: statistics.median(ways[way])
                           for way in sorted(ways, key=lambda way: way != "library")}
               for operation, ways in sorted(times.items())}
    cpu = re.search("model name.*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    return medians, f"{cpu.group(1) if cpu else 'unknown CPU'}; {found['context']['compiler']}"


def table(times, conditions):
    yield "| operation | library | strongest alternative | ratio |\n|---|---:|---:|---:|\n"
    for (operation, *size), ways in times.items():
        (_, library), *others = ways.items()
        other = [f"{time:.1f} ns ({way}) | {library / time:.1f}" for way, time in others] or ["|"]
        title = ": ".join([operation, *(f"{n:,}" for n in size)])
        yield f"| {title} | {library:.1f} ns | {other[0]} |\n"
    yield f"\n{conditions}.\n"


def draw(times, path, operation):
    points = [(*size, ways) for (name, *size), ways in times.items() if name == operation]
    title, what_grows = operation.split(", ")
    data = "\n".join(" ".join(map(str, (x, *ways.values()))) for x, ways in points)
    ticks = ", ".join(f"'{x:,}' {x}" for x, _ in points)
    plots = ", ".join(f"$data using 1:{i} with linespoints linewidth 2 title '{way}'"
                      for i, way in enumerate(points[0][1], 2))
    script = f"""set terminal svg size 760,400 font 'sans-serif,13' background 'white'
        set output '{path}'; set logscale xy; set key outside; set grid; set xtics ({ticks})
        set xlabel '{what_grows}'; set ylabel 'nanoseconds for each {title}'
        set xrange [{points[0][0] / 1.1}:{points[-1][0] * 1.1}]\n$data << END\n{data}\nEND
        plot {plots}\n"""
    subprocess.run(["gnuplot"], input=script, check=True, text=True)


def main(program, *options):
    times, conditions = run(program, *((1, 0.001) if "--quick" in options else (9, 0.05)))
    rows = "".join(table(times, conditions))
    print(rows, end="")
    if "--page" in options:
        before, after = re.split("|".join(MARKS), PAGE.read_text())[::2]
        PAGE.write_text(before + MARKS[0] + rows + MARKS[1] + after)
        for name, operation in PICTURES.items():
            draw(times, PAGE.with_name(f"{name}.svg"), operation)


if __name__ == "__main__":
    if sys.argv[2:] not in ([], ["--quick"], ["--page"]):
        sys.exit(__doc__)
    main(*sys.argv[1:])
