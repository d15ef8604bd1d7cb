#!/usr/bin/env python3
"""Reads every manual page as man shows it in 80 columns, and runs the example that gen_query(1) shows of each subcommand:
it must print what the page, and so --help, says. The page of the Tcl package has the subcommands as they say themselves
how they are called, where a directory of packages is given.

    pages.py PACKAGING HEADERS GEN_QUERY SUITE TCL_PAGE [TCL_PACKAGES]
"""

import functools
import os
import pathlib
import re
import subprocess
import sys

sys.path += [str(pathlib.Path(__file__).parents[1]), str(pathlib.Path(__file__).parents[1] / "docs"),
             str(pathlib.Path(__file__).parents[2] / "packaging")]
import describe  # noqa: E402
import examples  # noqa: E402
import header  # noqa: E402
import manual  # noqa: E402
import reference  # noqa: E402
import staging  # noqa: E402


LEFT_OVER = re.compile(r"@(?:p|param|return)\b|^ *///|\\f[BIR]|`\w[^`]*`")


@functools.cache
def rendered(page):
    """The page as text. Anything that man has to say about it is a failure."""
    done = subprocess.run(["man", "--warnings", "-l", page], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, check=True,
                          env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8"})
    if done.stderr:
        sys.exit(f"{page}: {done.stderr}")
    return done.stdout


def shown_commands(lines):
    """[(command, the lines that it prints)] of an example; a command may go on in a here-document."""
    shown, end = [], None
    for line in lines:
        if end:
            shown[-1][0] += "\n" + line
            end = None if line == end else end
        elif line.startswith("$ "):
            shown.append([line[2:], []])
            end = line.rpartition("<<")[2].strip("'\"") if "<<" in line else None
        elif shown:
            shown[-1][1].append(line)
    return shown


def run_examples(root_command, binary, suite):
    """Complaints about examples that print something else."""
    with staging.scratch() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        for path, command in root_command.all():
            staging.stage(root, binary, suite)
            shown = shown_commands(manual.split_footer(command.footer)[0])
            if path and not shown:
                yield f"{' '.join(path)}: no example"
            for line, printed in shown:
                output = examples.run(line, root)
                if not examples.matches(printed, output):
                    yield f"{' '.join(path)}: $ {line}\n{output}"


def defects(page):
    """Complaints that apply to any page."""
    for line in rendered(page).split("\n"):
        if len(line) > 80:
            yield f"{page.name}: more than 80 columns: {line}"
        if LEFT_OVER.search(line):
            yield f"{page.name}: a mark is left over: {line}"


def lost_lines(page, path):
    """Complaints about rows of examples and tables, and items of lists, that do not begin a line of their own."""
    lines = [" ".join(line.split()) for line in rendered(page).split("\n")]
    for paragraph in header.paragraphs(path.read_text(encoding="utf-8").split("\n")):
        for block in header.blocks(header.comment_of(paragraph)):
            begun = [block.label] if block.kind == "item" else []
            if block.kind == "verbatim":
                # The rows of a table, not what goes on with their last column.
                begun = [" ".join(line.split("  ")[0].split()[:3]) for line in block.lines if line[:1].strip()]
            for text in begun:
                if not any(line.startswith(text) for line in lines):
                    yield f"{page.name}: not a line of its own: {text}"


def unnamed(pages, path):
    """Complaints about functions and classes that the page of their header does not name, or that lead elsewhere."""
    name_of_page = reference.page_name(path)
    text = re.sub(r"^  private:\n.*?^\}", "", path.read_text(encoding="utf-8"), flags=re.M | re.S)
    functions = set(re.findall(r"^KORVANE_API\s[^;{}()]*?\b(\w+)\s*\(", text, re.M))
    members = set(re.findall(r"^ +KORVANE_API\s[^;{}()]*?\b(\w+)\s*\(", text, re.M))
    classes = set(re.findall(r"^class (?:KORVANE_API )?(\w+) \{", text, re.M))
    for name in sorted(functions | members | classes):
        if not re.search(rf"\b{name}\b", rendered(pages / f"{name_of_page}.3")):
            yield f"{name_of_page}(3) does not name {name}"
    for name in sorted(functions | classes):
        link = pages / f"{name}.3"
        if not link.exists() or link.read_text(encoding="utf-8") != f".so man3/{name_of_page}.3\n":
            yield f"{name}(3) does not lead to {name_of_page}(3)"


def found_by_name(packaging, name, wanted):
    """What `man name` shows where the pages are installed."""
    shown = subprocess.run(["man", "-M", packaging, name], text=True, capture_output=True, check=False,
                           env={**os.environ, "LC_ALL": "C.UTF-8"}).stdout
    return [] if wanted in shown else [f"man {name} does not show {wanted}"]


def asked_of_tcl(packages, script):
    """The lines that a script of Tcl prints with the package at hand."""
    return subprocess.run(["tclsh8.6"], input=f"package require korvane_gen\n{script}", text=True, check=True,
                          stdout=subprocess.PIPE, env={**os.environ, "TCLLIBPATH": str(packages)}).stdout.splitlines()


def synopses(page):
    """How the page of the Tcl package says that subcommands are called."""
    for line in page.read_text(encoding="utf-8").split("\n"):
        if line.startswith(r"\fBgen "):
            yield from re.split(", (?=gen )", re.sub(r"\\f[BIR]", "", line).replace(r"\-", "-"))


def misread_by_tcl(page, packages):
    """Complaints about what the page of the Tcl package says of subcommands and of the methods of its objects."""
    said = list(synopses(page))
    usages = asked_of_tcl(packages, "puts [join [dict values $korvane_gen::usage] \\n]")
    yield from (f"{page.name} does not say: {usage}" for usage in usages if usage not in said)
    yield from (f"{page.name}: {synopsis}: the package says otherwise" for synopsis in said if synopsis not in usages)
    paragraphs = dict(re.findall(r"^\\fBgen (\w+)\\fR[^\n]*\n(.*?)(?=^\.TP|^\.SH)", page.read_text(encoding="utf-8"), re.M | re.S))
    for line in asked_of_tcl(packages, "foreach class [info commands korvane_gen::\\[A-Z\\]*] {"
                                       "puts [concat [namespace tail $class] [info class methods $class]]}"):
        name, *methods = line.split()
        paragraph = re.findall(r"\w+", paragraphs[name.lower()])
        yield from (f"{page.name}: gen {name.lower()}: {method} is missing" for method in methods if method not in paragraph)


def main(packaging, headers, binary, suite, tcl_page, tcl_packages=None):
    root_command = describe.read(packaging / "gen_query.json")
    complaints = list(run_examples(root_command, binary, suite))
    page = rendered(packaging / "man1/gen_query.1")
    complaints += [f"gen_query(1) says nothing of {' '.join(path)}"
                   for path, command in root_command.all()
                   if not command.commands and f"\n   {' '.join(path)}\n" not in page]
    every = [*(packaging / "man1").glob("*.1"), *(packaging / "man3").glob("*.3")]
    pages = sorted(path for path in every if not path.read_text(encoding="utf-8").startswith(".so"))
    if len(pages) != len(list(headers.glob("*.h"))) + 2:
        complaints.append(f"{len(pages)} pages")
    complaints += [f"{path} is empty" for path in pages if len(rendered(path)) < 300]
    complaints += [complaint for path in pages for complaint in defects(path)]
    for path in sorted(headers.glob("*.h")):
        complaints += lost_lines(packaging / f"man3/{reference.page_name(path)}.3", path)
        complaints += unnamed(packaging / "man3", path)
    complaints += found_by_name(packaging, "gen_find_file", "gen_path_find.h")
    complaints += defects(tcl_page)
    if tcl_packages:
        complaints += misread_by_tcl(tcl_page, tcl_packages)
    print("\n".join(complaints) or f"{len(pages)} pages read, to which {len(every) - len(pages)} names lead")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
