"""What the tests of the Python package have in common: a copy of the example suite, in which main() starts the
library.

    TEST GEN_QUERY SUITE [unittest options]      with the package in PYTHONPATH
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

import korvane_gen as gen  # noqa: E402

GEN_QUERY, SUITE = (pathlib.Path(argument) for argument in sys.argv[1:3])
SCRATCH = tempfile.TemporaryDirectory()
ROOT = pathlib.Path(os.path.realpath(SCRATCH.name)) / "korvane"
PROJECT = ROOT / "project"


def in_child(body, **options):
    """Runs a script in a process of its own; its standard output."""
    done = subprocess.run([sys.executable, "-c", f"import korvane_gen as gen\n{body}"], text=True,
                          stdout=subprocess.PIPE, timeout=60, check=True, **options)
    return done.stdout


def main():
    os.environ.update(TZ="UTC")
    staging.stage(ROOT, GEN_QUERY, SUITE)
    gen.start(ROOT)
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
