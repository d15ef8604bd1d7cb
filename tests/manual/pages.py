#!/usr/bin/env python3
"""Reads the manual pages as man does, and runs the example that gen_query(1) shows of each subcommand: it must
print what the page, and so --help, says.

    pages.py PACKAGING HEADERS GEN_QUERY SUITE
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path += [str(pathlib.Path(__file__).parents[1]), str(pathlib.Path(__file__).parents[1] / "docs"),
             str(pathlib.Path(__file__).parents[2] / "packaging")]
import describe  # noqa: E402
import examples  # noqa: E402
import manual  # noqa: E402
import reference  # noqa: E402
import staging  # noqa: E402


def rendered(page):
    """The page as text. Anything that man has to say about it is a failure."""
    done = subprocess.run(["man", "--warnings", "-l", page], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, check=True,
                          env={**os.environ, "MANWIDTH": "200", "LC_ALL": "C.UTF-8"})
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
    with tempfile.TemporaryDirectory() as directory:
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


def unnamed(pages, headers):
    """Complaints about functions that the page of their header does not name."""
    for header in sorted(headers.glob("*.h")):
        name_of_page = reference.page_name(header)
        page = rendered(pages / f"{name_of_page}.3")
        for name in sorted(set(re.findall(r"KORVANE_API\s[^;{}()]*?\b(\w+)\s*\(", header.read_text(encoding="utf-8")))):
            if not re.search(rf"\b{name}\b", page):
                yield f"{name_of_page}(3) does not name {name}"


def main(packaging, headers, binary, suite):
    root_command = describe.read(packaging / "gen_query.json")
    complaints = list(run_examples(root_command, binary, suite))
    page = rendered(packaging / "man1/gen_query.1")
    complaints += [f"gen_query(1) says nothing of {' '.join(path)}"
                   for path, command in root_command.all()
                   if not command.commands and f"\n   {' '.join(path)}\n" not in page]
    pages = sorted((packaging / "man3").glob("*.3"))
    if len(pages) != len(list(headers.glob("*.h"))) + 1:
        complaints.append(f"{len(pages)} pages in section 3")
    complaints += [f"{path} is empty" for path in pages if len(rendered(path)) < 300]
    complaints += unnamed(packaging / "man3", headers)
    print("\n".join(complaints) or f"{len(pages) + 1} pages read")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
