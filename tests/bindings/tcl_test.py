#!/usr/bin/env python3
"""Runs the tests of the Tcl package in a copy of the example suite.

    tcl_test.py BUILD GEN_QUERY SUITE
"""

import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402


def main(build, binary, suite):
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        staging.stage(root, binary, suite)
        script = pathlib.Path(__file__).with_name("tcl_test.tcl")
        return subprocess.run(["tclsh8.6", script, build, root], env=staging.environment(root),
                              timeout=110, check=False).returncode


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
