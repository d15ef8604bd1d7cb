#!/usr/bin/env python3
"""Asks `python3 -m korvane_gen` what tests/parity asks gen_query, and wants its JSON and exit status.

    parity_python.py GEN_QUERY SUITE        with the package in PYTHONPATH

Left out are questions that only gen_query has: help, and what is in NOT_ASKED.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path += [str(pathlib.Path(__file__).parents[1]), str(pathlib.Path(__file__).parents[1] / "parity")]
import parity  # noqa: E402
import staging  # noqa: E402

# Subcommands and options of gen_query that are about gen_query or shells.
NOT_ASKED = {"env", "temp", "stopwatch", "--help", "--stdin", "--print", "--as-is", "--locale"}
# What the package raises an exception for.
RAISES = {"flags", "undo"}
# Of the records of two subcommands the package has the end alone.
PARTLY = {"flags": ("statistics", "slots"), "undo": ("written", "undo_commands", "redo_commands")}
# What is said of a question besides its answer: the package has exceptions for that.
LEFT_OUT = {"internal_errors", "error", "errors"}


def answer(command, root, question):
    done = subprocess.run([*command, *question.json_arguments()], input=question.text.encode(),
                          capture_output=True, cwd=root / "project", timeout=60, check=False,
                          env={**staging.environment(root), "LC_ALL": "C.UTF-8",
                               "PYTHONPATH": os.environ["PYTHONPATH"]})
    return done.returncode, json.loads(done.stdout) if done.stdout else {}


def shown(question, record):
    """The record as one text, without what is left out or masked."""
    def plain(value):
        if isinstance(value, dict):
            return {key: plain(item) for key, item in value.items() if key not in LEFT_OUT}
        return [plain(item) for item in value] if isinstance(value, list) else value

    text = json.dumps(plain(record), indent=2, sort_keys=True, ensure_ascii=False)
    for mask in question.masks:
        text = re.sub(mask, "<masked>", text)
    return text


def agree(question, ours, theirs):
    (status, record), (expected_status, expected) = ours, theirs
    family = question.arguments[1]
    if expected_status == 2:
        return status == 2
    if expected.get("internal_errors") or (family in RAISES and expected_status != 0):
        return status != 0
    if family in PARTLY:
        record, expected = ({key: each[key] for key in PARTLY[family]} for each in (record, expected))
    return status == expected_status and shown(question, record) == shown(question, expected)


def main(binary, suite):
    cases = pathlib.Path(parity.__file__).parent / "cases"
    asked = failed = 0
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        ours = [sys.executable, "-m", "korvane_gen", "--executable", root / "linux" / "gen_query"]
        for path in sorted(cases.glob("*.txt")):
            staging.stage(root, binary, suite)
            for question in parity.read_questions(path):
                if NOT_ASKED & set(question.arguments) or len(question.arguments) < 2:
                    continue
                asked += 1
                here = answer(ours, root, question)
                there = answer([root / "linux" / "gen_query"], root, question)
                if not agree(question, here, there):
                    failed += 1
                    print(f"{question.place}: {question.arguments[1:]}\n  {here}\n  {there}")
    print(f"{asked} questions asked, {failed} answered otherwise")
    return 1 if failed or asked < 100 else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
