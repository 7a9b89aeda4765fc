"""man_pages.py XML MAN SOURCE PACKAGE: writes manual pages from the folder of Doxygen's XML into
the folder MAN: section 7 from the main page, and for section 3 a page for each public header,
function, object and record, and one for the macros and types of a group; what shares a page gets an
alias. What is not described is an error, and so is an exported symbol without a page."""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path


# ---- Text ----

def escaped(text):
    """Text for roff: no escapes, hyphens as they are, no requests at the head of a line."""
    text = (text or "").replace("\\", r"\e").replace("-", r"\-")
    return re.sub(r"(?m)^(?=[.'])", r"\\&", text)


def linked(text):
    """Text in which the names of pages are references."""
    return Page.mentions.sub(r"\\fB\1\\fP(3)", escaped(text))


def example(text):
    return f".PP\n.in +4n\n.nf\n{escaped(text).rstrip()}\n.fi\n.in\n.PP"


def entry(tag, text, width=""):
    return f'.IP "{tag}" {width}\n{text}'


def table(element):
    """Lines of a tag, the first column, and the others behind it, or below it if some are long."""
    rows = [["".join(cell.itertext()).strip() for cell in row] for row in element.findall("row")]
    width = max(len(row[0]) for row in rows[1:]) + 2
    apart = width > 30
    lines = [entry(first, linked(": ".join(others)), 4 if apart else width)
             for first, *others in rows[1:]]
    return "\n".join([".PP", *(lines if apart else [".PD 0", *lines, ".PD"]), ".PP"])


def items(element):
    numbered = element.tag == "orderedlist"
    lines = [entry(f"{number}." if numbered else r"\(bu", prose(each, between=".IP"), 4)
             for number, each in enumerate(element, 1)]
    return "\n".join([*lines, ".PP"])


def rendered(paragraph):
    """A paragraph without the lists of arguments and results that Doxygen keeps in it."""
    text = linked(paragraph.text)
    for child in paragraph:
        lines = None
        if child.tag == "verbatim":
            lines = example(child.text)
        elif child.tag == "table":
            lines = table(child)
        elif child.tag in ("itemizedlist", "orderedlist"):
            lines = items(child)
        elif child.tag in ("computeroutput", "bold") and not \
                Page.mentions.fullmatch(child.text or ""):
            text += rf"\fB{rendered(child)}\fP"
        elif child.tag not in ("parameterlist", "simplesect"):
            text += rendered(child)
        text = f"{text.rstrip()}\n{lines}\n{linked(child.tail).lstrip()}" if lines \
            else text + linked(child.tail)
    return text


def prose(*descriptions, between=".PP"):
    text = separator = ""
    for description in filter(lambda each: each is not None, descriptions):
        for index, paragraph in enumerate(description.findall("para")):
            if words := rendered(paragraph).strip().removesuffix("\n.PP"):
                text += separator + words
                # Of these, Doxygen took the first sentence off what follows it.
                severed = description.tag in ("briefdescription", "description") and index == 0
                separator = "\n" if severed else f"\n{between}\n"
    return text


def item(title, *descriptions):
    return "\n".join(filter(None, [".TP", title, prose(*descriptions, between=".IP")]))


# ---- What is declared ----

def name_of(element):
    return element.findtext("name") or element.findtext("compoundname")


def brief(element):
    return element.find("briefdescription")


def details(element):
    return element.find("detaileddescription")


def line_of(element):
    return int(element.find(".//location").get("line"))


def is_exported(member):
    return member.get("kind") in ("function", "variable") and member.get("static") == "no"


def declaration(member):
    kind = member.get("kind")
    if kind == "enum":
        name = name_of(member)
        return f"enum {name};" if not name.endswith("_t") else (
            f"typedef uint32_t {name}; enum {name}_values; /* C */\n"
            f"enum {name} : uint32_t; /* C++ */")
    if kind == "struct":
        place = member.find("location")
        lines = (source / place.get("bodyfile")).read_text().splitlines()
        lines = lines[int(place.get("bodystart")) - 1:int(place.get("bodyend"))]
        return re.sub(r"(?s) */\*.*?\*/", "", "\n".join(lines))
    if kind == "define":
        parameters = [each.findtext("defname", "") for each in member.iter("param")]
        value = "".join(word for each in member.iterfind("initializer") for word in each.itertext())
        return f"#define {name_of(member)}" + (
            f"({', '.join(parameters)})" if parameters
            else f" {value}" if re.fullmatch(r"\w+", value) else "")
    text = member.findtext("definition").replace(" * ", " *")
    if kind == "typedef":
        return text.replace("(* ", "(*").replace(") (", ")(") + ";"
    if kind == "variable":
        return f"{'extern' if is_exported(member) else 'static'} {text};"
    text += member.findtext("argsstring")
    if len(text) > 72:
        text = text.replace("(", "(\n    ").replace(", ", ",\n    ")
    return f"{text};"


def arguments(member, kind="param"):
    """A list of the kind, arguments in the order of the declaration."""
    order = [each.text for each in member.iter("declname")]
    found = [(each.findtext(".//parametername"), each.find("parameterdescription"))
             for each in member.iterfind(f".//*[@kind='{kind}']/parameteritem")]
    found.sort(key=lambda each: order.index(each[0]) if each[0] in order else 0)
    return "\n".join(item(f".B {name}", description) for name, description in found)


def results(member):
    text = prose(*member.iterfind(".//simplesect[@kind='return']"))
    return "\n".join(filter(None, [text, arguments(member, "retval")]))


def parts(member):
    """The fields of a record, the constants of an enumeration."""
    fields = [item(f".B {name_of(each)}", brief(each), details(each))
              for each in sorted(member.iterfind("sectiondef/memberdef"), key=line_of)]
    constants = [item(f".B {name_of(each)}", brief(each)) for each in member.iter("enumvalue")]
    return "\n".join([*fields, *([".PD 0", *constants, ".PD"] if constants else [])])


def shared(member):
    """A member of a page that it shares."""
    below = "\n".join(filter(None, [parts(member), arguments(member), results(member)]))
    return item(f".B {name_of(member)}", brief(member), details(member)) + (
        f"\n.RS\n{below}\n.RE" if below else "")


# ---- Pages ----

class Page:
    """A page of section 3: of what is exported with the type that only it takes, of a record, or of
    the macros and types of a group."""

    by_name = {}
    mentions = None  # the pattern of these names

    def __init__(self, header, group, *members):
        self.header, self.group, self.members = header, group, members
        self.names = [name_of(each) for each in members]
        self.is_shared = len(members) > 1 and not is_exported(members[0])
        self.related = set()
        Page.by_name.update(dict.fromkeys(self.names, self))

    def mentioned(self, *apart):
        """The pages that its members name, or the text that they share, but for these parts."""
        scopes = [*self.members, *(self.group.iterfind("description") if self.is_shared else [])]
        words = " ".join("".join(part.itertext()) for scope in scopes for part in scope
                         if part.tag not in apart)
        return {Page.by_name[name] for name in Page.mentions.findall(words)} - {self}

    def summary(self):
        return self.group.find("header") if self.is_shared else brief(self.members[0])

    def sections(self):
        first, *others = self.members
        synopsis = [rf"\fB{escaped(declaration(each))}\fP" for each in self.members]
        if self.is_shared:
            above = prose(self.group.find("description"))
            text = {"DESCRIPTION": "\n".join([*filter(None, [above]), *map(shared, self.members)])}
        else:
            text = {
                "DESCRIPTION": prose(brief(first), details(first)),
                "VALUES": prose(*map(details, others)),
                "FIELDS" if first.get("kind") == "struct" else "CONSTANTS": parts(first),
                "ARGUMENTS": arguments(first),
                "RETURN VALUE": results(first),
            }
        return {
            "LIBRARY": r"kriolilglu (\fBpkg\-config \-\-cflags \-\-libs kriolilglu\fP)",
            "SYNOPSIS": "\n".join([".nf", f".B #include <{name_of(self.header)}>", ".PP",
                                   *synopsis, ".fi"]),
            **text,
            "NOTES": about(self.header) + ("" if self.is_shared else about(self.group)),
            "SEE ALSO": references(name_of(self.header),
                                   *sorted(each.names[0] for each in self.related)),
        }


def references(*names, last="kriolilglu (7)"):
    return "".join(f".BR {name} (3),\n" for name in names) + f".BR {last}"


def about(scope):
    """What holds for all of a header or a group, under its name."""
    text = "" if scope is None else prose(scope.find("description"), details(scope))
    return f".SS {scope.findtext('header') or name_of(scope)}\n{text}\n" if text else ""


def pages_of(header, records):
    groups = sorted(header.iterfind("sectiondef"), key=line_of)
    for record in records:  # Doxygen has them outside of groups
        above = [each for each in groups if line_of(each) < line_of(record)]
        yield Page(header, above[-1] if above else None, record)
    for group in groups:
        members = {name_of(each): each
                   for each in sorted(group.iterfind("memberdef"), key=line_of)}
        types = {f"{name[:-2]}_str": each for name, each in members.items() if name[-2:] == "_t"}
        types = {name: each for name, each in types.items() if name in members}
        rest = [each for each in members.values()
                if not is_exported(each) and each not in types.values()]
        for name, member in members.items():
            if is_exported(member):
                yield Page(header, group, member, *([types[name]] if name in types else []))
        together = group.get("kind") == "user-defined"
        for members in [rest] if together and rest else [[each] for each in rest]:
            yield Page(header, group, *members)


def header_sections(header, pages):
    contents, group = [], None
    for page in sorted(pages, key=lambda each: line_of(each.members[0])):
        if page.group is not group:
            group = page.group
            if group.get("kind") == "user-defined":
                contents.append(about(group) or f".SS {group.findtext('header')}")
        contents += [item(f".BR {name_of(each)} (3)", brief(each))
                     for each in (page.members if page.is_shared else page.members[:1])]
    return {
        "SYNOPSIS": f".B #include <{name_of(header)}>",
        "DESCRIPTION": prose(brief(header), details(header)),
        "CONTENTS": "\n".join(contents),
        "SEE ALSO": references(),
    }


def relate(pages):
    """Pages refer to each other if one names the other, or both are of one group."""
    for page in pages:
        page.related |= page.mentioned()
        for other in page.mentioned("type", "definition"):  # what a function returns does not count
            other.related.add(page)
        page.related |= {each for each in pages
                         if each.group is page.group is not None and each is not page}


def main(xml, man, package):
    for page in man.glob("man[37]/*"):
        page.unlink()

    def write(names, summary, sections, number=3):
        if not summary:
            sys.exit(f"{names[0]} is not described")
        folder = man / f"man{number}"
        folder.mkdir(parents=True, exist_ok=True)
        lines = [f'.TH "{names[0]}" {number} "" "{package}" " "', ".nh", ".ad l", ".ds AD l",
                 ".SH NAME",
                 rf"{', '.join(names)} \- {summary}"]
        for title, body in sections.items():
            lines += [f".SH {title}", body] if body else []
        (folder / f"{names[0]}.{number}").write_text("\n".join(lines) + "\n")
        for alias in names[1:]:
            (folder / f"{alias}.{number}").write_text(f".so man{number}/{names[0]}.{number}\n")

    def of_library(element):
        text = escaped("".join(element.itertext()).strip().rstrip("."))
        return text and f"{text[0].lower()}{text[1:]} (kriolilglu)"

    headers = {}
    for file in sorted(xml.glob("*_8h.xml")):
        header = ElementTree.parse(file).find("compounddef")
        records = [ElementTree.parse(xml / f"{each.get('refid')}.xml").find("compounddef")
                   for each in header.iterfind("innerclass")]
        headers[header] = list(pages_of(header, records))
    Page.mentions = re.compile(rf"\b({'|'.join(Page.by_name)})\b(?:\(\)|(?![\w(]))")
    relate(list(dict.fromkeys(Page.by_name.values())))

    for header, pages in headers.items():
        write([name_of(header)], of_library(brief(header)), header_sections(header, pages))
        for page in pages:
            write(page.names, of_library(page.summary()), page.sections())
    main_page = ElementTree.parse(xml / "indexpage.xml").find("compounddef")
    name, summary = main_page.findtext("title").split(" - ")
    sections = {each.findtext("title").upper(): prose(each) for each in main_page.iter("sect1")}
    sections["SEE ALSO"] = references(*map(name_of, headers), last="kriolilglu (1)")
    write([name], summary, sections, 7)

    exports = re.findall(r"(?m)^ *(\w+);$", (source / "abi/kriolilglu.map").read_text())
    missing = [name for name in exports if name not in Page.by_name]
    if missing:
        sys.exit("exported, but not documented: " + ", ".join(missing))


xml, man, source = map(Path, sys.argv[1:4])
main(xml, man, sys.argv[4])
