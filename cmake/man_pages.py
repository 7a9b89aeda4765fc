"""man_pages.py XML MAN EXPORTS PACKAGE: writes manual pages from the folder of Doxygen's XML into
the folder MAN: one for each public header, and one for each function and object in it. A symbol of
the linker map EXPORTS that gets none is an error."""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path


def escaped(text):
    """Text for roff: no escapes, hyphens as they are, no requests at the head of a line."""
    text = (text or "").replace("\\", r"\e").replace("-", r"\-")
    return re.sub(r"(?m)^(?=[.'])", r"\\&", text)


def rendered(paragraph):
    """A paragraph without the lists of arguments and results that Doxygen keeps in it."""
    text = escaped(paragraph.text)
    for child in paragraph:
        if child.tag == "verbatim":
            example = escaped(child.text).rstrip()
            text += f"\n.PP\n.in +4n\n.nf\n{example}\n.fi\n.in\n.PP\n{escaped(child.tail).lstrip()}"
        elif child.tag in ("parameterlist", "simplesect"):
            text += escaped(child.tail)
        else:
            text += rendered(child) + escaped(child.tail)
    return text


def prose(*descriptions, between=".PP"):
    text = separator = ""
    for description in filter(lambda each: each is not None, descriptions):
        for index, paragraph in enumerate(description.findall("para")):
            if words := rendered(paragraph).strip():
                text += separator + words
                # Of these, Doxygen took the first sentence off what follows it.
                severed = description.tag in ("briefdescription", "description") and index == 0
                separator = "\n" if severed else f"\n{between}\n"
    return text


def item(title, *descriptions):
    return "\n".join(filter(None, [".TP", title, prose(*descriptions, between=".IP")]))


def name_of(element):
    return element.findtext("name") or element.findtext("compoundname")


def brief(element):
    return element.find("briefdescription")


def details(element):
    return element.find("detaileddescription")


def has_page(member):
    return member.get("kind") in ("function", "variable") and member.get("static") == "no"


def declaration(member):
    text = member.findtext("definition").replace(" * ", " *")
    if member.get("kind") == "variable":
        return f"extern {escaped(text)};"
    text += member.findtext("argsstring")
    if len(text) > 75:
        text = text.replace("(", "(\n    ").replace(", ", ",\n    ")
    return f"{escaped(text)};"


def arguments(member):
    return [item(f".I {each.findtext('.//parametername')}", each.find("parameterdescription"))
            for each in member.iter("parameteritem")]


def results(member):
    return prose(*member.findall(".//simplesect[@kind='return']"))


def notes(title, description):
    text = prose(description)
    return f".SS {title}\n{text}\n" if text else ""


def member_page(member, group, header):
    """Sections of the page of a function or an object; its neighbours are its group's."""
    neighbours = [name_of(each) for each in group.iter("memberdef")
                  if has_page(each) and each is not member]
    return {
        "SYNOPSIS": f".nf\n.B #include <{name_of(header)}>\n.PP\n"
                    f"\\fB{declaration(member)}\\fP\n.fi",
        "DESCRIPTION": prose(brief(member), details(member)),
        "ARGUMENTS": "\n".join(arguments(member)),
        "RETURN VALUE": results(member),
        "NOTES": notes(header.findtext("compoundname"), details(header))
                 + notes(group.findtext("header"), group.find("description")),
        "SEE ALSO": ",\n".join(f".BR {each} (3)" for each in [name_of(header), *neighbours]),
    }


def title(member):
    """A type, a macro or an enumeration, as the page of its header names it."""
    if member.get("kind") == "typedef":
        return escaped(member.findtext("definition").replace("(* ", "(*").replace(") (", ")("))
    if member.find("param") is not None:
        parameters = ", ".join(each.findtext("defname", "") for each in member.iter("param"))
        return f"{name_of(member)}({parameters})"
    value = member.find("initializer")
    text = "" if value is None else "".join(value.itertext())
    return f"{name_of(member)} {text}" if text.isalnum() else name_of(member)


def entry(member):
    """What the page of a header says of what it declares."""
    if has_page(member):
        return item(f".BR {name_of(member)} (3)", brief(member))
    lines = [item(f".B {title(member)}", brief(member), details(member))]
    for each in member.iter("enumvalue"):
        lines += [".br", escaped(f"{name_of(each)} {each.findtext('initializer')}")]
    if arguments(member):
        lines += [".RS", *arguments(member), ".RE"]
    if results(member):
        lines += [".IP", f"It returns {results(member)}"]
    return "\n".join(lines)


def record(struct):
    fields = []
    for field in struct.iter("memberdef"):
        name = re.sub(r"@\d+ |\w+::", "", field.findtext("definition"))
        fields.append(item(f".B {escaped(name)}", brief(field), details(field)))
    return "\n".join([item(f".B {name_of(struct)}", brief(struct), details(struct)), ".RS",
                      *fields, ".RE"])


def header_page(header, groups, records):
    contents = []
    for group in groups:
        if group.find("header") is not None:
            contents += [f".SS {group.findtext('header')}", prose(group.find("description"))]
        contents += [entry(each) for each in group.iter("memberdef")]
    return {
        "SYNOPSIS": f".B #include <{name_of(header)}>",
        "DESCRIPTION": prose(brief(header), details(header)),
        "CONTENTS": "\n".join(contents),
        "RECORDS": "\n".join(map(record, records)),
    }


def place(group):
    return int(group.find(".//location").get("line"))


def main(xml, man, exports, package):
    xml, man = Path(xml), Path(man)
    man.mkdir(parents=True, exist_ok=True)
    for page in man.glob("*.3"):
        page.unlink()

    def write(name, description, sections):
        summary = prose(description).rstrip(".") or sys.exit(f"{name} is not described")
        lines = [f'.TH "{name}" 3 "" "{package}" " "', ".SH NAME",
                 f"{name} \\- {summary[0].lower()}{summary[1:]}"]
        for title, body in sections.items():
            lines += [f".SH {title}", body] if body else []
        (man / f"{name}.3").write_text("\n".join(lines) + "\n")

    for file in sorted(xml.glob("*_8h.xml")):
        header = ElementTree.parse(file).find("compounddef")
        groups = sorted(header.findall("sectiondef"), key=place)
        records = [ElementTree.parse(xml / f"{each.get('refid')}.xml").find("compounddef")
                   for each in header.findall("innerclass")]
        write(name_of(header), brief(header), header_page(header, groups, records))
        for group in groups:
            for member in filter(has_page, group.iter("memberdef")):
                write(name_of(member), brief(member), member_page(member, group, header))

    missing = [name for name in re.findall(r"^ *(\w+);$", Path(exports).read_text(), re.MULTILINE)
               if not (man / f"{name}.3").exists()]
    if missing:
        sys.exit("exported, but not documented: " + ", ".join(missing))


main(*sys.argv[1:])
