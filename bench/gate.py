#!/usr/bin/env python3
"""Counts the cost of each hot path and compares it with a table.

    gate.py PROGRAM TABLE [--update]

Callgrind counts the instructions and simulates branch prediction. The counts of a round are the
difference between two loops of different lengths, minus those of an empty loop. They are specific
to a compiler and a CPU: elsewhere they are printed and not compared. The gate fails if either count
rises beyond its margin, or falls beyond it while the other rises.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

JUDGED = "GCC 12 on x86-64"
LOOP = "loop"
MARGIN = 2.0  # of either; code placement alone moves the simulated mispredictions by one or two
SIGN = 0.5  # a rise of the other count


def measure(program):
    """Returns a program's compiler, and instructions and mispredictions per round by hot path."""
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run(
            ["valgrind", "--quiet", "--tool=callgrind", "--branch-sim=yes", "--instr-atstart=no",
             f"--callgrind-out-file={folder}/out", program],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
            env={**os.environ, "LD_BIND_NOW": "1"})
        totals = {}
        for path in pathlib.Path(folder).iterdir():
            text = path.read_text()
            dump = re.search(r"^desc: Trigger: Client Request: (.*): (\d+)$", text, re.M)
            if dump:
                names = re.search(r"^events: (.*)$", text, re.M).group(1).split()
                values = re.search(r"^totals: (.*)$", text, re.M).group(1).split()
                events = {name: int(value) for name, value in zip(names, values)}
                totals.setdefault(dump.group(1), []).append(
                    (int(dump.group(2)), events["Ir"], events.get("Bcm", 0) + events.get("Bim", 0)))
    rounds = {}
    for name, loops in totals.items():
        short, long = sorted(loops)
        rounds[name] = [(b - a) / (long[0] - short[0]) for a, b in zip(short[1:], long[1:])]
    empty = rounds.pop(LOOP)
    return run.stdout.strip(), {
        name: [round(count - own, 1) + 0.0 for count, own in zip(counts, empty)]
        for name, counts in sorted(rounds.items())}


def verdict(found, expected):
    """Returns a message, or an empty one, and whether it is a fault."""
    instructions, mispredictions = (a - b for a, b in zip(found, expected))
    if instructions < -MARGIN and mispredictions > SIGN:
        return ("fewer instructions, more branch mispredictions: has a conditional move become a "
                "branch? Check the loops"), True
    if mispredictions < -MARGIN and instructions > SIGN:
        return "more instructions, fewer branch mispredictions: time it, it may be slower", True
    if mispredictions > MARGIN:
        return "more branch mispredictions: check the branches that depend on data", True
    if instructions > MARGIN:
        return "more instructions: check the hot path of the call", True
    if min(instructions, mispredictions) < -MARGIN:
        return "less than in the table: update the table to keep the gain", False
    return "", False


def main(program, table, *options):
    compiler, found = measure(program)
    if options and compiler != JUDGED:
        sys.exit(f"not written: the table is for {JUDGED}, this is {compiler}")
    if options:
        rows = [f"{counts[0]:8.1f} {counts[1]:8.1f}  {name}\n" for name, counts in found.items()]
        pathlib.Path(table).write_text("".join(rows))
    expected = {}
    for line in pathlib.Path(table).read_text().splitlines():
        instructions, mispredictions, name = line.split(maxsplit=2)
        expected[name] = [float(instructions), float(mispredictions)]
    faults = 0
    print("instructions, branch mispredictions per call (in the table)")
    for name in sorted(found.keys() | expected.keys()):
        counts, before = found.get(name, [0, 0]), expected.get(name, [0, 0])
        words, is_fault = verdict(counts, before)
        if name not in found or name not in expected:
            words, is_fault = "not in the table" if name in found else "no longer measured", True
        faults += is_fault
        print(f"{counts[0]:8.1f} ({before[0]:5.1f}) {counts[1]:6.1f} ({before[1]:4.1f})  {name}"
              + (f": {words}" if words else ""))
    if compiler != JUDGED:
        print(f"not compared: the table is for {JUDGED}, this is {compiler}")
        return 0
    print(f"{len(found)} hot paths, {faults} failed")
    return min(faults, 1)


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[3:] not in ([], ["--update"]):
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
