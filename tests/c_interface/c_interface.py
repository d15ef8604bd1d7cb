#!/usr/bin/env python3
"""Runs the C program that uses the C interface in a copy of the example suite, and checks that it uses
every function.

    c_interface.py PROGRAM LIBRARY SUITE
"""

import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402


def names(kind, path):
    listing = subprocess.run(["nm", "-D", f"--{kind}-only", path], capture_output=True, text=True,
                             check=True).stdout
    return {line.split()[-1].split("@")[0] for line in listing.splitlines() if "gen_c_" in line}


def main(program, library, examples):
    offered = names("defined", library)
    unused = offered - names("undefined", program)
    if unused:
        print("not used by the test:", *sorted(unused))
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        staging.stage(root, program, examples)
        # Texts of the environment and counts of histograms stay with the process, as gen says.
        environment = {**staging.environment(root), "ASAN_OPTIONS": "detect_leaks=0"}
        status = subprocess.run([program, root], cwd=root / "project", timeout=60, check=False,
                                env=environment).returncode
    print(f"{len(offered)} functions, {status} checks failed")
    return 1 if unused or status or not offered else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
