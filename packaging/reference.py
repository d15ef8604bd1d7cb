#!/usr/bin/env python3
"""Writes the manual pages of section 3: korvane_gen(3), the library at a glance, and one page a header.

    reference.py HEADERS README VERSION DATE OUTPUT
"""

import pathlib
import re
import sys

from header import about, code_of, comment_of, is_comment, paragraphs
from troff import plain, verbatim

EXPORT = "KORVANE_API "


def page_name(header):
    """Other libraries have an err(3), too."""
    return header.stem if re.match("gen|korvane", header.stem) else f"korvane_{header.stem}"


def title(name, version, date):
    return f'.TH {name.upper()} 3 "{date}" "korvane_gen {version}" "korvane suite"'


def told(lines):
    """The text of a comment: paragraphs, examples indented in it, what @p, @param and @return mark."""
    result, example = [], []
    for line in [*lines, ""]:
        if line.startswith("    ") and not line.lstrip().startswith("@") and (example or not result
                                                                             or result[-1] == ".PP"):
            example.append(line[4:])
            continue
        if example and line:
            result += verbatim(example)
            example = []
        if not line:
            if example:
                result += verbatim(example)
                example = []
            if result and result[-1] != ".PP":
                result.append(".PP")
            continue
        text = plain(line.strip())
        text = re.sub(r"@p (\w+)", r"\\fI\1\\fR", text)
        if marked := re.match(r"@param (\w+)\s*(.*)", text):
            result += [".TP", f".I {marked[1]}", marked[2]]
        elif marked := re.match(r"@return\s*(.*)", text):
            result += [".TP", "returns", marked[1]]
        else:
            result.append(text)
    while result and result[-1] == ".PP":
        result.pop()
    return result


def public(lines):
    """Declarations as their user reads them: no private part, no export marks, no bodies in headers."""
    text = re.sub(r"^ *private:\n.*?(?=^\})", "", "\n".join(lines), flags=re.M | re.S)
    result, shift = [], 0
    for line in text.split("\n"):
        if shift and line.startswith(" " * shift): # lined up with what stands behind the mark
            line = line[shift:]
        shift = len(EXPORT) if EXPORT in line and not re.search(r"[;{}]$", line) else shift
        if re.search(r"[;{}]$", line):
            shift = 0
        result.append(line.replace(EXPORT, ""))
    return result


def summary(header):
    """The first sentence on the file, as the line of a list."""
    sentence = re.split(r"(?<=[.:])\s", " ".join(about(header)))[0].rstrip(".:")
    return sentence[0].lower() + sentence[1:] if sentence[1:2].islower() else sentence


def joined(sections):
    """Paragraphs, those of a class put together: they belong to its body."""
    body = []
    for paragraph in sections:
        if body:
            body += paragraph
            if any(line.startswith("}") for line in paragraph):
                yield body
                body = []
        elif any(re.match(r"(class|struct|enum|union|template)\b.*[^;]$", line)
                 for line in code_of(paragraph)) and not paragraph[-1].startswith("}"):
            body = paragraph
        else:
            yield paragraph
    if body:
        yield body


def page(header, version, date):
    lines = header.read_text(encoding="utf-8").split("\n")
    sections = list(joined(paragraphs(lines)))
    result = [title(page_name(header), version, date), ".SH NAME",
              f"{page_name(header)} \\- {plain(summary(header))}", ".SH SYNOPSIS",
              f".B #include <{header.name}>", ".SH DESCRIPTION", *told(about(header))]
    included = [line for line in lines if re.match(r'#include "gen', line)]
    first = True
    for paragraph in sections:
        comment = [] if not is_comment(paragraph[0]) else comment_of(
            paragraph[:next((i for i, line in enumerate(paragraph) if not is_comment(line)),
                            len(paragraph))])
        code = public(paragraph[len(comment):])
        if not comment or not code or not "".join(code).strip():
            continue
        if first:
            result.append(".SH DECLARATIONS")
            first = False
        result += [*verbatim(code), ".RS", *told(comment), ".RE"]
    if first:
        result += [".PP", "It includes:", *verbatim(included)]
    return "\n".join([*result, ".SH SEE ALSO", ".BR korvane_gen (3)", ""])


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
    for header in headers:
        (output / f"{page_name(header)}.3").write_text(page(header, version, date), encoding="utf-8")
    (output / "korvane_gen.3").write_text(glance(headers, readme, version, date), encoding="utf-8")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), *sys.argv[3:5], pathlib.Path(sys.argv[5]))
