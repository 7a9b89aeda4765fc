#!/usr/bin/env python3
"""Counts the cost of each hot path and compares it with a table.

    gate.py PROGRAM TABLE [--update]

Callgrind counts the instructions and simulates branch prediction. The counts of a round are the
difference between two loops of different lengths, minus those of an empty loop. They are specific
to a compiler and a CPU: elsewhere they are printed and not compared.

The gate fails if either count changes by more than its margin, in either direction: code with fewer
instructions can be slower, for example if a load waits for a comparison. Code placement alone moves
the simulated mispredictions by one or two, and a change of one or two instructions is not worth an
update of the table.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

JUDGED = "GCC 12 on x86-64"
LOOP = "loop"
MARGIN = 2.0


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


def read(table):
    rows = (line.split(maxsplit=2) for line in table.read_text().splitlines())
    return {name: [float(instructions), float(mispredictions)]
            for instructions, mispredictions, name in rows}


def main(program, table, *options):
    compiler, found = measure(program)
    table = pathlib.Path(table)
    if options and compiler != JUDGED:
        sys.exit(f"not written: the table is for {JUDGED}, this is {compiler}")
    if options:
        table.write_text("".join(f"{a:8.1f} {b:8.1f}  {name}\n" for name, (a, b) in found.items()))
    expected = read(table)
    failed = 0
    print("instructions, branch mispredictions per call (in the table)")
    for name in sorted(found.keys() | expected.keys()):
        now, before = found.get(name, [0, 0]), expected.get(name, [0, 0])
        fault = ("not in the table" if name not in expected else
                 "no longer measured" if name not in found else
                 "changed" if any(abs(a - b) > MARGIN for a, b in zip(now, before)) else "")
        failed += bool(fault)
        print(f"{now[0]:8.1f} ({before[0]:5.1f}) {now[1]:6.1f} ({before[1]:4.1f})  {name}"
              + (f": {fault}" if fault else ""))
    if compiler != JUDGED:
        print(f"not compared: the table is for {JUDGED}, this is {compiler}")
        return 0
    print(f"{len(found)} hot paths, {failed} failed")
    if failed:
        print("Fewer instructions can be slower: time the change with ./scripts/bench before and "
              "after.\nIf it is worth its price, update the table with ./scripts/bench --gate "
              "--update.")
    return min(failed, 1)


if __name__ == "__main__":
    if len(sys.argv) < 3 or sys.argv[3:] not in ([], ["--update"]):
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
