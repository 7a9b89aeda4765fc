"""doc_tables.py NAMES ROWS FILE: prints a header with the library's tables in its comments, for
Doxygen to read: the name of each constant, the names of each type that a name function takes, and
what `@table TABLE` asks for. NAMES is the output of `kriolilglu name --search ''`, ROWS that of
`kriolilglu port`. Lines keep their numbers; a table that is not there is left for Doxygen to
refuse."""

import html
import re
import sys
from itertools import groupby


def escaped(text):
    """Text for Doxygen, which takes an ampersand between quotes as it is."""
    return html.escape(str(text), False).replace("&amp;", "&")


def table(heads, rows):
    lines = ["".join(f"<th>{head}</th>" for head in heads)]
    lines += ["".join(f"<td>{escaped(cell)}</td>" for cell in row) for row in rows]
    return f"<table>{''.join(f'<tr>{line}</tr>' for line in lines)}</table>"


def merged(names):
    """The values of an enumeration and their names, with one row for neighbours of one name."""
    for (name, _), run in groupby(enumerate(names.items()),
                                  lambda each: (each[1][1], each[1][0] - each[0])):
        values = [value for _, (value, _) in run]
        yield f"{values[0]} to {values[-1]}" if len(values) > 1 else values[0], name


def main(names_file, rows_file, header):
    names = {}
    for line in open(names_file):
        enumeration, value, name = re.fullmatch(r'(\w+) (\d+) .*?(".*")\n', line).groups()
        if name != '""':  # that of a constant without a name
            names.setdefault(enumeration, {})[int(value)] = name
    row = re.compile(r'(\d+) \w+ "(\w+)" accepts (.*)\n')
    rows = [row.fullmatch(line).groups() for line in open(rows_file)]
    tables = {name: table(("Value", "Name"), merged(names[name])) for name in names}
    tables["port"] = table(("Row", "Function", "Types of port"), rows)
    names["mem_type"][0] = "all types"

    constants = {}
    for line in open(header):
        if enumeration := re.match(r"(?:enum |KY_ENUM\()(?:ky_)?(\w+)_(?:values|t)\b", line):
            constants = names[enumeration[1]]
        if constant := re.match(r"    [A-Z]\w+ = (\w+),", line):
            name = escaped(constants.get(int(constant[1], 0), "no name"))
            line = f"{constant[0]} /**< {constant[1]}, {name} */\n"
        if named := re.match(r"typedef uint32_t ky_(\w+)_t;", line):
            values = tables.get(named[1], "There are none.")
            line = f"/** The values that ky_{named[1]}_str names. {values} */ {line}"
        line = re.sub(r"@table (\w+)", lambda each: tables.get(each[1], each[0]), line)
        sys.stdout.write(line)


main(*sys.argv[1:])
