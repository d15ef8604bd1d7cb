#!/usr/bin/env python3
"""What Doxygen reads of a public header: the first comment is said to be about the file, and one above
several declarations is repeated for each of them; examples and tables are marked, so that they keep their lines;
all of it belongs to the group of its family.

    doxygen_filter.py HEADER
"""

import pathlib
import re
import sys

from header import blocks, code_of, comment_of, is_comment, paragraphs, remark_of


FAMILIES = {
    "err": "Internal errors",
    "fio": "Files",
    "gen_bindata": "Histogram bins",
    "gen_bp_parser": "Conditions",
    "gen_c": "C interface",
    "gen_dyn_flag": "Flags",
    "gen_exe": "Start-up",
    "gen_iterator_sys": "Enumerations",
    "gen_load": "Where files are",
    "gen_legal": "Legal notices",
    "gen_localization": "Locale-neutral twins",
    "gen_meminfo": "Usage report",
    "gen_os_info": "Machine",
    "gen_path": "Where files are",
    "gen_string": "Text",
    "gen_time": "Time",
    "gen_undo_redo": "Undo and redo",
    "gen_username": "Machine",
    "gen_version": "Version",
    "korvane_export": "Export marks",
    "mem": "Memory",
    "stl": "Formatted text",
    "thr": "Threads",
    "ver": "Version",
}


def family_of(stem):
    """The title of the longest family name that the header's begins with; of a new family the header's name."""
    names = [name for name in FAMILIES if f"{stem}_".startswith(f"{name}_")]
    return FAMILIES[max(names, key=len)] if names else stem


def declarations(code):
    """The code of a paragraph, a declaration at a time; all of it at once where it opens or closes a body."""
    if any(re.search(r"\{$|^\s*\}", line) for line in code):
        return [code]
    parts = [[]]
    for line in code:
        parts[-1].append(line)
        if re.search(r"; *(//.*)?$|\}$|^#define .*[^\\]$", line):
            parts.append([])
    return [part for part in parts if part]


def marked(comment, indent):
    """A comment with its blocks marked as Doxygen wants them."""
    for block in blocks(comment):
        lines = [line.strip() for line in block.lines]
        if block.kind == "verbatim":
            lines = ["~~~{.unparsed}", *block.lines, "~~~"]
        elif block.kind == "item":
            lines = [f"{block.label} {lines[0]}", *(" " * len(block.label) + " " + line for line in lines[1:])]
        elif block.kind != "text":
            lines[0] = f"@{block.kind} {block.label} {lines[0]}"
        for line in [*lines, ""]:
            yield f"{indent}/// {line}".rstrip()


def repeated(paragraph):
    """The comment above each of the declarations that it is about."""
    if not is_comment(paragraph[0]):
        return paragraph
    indent = paragraph[0][:paragraph[0].index("/")]
    code = code_of(paragraph)
    comment = list(marked(comment_of(paragraph), indent))[:-1]
    return [line for part in declarations(code) for line in comment + part] if code else comment


def end_of_class(paragraph):
    """The line that ends the class around the paragraph, or its public part; None when there is none."""
    depth = 0
    for number, line in enumerate(paragraph):
        depth += line.count("{") - line.count("}")
        if re.match(r"\s*private:", line) or (depth < 0 and line.startswith("};")):
            return number
    return None


def grouped(sections):
    """Paragraphs for Doxygen. What a remark is about, up to the next one or the end of the class, is a group of its name."""
    is_open = False
    for paragraph in sections:
        remark = remark_of(paragraph)
        end = end_of_class(paragraph)
        if is_open and (remark or end is not None):
            yield [*repeated(paragraph[:end or 0] or [""]), "/// @}", ""]
            paragraph, is_open = paragraph[end or 0:], False
        if remark:
            name, _, rest = remark.partition(". ")
            yield [f"/// @name {name}", f"/// {rest}".rstrip(), "/// @{", ""]
            is_open = True
        else:
            yield repeated(paragraph)
    if is_open:
        yield ["/// @}"]


def filtered(header):
    result = [line for part in grouped(paragraphs(header.read_text(encoding="utf-8").split("\n"))) for line in part]
    if header.stem != "gen": # all families in one
        title = family_of(header.stem)
        group = re.sub(r"\W+", "_", title.lower())
        last = max(i for i, line in enumerate(result) if re.match("#(include|pragma)", line))
        result[last + 1:last + 1] = ["", f"/// @addtogroup {group} {title}", "/// @{", ""]
        result += ["", "/// @}"]
    return re.sub(r"^#pragma once\n\n///", "#pragma once\n\n/// @file\n///", "\n".join(result))


if __name__ == "__main__":
    print(filtered(pathlib.Path(sys.argv[1])))
