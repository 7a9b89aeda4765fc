#!/usr/bin/env python3
"""Fails unless every block of the library's sources is entered, so that every line is covered, and
every branch is taken both ways. Reads the output of `llvm-cov export` from standard input; run it
in the root of the tree.

What is in a macro counts at each use of the macro, so each log statement must be covered printed
and suppressed. What is in a lambda of a macro counts once, like in a template. Unreachable code is
in a block that opens with "// not reached: WHY"; it is an error if the tests cover it all the same.
"""
import collections
import json
import os
import pathlib
import re
import sys

FOLDERS = ("adviser", "port_type_validate", "router_validate", "utils")
SOURCES = re.compile("(%s)/" % "|".join(FOLDERS))
KINDS = {"blocks": re.compile(r"\{"), "branches": re.compile(r"\b(if|for|while) \(")}  # if any


def items(functions):
    """Yields each item to cover in each function: its places (in the macro, where the macro is
    used, ...), its kind, the error message if its count is 0, and its count."""
    for function in functions:
        names = [os.path.normpath(name) for name in function["filenames"]]
        uses = {region[6]: region for region in function["regions"] if region[7] == 1}  # of macros

        def places(line, column, file):
            use = places(*uses[file][:2], uses[file][5]) if file in uses else ()
            return (names[file], line, column), *use

        for line, column, end, _, count, file, _, kind in function["regions"]:
            if kind == 0 and end > line:  # code; the arms of a conditional expression are branches
                yield places(line, column, file), "blocks", "is never entered", count
        for line, column, _, _, true, false, file, *_ in function["branches"]:
            yield places(line, column, file), "branches", "is never true", true
            yield places(line, column, file), "branches", "is never false", false


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


counts = collections.Counter()
for *item, count in items(json.load(sys.stdin)["data"][0]["functions"]):
    counts[tuple(item)] += count
seen, faults, marked = collections.defaultdict(lambda: [0, 0]), [], {}
for (places, kind, fault), count in sorted(counts.items()):
    (name, line, column), macro = places[-1], "%s:%d" % places[0][:2]
    if not SOURCES.match(name):
        continue
    marks = marked.setdefault(name, set(exempt(name)))
    never = fault == "is never true" or fault == "is never entered" and count == 0
    if line in marks or -line in marks and never:
        faults += [f"{name}:{line}: covered, but marked as not reached"] if count else []
        continue
    place = f"column {column}" + (f" (in {macro})" if len(places) > 1 else "")
    faults += [] if count else [f"{name}:{line}: {place} {fault}"]
    for key in (name, kind), ("all", kind):
        seen[key] = [seen[key][0] + (count > 0), seen[key][1] + 1]
for name in sorted({name for name, _ in seen}, key=lambda name: (name == "all", name)):
    print(f"{name:44}", *("%6d of %4d %s" % (*seen[name, kind], kind) for kind in KINDS))
# A measurement without a source or its branches is broken.
for path in [path for folder in FOLDERS for path in sorted(pathlib.Path(folder).rglob("*.cpp"))]:
    faults += [f"{path}: no {kind} seen" for kind, pattern in KINDS.items()
               if pattern.search(path.read_text()) and not seen[str(path), kind][1]]
sys.exit("\n".join(faults) or 0)
