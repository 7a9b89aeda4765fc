#!/usr/bin/env python3
"""Counts the cost of each hot path and compares it with a table.

    gate.py PROGRAM TABLE [--update]

Callgrind counts the instructions and simulates branch prediction. The counts of an empty loop are
subtracted. Counts are specific to a compiler and a CPU: elsewhere they are printed and not compared,
which is an error in CI on the system that has that compiler.

The gate fails if either count changes by more than its margin, in either direction: code with fewer
instructions can be slower, for example if a load waits for a comparison. Code placement alone moves
the simulated mispredictions by one or two, and a change of one or two instructions is not worth an
update of the table.
"""
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

JUDGED = "GNU 12.2.0 on x86_64"
SYSTEM = "Debian GNU/Linux 12 (bookworm) on x86_64" # whose compiler that is
LOOP = "nothing, an empty loop"
ROUNDS = 5000
MARGIN = 2.0


def measure(program):
    """Returns a program's compiler, and instructions and mispredictions per round by hot path."""
    with tempfile.NamedTemporaryFile("r") as dumps:
        run = subprocess.run(
            ["valgrind", "--quiet", "--tool=callgrind", "--branch-sim=yes", "--instr-atstart=no",
             "--combine-dumps=yes", f"--callgrind-out-file={dumps.name}", program, str(ROUNDS)],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
            env={**os.environ, "LD_BIND_NOW": "1"})
        text = dumps.read()
    costs = {}
    for name, totals in re.findall(r"Client Request: (.*)\n(?:.*\n)*?totals: (.*)", text):
        instructions, _, branches, _, jumps = [*map(int, totals.split()), 0, 0, 0, 0][:5]
        costs[name] = instructions / ROUNDS, (branches + jumps) / ROUNDS
    empty = costs.pop(LOOP)
    return run.stdout.strip(), {name: [round(a - b, 1) + 0.0 for a, b in zip(cost, empty)]
                                for name, cost in sorted(costs.items())}


def system():
    """Returns the system, as SYSTEM states it."""
    return f"{platform.freedesktop_os_release()['PRETTY_NAME']} on {platform.machine()}"


def main(program, table, *options):
    compiler, found = measure(program)
    table = pathlib.Path(table)
    if options and compiler != JUDGED:
        sys.exit(f"not written: the table is for {JUDGED}, this is {compiler}")
    if options:
        table.write_text("".join(f"{a:8.1f} {b:8.1f}  {name}\n" for name, (a, b) in found.items()))
    rows = (line.split(maxsplit=2) for line in table.read_text().splitlines())
    expected = {name: [*map(float, counts)] for *counts, name in rows}
    none = [float("inf")] * 2
    failed = 0
    print("instructions, branch mispredictions per call (in the table)")
    for name in sorted(found.keys() | expected.keys()):
        now, before = found.get(name, none), expected.get(name, none)
        changed = any(abs(a - b) > MARGIN for a, b in zip(now, before))
        failed += changed
        print(f"{now[0]:8.1f} ({before[0]:5.1f}) {now[1]:6.1f} ({before[1]:4.1f})  {name}"
              + (": changed" if changed else ""))
    if compiler != JUDGED:
        print(f"not compared: the table is for {JUDGED}, this is {compiler}")
        return int(os.environ.get("CI") == "true" and system() == SYSTEM)
    print(f"{len(found)} hot paths, {failed} failed")
    if failed:
        print("Time the change first, with ./scripts/bench: fewer instructions can be slower.\n"
              "If it is worth its price, update the table with ./scripts/bench --gate --update.")
    return min(failed, 1)


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[3:] not in ([], ["--update"]):
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
