#!/usr/bin/env python3
"""Fails unless every line of the library's sources is covered, and every branch both ways. Reads
the output of `llvm-cov export` from standard input; run it in the root of the tree.

A branch in a macro counts at each use of the macro, so each log statement must be covered printed
and suppressed. A branch in a lambda of a macro counts once, like one in a template. Unreachable
code is in a block that opens with "// not reached: WHY"; it is an error if the tests cover it all
the same.
"""
import collections
import json
import os
import pathlib
import re
import sys

FOLDERS = ("adviser", "port_type_validate", "router_validate", "utils")
SOURCES = re.compile("(%s)/" % "|".join(FOLDERS))
KINDS = {"lines": re.compile(r"\{"), "branches": re.compile(r"\b(if|for|while) \(")}  # if any


def lines(segments):
    """Yields the execution count of each line, as llvm-cov's own reports count."""
    starts = collections.defaultdict(list)
    for line, _, count, has_count, is_entry, is_gap in segments:
        starts[line].append((count if has_count else -1, is_entry and not is_gap))
    above = -1  # the count that continues from the line before
    for line in range(segments[0][0], segments[-1][0] + 1):
        counts = [count for count, is_start in starts[line] if is_start]
        if max([above, *counts]) >= 0 and counts[:1] != [-1]:  # -1 is a blank line
            yield line, max([above, *counts])
        above = starts[line][-1][0] if starts[line] else above


def branches(functions):
    """Counts each branch both ways, by its places: in the macro, where the macro is used, ..."""
    ways = collections.defaultdict(lambda: [0, 0])
    for function in functions:
        names = [os.path.normpath(name) for name in function["filenames"]]
        uses = {region[6]: region for region in function["regions"] if region[7] == 1}  # of macros
        for line, column, _, _, true, false, file, *_ in function["branches"]:
            places = [(names[file], line, column)]
            while file in uses:
                line, column, file = uses[file][0], uses[file][1], uses[file][5]
                places.append((names[file], line, column))
            ways[tuple(places)][0] += true
            ways[tuple(places)][1] += false
    return ways


def items(data):
    """Yields each item to cover: file, line, kind, count, and the error message if it is 0."""
    for file in data["files"]:
        for line, count in lines(file["segments"]) if file["segments"] else ():
            yield os.path.normpath(file["filename"]), line, "lines", count, "not covered"
    for places, ways in sorted(branches(data["functions"]).items()):
        (name, line, column), macro = places[-1], "%s:%d" % places[0][:2]
        text = f"column {column}" + (f" (in {macro})" if len(places) > 1 else "")
        for way, count in zip(("true", "false"), ways):
            yield name, line, "branches", count, f"{text} is never {way}"


def exempt(name):
    """Yields the lines of the marked blocks; the line that opens a block is negative."""
    indent = None
    for number, text in enumerate(pathlib.Path(name).read_text().splitlines(), 1):
        if indent is not None:
            yield number
            indent = None if re.match(" {0,%d}}" % indent, text) else indent
        elif re.search(r"\) { // not reached: \w", text):
            yield -number
            indent = len(text) - len(text.lstrip())


seen, faults, marked = collections.defaultdict(lambda: [0, 0]), [], {}
for name, line, kind, count, fault in items(json.load(sys.stdin)["data"][0]):
    if not SOURCES.match(name):
        continue
    marks = marked.setdefault(name, set(exempt(name)))
    if line in marks or -line in marks and fault.endswith("never true"):
        faults += [f"{name}:{line}: covered, but marked as not reached"] if count else []
        continue
    faults += [] if count else [f"{name}:{line}: {fault}"]
    for key in (name, kind), ("all", kind):
        seen[key] = [seen[key][0] + (count > 0), seen[key][1] + 1]
for name in sorted({name for name, _ in seen}, key=lambda name: (name == "all", name)):
    print(f"{name:44}", *("%6d of %4d %s" % (*seen[name, kind], kind) for kind in KINDS))
# A measurement without a source or its branches is broken.
for path in [path for folder in FOLDERS for path in sorted(pathlib.Path(folder).rglob("*.cpp"))]:
    faults += [f"{path}: no {kind} seen" for kind, pattern in KINDS.items()
               if pattern.search(path.read_text()) and not seen[str(path), kind][1]]
sys.exit("\n".join(faults) or 0)
