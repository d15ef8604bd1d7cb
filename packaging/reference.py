#!/usr/bin/env python3
"""Writes the manual pages of section 3: korvane_gen(3), the library at a glance, one page a header, and for each
name that a header declares a page that leads to it.

    reference.py HEADERS README VERSION DATE OUTPUT
"""

import pathlib
import re
import sys

from declarations import in_columns, public
from header import about, blocks, code_of, comment_of, is_comment, paragraphs, remark_of
from troff import WIDTH, plain, verbatim

MARGIN = 7 # columns that man leaves free before what is not indented
STEP = 4   # by which a comment stands to the right of its declaration


def page_name(header):
    """Other libraries have an err(3), too."""
    return header.stem if re.match("gen|korvane", header.stem) else f"korvane_{header.stem}"


def title(name, version, date):
    return f'.TH {name.upper()} 3 "{date}" "korvane_gen {version}" "korvane suite"\n.nr HY 0\n.nh\n.ad l'


def inline(text):
    """A text with the names of arguments, and code, set off."""
    text = re.sub(r"@p (\*?\w+)", r"\\fI\1\\fR", plain(text))
    return re.sub(r"\\\(ga(.+?)\\\(ga", r"\\fB\1\\fR", text)


def written(comment, indent):
    """A comment for a place so many columns from the left."""
    result = []
    for block in blocks(comment):
        if block.kind == "verbatim":
            result += verbatim(block.lines, indent)
        elif block.kind == "text":
            result += [".PP", inline(block.text)]
        elif block.kind == "item":
            result += [f".IP {plain(block.label)} {STEP}", inline(block.text)]
        elif block.kind == "param":
            result += [".TP", f".I {plain(block.label)}", inline(block.text)]
        else:
            result += [".TP", "returns", inline(block.text)]
    return result[1:] if result[:1] == [".PP"] else result


def written_below(comment, indent):
    """The comment on a declaration, below it and a step to the right."""
    return [f".RS {STEP}", *written(comment, indent + STEP), ".RE"]


def shown(lines):
    """Lines of code as they stand, in the columns that there are."""
    listed = [part for line in lines for part in in_columns(line, WIDTH - MARGIN)]
    return [".PP", ".EX", *[plain(line) for line in listed], ".EE"] if listed else []


def begins_body(line):
    return re.match(r"(typedef )?(class|struct|enum|union)\b.*\{$", line) is not None


def bodies(sections):
    """Paragraphs, those of a class put together: the comment on it, and the paragraphs of its body."""
    body = None
    for paragraph in sections:
        code = code_of(paragraph)
        if body is not None:
            body.append(paragraph)
        elif any(begins_body(line) for line in code) and not paragraph[-1].startswith("}"):
            body = [paragraph]
        else:
            yield [paragraph]
        if body and any(line.startswith("}") for line in code):
            yield body
            body = None


def member_comment(paragraph):
    """Comments among enumerators stay where they are; those on a member stand above it."""
    return comment_of(paragraph) if is_comment(paragraph[0]) else []


def without_private(body):
    """The paragraphs of a class before its private ones."""
    for paragraph in body:
        labels = [i for i, line in enumerate(paragraph) if line.strip() == "private:"]
        if labels:
            yield [*paragraph[:labels[0]], "};"]
            return
        yield paragraph


def remark(paragraph):
    """A comment between declarations."""
    text = remark_of(paragraph)
    return [".PP", inline(text)] if text else []


def entry(body):
    """What a page says of one declaration, several in a row with one comment, or a class with its members."""
    head, *members = without_private(body)
    remarks = [line for line in head if line.lstrip().startswith("// ")]
    comment, code = member_comment(head), public([line for line in code_of(head) if line not in remarks])
    if not comment or not code:
        return []
    result = [*shown(code), *written_below(comment, MARGIN)]
    if remarks:
        result += [f".RS {STEP}", *remark(remarks), ".RE"]
    for member in members:
        if text := remark(member):
            result += [f".RS {STEP}", *text, ".RE"]
            continue
        code = public([line for line in code_of(member) if line.strip() != "public:"])
        comment = member_comment(member)
        end = [line for line in code if line.startswith("}")] if comment else []
        result += shown([line for line in code if line not in end])
        if comment:
            result += [f".RS {STEP}", *written_below(comment, MARGIN + STEP), ".RE"]
        result += shown(end)
    return result


def summary(header):
    """The first sentence on the file, as the line of a list."""
    sentence = re.split(r"(?<=[.:])\s", " ".join(about(header)))[0].rstrip(".:")
    return sentence[0].lower() + sentence[1:] if sentence[1:2].islower() else sentence


def page(header, version, date):
    lines = header.read_text(encoding="utf-8").split("\n")
    result = [title(page_name(header), version, date), ".SH NAME",
              f"{page_name(header)} \\- {plain(summary(header))}", ".SH SYNOPSIS",
              f".B #include <{header.name}>", ".SH DESCRIPTION", *written(about(header), MARGIN)]
    declared = [line for body in bodies(paragraphs(lines)) for line in remark(body[0]) or entry(body)]
    if declared:
        result += [".SH DECLARATIONS", *declared]
    else:
        included = [line for line in lines if re.match('#include "', line)]
        result += [".PP", "It includes:", *verbatim(included)]
    return "\n".join([*result, ".SH SEE ALSO", ".BR korvane_gen (3)", ""])


def names(header):
    """What a header declares outside of classes, each a name that somebody may look up."""
    text = header.read_text(encoding="utf-8")
    found = re.findall(r"^(?:KORVANE_API|inline|constexpr)\b[^;{}()=]*?\b(\w+)(?=\(| =|;)", text, re.M)
    found += re.findall(r"^(?:typedef )?(?:class|struct|enum|enum class) (?:KORVANE_API )?(\w+)\b[^;]*?\{", text, re.M)
    found += re.findall(r"^#define (\w+)", text, re.M)
    found += re.findall(r"^using (\w+) =", text, re.M)
    return sorted(set(found))


GLANCE = """\
{title}
.SH NAME
korvane_gen \\- general utilities of the korvane suite
.SH SYNOPSIS
.B #include <gen.h>
.PP
.EX
pkg\\-config \\-\\-cflags \\-\\-libs korvane_gen
.EE
.SH DESCRIPTION
Every executable of the suite asks this library the questions that all of them share, and gets one agreed answer:
where the installation, the project and a design file lie, how names compare and numbers read, what a message
says, what the time and the machine are.
It answers alike on 32\\-bit x86 and on x86\\-64.
.PP
A host begins with
.BR GEN_DEFINE_MAIN ,
which starts the library up before its body:
{host}
.SH HEADERS
Each has a page, to which the names lead that it declares.
{headers}
.SH THREADS
Tracked allocation, the locale\\-neutral character and number functions and temporary files may be used by several
threads at once. All else is for one thread at a time, the main thread as a rule.
.SH SEE ALSO
.BR gen_query (1)
"""


def glance(headers, readme, version, date):
    host = re.search(r"^```cpp\n(.*?)^```$", readme.read_text(encoding="utf-8"), re.M | re.S)[1]
    listed = "\n".join(f".TP\n.BR {page_name(header)} (3)\n{plain(summary(header))}" for header in headers)
    return GLANCE.format(title=title("korvane_gen", version, date),
                         host="\n".join(verbatim(host.rstrip().split("\n"))), headers=listed)


def main(directory, readme, version, date, output):
    output.mkdir(parents=True, exist_ok=True)
    for old in output.glob("*.3"):
        old.unlink()
    headers = sorted(path for path in directory.glob("*.h"))
    pages = {page_name(header): page(header, version, date) for header in headers}
    pages["korvane_gen"] = glance(headers, readme, version, date)
    for header in headers:
        for name in names(header):
            pages.setdefault(name, f".so man3/{page_name(header)}.3\n")
    for name, text in pages.items():
        (output / f"{name}.3").write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), *sys.argv[3:5], pathlib.Path(sys.argv[5]))
