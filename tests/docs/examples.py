#!/usr/bin/env python3
"""Runs the commands that the documents show and wants the output that they show.

    examples.py GEN_QUERY SUITE DOCUMENT...

Shown are "$ command" lines, each with what it prints up to the next one: in blocks marked "console",
and in indented blocks where the command is gen_query. They run in the project of the example suite,
which the documents call /opt/korvane. A line "..." stands for any number of lines.
"""

import os
import pathlib
import re
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

SHOWN_ROOT = "/opt/korvane"


def shown_lines(document):
    """Every line that is shown with its number, and None wherever a block begins or ends."""
    console = False
    for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("```"):
            console = line == "```console"
            yield number, None
        elif console:
            yield number, line
        elif line.startswith("    "):
            yield number, line[4:]
        else:
            yield number, None


def examples_in(document):
    """[(line number, command, the lines that it prints)]"""
    examples = []
    inside = False
    for number, line in shown_lines(document):
        if line is not None and line.startswith("$ "):
            inside = "gen_query" in line
            if inside:
                examples.append((number, line[2:], []))
        elif line is None:
            inside = False
        elif inside:
            examples[-1][2].append(line)
    return examples


def matches(shown, output):
    pattern = "".join(r"(?:.*\n)*" if line == "..." else re.escape(line) + r"\n" for line in shown)
    return re.fullmatch(pattern, output) is not None


def run(command, root):
    done = subprocess.run(["/bin/sh", "-c", command.replace(SHOWN_ROOT, str(root))], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60,
                          cwd=root / "project", env=staging.environment(root), check=False)
    return done.stdout.replace(str(root), SHOWN_ROOT)


def main(binary, examples, documents):
    count = failed = 0
    with staging.scratch() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        for document in documents:
            staging.stage(root, binary, examples)
            for number, command, shown in examples_in(document):
                count += 1
                output = run(command, root)
                if not matches(shown, output):
                    failed += 1
                    print(f"{document}:{number}: $ {command}\n{output}")
    print(f"{count} commands run")
    return 1 if failed or not count else 0


if __name__ == "__main__":
    given = [pathlib.Path(argument) for argument in sys.argv[1:]]
    sys.exit(main(given[0], given[1], given[2:]))
