#!/usr/bin/env python3
"""Asks the modules for scripts what tests/parity asks gen_query, and wants its JSON and exit status: Python by
`python3 -m korvane_gen`, Tcl by parity.tcl.

    parity_scripts.py python|tcl BUILD GEN_QUERY SUITE

Left out are requests that only gen_query has: help, and what is in ALONE.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

sys.path += [str(pathlib.Path(__file__).parents[1]), str(pathlib.Path(__file__).parents[1] / "parity")]
import parity  # noqa: E402
import staging  # noqa: E402

# Subcommands and options of gen_query that are about gen_query or shells.
ALONE = {"stopwatch", "serve", "settings", "filelist", "--filelist", "class", "--help", "--as-is", "--locale", "--root",
         "--color=always", "--create"}
# gen_query's remarks, which are its own words.
LEFT_OUT = {"error"}


def as_tcl_has_it(value):
    """The record with strings for all scalars, none of which is known by its type."""
    if isinstance(value, dict):
        return {key: as_tcl_has_it(item) for key, item in value.items()}
    if isinstance(value, list):
        return [as_tcl_has_it(item) for item in value]
    return "" if value is None else str(int(value)) if isinstance(value, bool) else str(value)


def answer(command, root, request):
    """The exit status and the record, or the records. What it writes into the project is removed."""
    project = root / "project"
    before = set(project.iterdir())
    done = subprocess.run([*command, *request.json_arguments()], input=request.text.encode(),
                          capture_output=True, cwd=project, timeout=60, check=False,
                          env={**staging.environment(root), "LC_ALL": "C.UTF-8",
                               "PYTHONPATH": f"{BUILD}/python"})
    for made in set(project.iterdir()) - before:
        shutil.rmtree(made) if made.is_dir() else made.unlink()
    return done.returncode, records_of(done.stdout)


def records_of(output):
    """One record, or those of as many lines."""
    try:
        return json.loads(output)
    except ValueError:
        return [json.loads(line) for line in output.splitlines()]


def shown(request, record):
    """The record as one text, without what is left out or masked."""
    def plain(value):
        if isinstance(value, dict):
            return {key: plain(item) for key, item in value.items() if key not in LEFT_OUT}
        return [plain(item) for item in value] if isinstance(value, list) else value

    text = json.dumps(plain(record), indent=2, sort_keys=True, ensure_ascii=False)
    for mask in request.masks:
        text = re.sub(mask, "<masked>", text)
    return text


def agree(language, request, ours, theirs):
    (status, record), (expected_status, expected) = ours, theirs
    if expected_status == 2:
        return status == 2 and list(record) == ["error"]
    if language == "tcl":
        expected = as_tcl_has_it(expected)
    return status == expected_status and shown(request, record) == shown(request, expected)


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
            for request in parity.read_requests(path):
                if ALONE & set(request.arguments):
                    continue
                asked += 1
                here = answer(ours, root, request)
                there = answer([tool], root, request)
                if not agree(language, request, here, there):
                    failed += 1
                    print(f"{request.place}: {request.arguments[1:]}\n  {here}\n  {there}")
    print(f"{asked} requests asked, {failed} answered otherwise")
    return 1 if failed or asked < 100 else 0


if __name__ == "__main__":
    BUILD = sys.argv[2]
    sys.exit(main(sys.argv[1], BUILD, *(pathlib.Path(argument) for argument in sys.argv[3:])))
