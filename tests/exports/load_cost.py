#!/usr/bin/env python3
"""Checks what a library asks of the loader against what it was.

    load_cost.py LIBRARY MOST

At most MOST relocations when it is loaded, those of functions apart, which wait for their first call.
"""

import re
import subprocess
import sys


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def main(library, most):
    kinds = re.findall(r"\bR_(?:X86_64|386)_(\w+)", output_of("readelf", "--relocs", "--wide", library))
    at_once = sum(not kind.startswith("JUMP_SLO") for kind in kinds) # some readelf cut the name short
    print(f"{at_once} relocations at once, {len(kinds) - at_once} later")
    return 0 if kinds and at_once <= int(most) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
