#!/usr/bin/env python3
"""Asks the modules for scripts what tests/parity asks gen_query, and wants its JSON and exit status: Python by
`python3 -m korvane_gen`, Tcl by parity.tcl.

    parity_scripts.py python|tcl BUILD GEN_QUERY SUITE

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
ALONE = {"env", "temp", "stopwatch", "serve", "settings", "filelist", "--filelist", "real", "class", "--help", "--as-is",
         "--locale", "--root", "--color=always", "--create", "-"}
NOT_ASKED = {
    "python": ALONE,
    "tcl": ALONE | {"--stdin", "undo", "histogram", "--exists", "--cached"},
}
# What the package raises an exception for.
RAISES = {"flags"}
# Of the records of these subcommands the package has the end alone.
PARTLY = {
    "python": {"flags": ("statistics", "slots")},
    "tcl": {"flags": ("statistics",), "where": ("executable", "installation_root", "file_name")},
}
# What is said of a question besides its answer: the package has exceptions for that.
LEFT_OUT = {"internal_errors", "error", "errors"}
# Parts of records that Tcl has other subcommands for.
LEFT_OUT_OF_TCL = {"in_project", "beside_alias"}


def as_tcl_has_it(value):
    """The record with strings for all scalars, none of which is known by its type."""
    if isinstance(value, dict):
        return {key: as_tcl_has_it(item) for key, item in value.items() if key not in LEFT_OUT_OF_TCL}
    if isinstance(value, list):
        return [as_tcl_has_it(item) for item in value]
    return "" if value is None else str(int(value)) if isinstance(value, bool) else str(value)


def answer(command, root, question):
    done = subprocess.run([*command, *question.json_arguments()], input=question.text.encode(),
                          capture_output=True, cwd=root / "project", timeout=60, check=False,
                          env={**staging.environment(root), "LC_ALL": "C.UTF-8",
                               "PYTHONPATH": f"{BUILD}/python"})
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


def agree(language, question, ours, theirs):
    (status, record), (expected_status, expected) = ours, theirs
    family = question.arguments[1]
    if expected_status == 2:
        return status == 2
    if expected.get("internal_errors") or (family in RAISES and expected_status != 0):
        return status != 0
    if family in PARTLY[language]:
        keys = PARTLY[language][family]
        record, expected = ({key: each.get(key) for key in keys} for each in (record, expected))
    if language == "tcl":
        expected = as_tcl_has_it(expected)
        if question.arguments[1:3] == ["text", "number"] and not expected["value"]:
            del expected["unread"] # Tcl gets none
    return status == expected_status and shown(question, record) == shown(question, expected)


def main(language, build, binary, suite):
    cases = pathlib.Path(parity.__file__).parent / "cases"
    asked = failed = 0
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        tool = root / "linux" / "gen_query"
        ours = {
            "python": [sys.executable, "-m", "korvane_gen", "--executable", tool],
            "tcl": ["tclsh8.6", pathlib.Path(__file__).with_name("parity.tcl"), build, tool],
        }[language]
        for path in sorted(cases.glob("*.txt")):
            staging.stage(root, binary, suite)
            for question in parity.read_questions(path):
                if NOT_ASKED[language] & set(question.arguments) or len(question.arguments) < 2:
                    continue
                asked += 1
                here = answer(ours, root, question)
                there = answer([tool], root, question)
                if not agree(language, question, here, there):
                    failed += 1
                    print(f"{question.place}: {question.arguments[1:]}\n  {here}\n  {there}")
    print(f"{asked} questions asked, {failed} answered otherwise")
    return 1 if failed or asked < 100 else 0


if __name__ == "__main__":
    BUILD = sys.argv[2]
    sys.exit(main(sys.argv[1], BUILD, *(pathlib.Path(argument) for argument in sys.argv[3:])))
