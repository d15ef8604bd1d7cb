#!/usr/bin/env python3
"""Runs the gen_query command lines that a page of docs/ shows and wants the output shown there.

    examples.py GEN_QUERY PAGE...

An example is an indented line "$ gen_query ..." and, up to the next one or the end of the indented
block, what it prints: standard output, then standard error.
"""

import pathlib
import shlex
import subprocess
import sys


def read_examples(page):
    """[(line number, command line, what it prints)]"""
    examples = []
    inside = False
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("    $ gen_query "):
            examples.append((number, line[6:], []))
            inside = True
        elif inside and line.startswith("    "):
            examples[-1][2].append(line[4:])
        else:
            inside = False
    return examples


def main(gen_query, pages):
    failed = False
    count = 0
    for page in pages:
        for number, command, shown in read_examples(page):
            count += 1
            done = subprocess.run([gen_query] + shlex.split(command)[1:], capture_output=True,
                                  encoding="utf-8", timeout=60, check=False)
            printed = (done.stdout + done.stderr).splitlines()
            if printed != shown:
                failed = True
                print(f"{page.name}:{number}: {command}\n  shown:   {shown}\n  printed: {printed}")
    print(f"{count} examples")
    return 1 if failed or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], [pathlib.Path(page) for page in sys.argv[2:]]))
