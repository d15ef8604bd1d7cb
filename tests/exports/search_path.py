#!/usr/bin/env python3
"""Checks that a library names only whole directories to look for others in.

    search_path.py LIBRARY

The loader takes an empty or relative one for a place in the current directory: whoever can put a
file there decides what is loaded, and every start asks there for each library.
"""

import re
import subprocess
import sys


def main(library):
    listing = subprocess.run(["readelf", "--dynamic", "--wide", library],
                             capture_output=True, text=True, check=True).stdout
    if "(SONAME)" not in listing:
        print(f"{library} is no shared library")
        return 1
    searched = [directory for paths in re.findall(r"\(R(?:UN)?PATH\).*\[(.*)\]", listing)
                for directory in paths.split(":")]
    bad = [directory for directory in searched if not directory.startswith(("/", "$ORIGIN"))]
    print(f"searched: {searched}, of the current directory: {bad}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
