#!/usr/bin/env python3
"""Compares what gen takes from the sibling libraries with what it may take.

    imports.py GEN_LIBRARY SIBLING_LIBRARY LIST

LIST has one name a line, without parameters. A line that begins with # is a comment.
"""

import pathlib
import subprocess
import sys

import exports


def symbols(library, which):
    lines = subprocess.run(["nm", "-D", which, library], capture_output=True, text=True, check=True)
    return {line.split()[-1].split("@")[0] for line in lines.stdout.splitlines()}


def demangled(names):
    done = subprocess.run(["c++filt"], input="\n".join(names), capture_output=True, text=True,
                          check=True)
    return done.stdout.splitlines()


def main(gen, sibling, listing):
    lines = pathlib.Path(listing).read_text().splitlines()
    allowed = {line for line in lines if line and not line.startswith("#")}
    taken = symbols(gen, "--undefined-only") & symbols(sibling, "--defined-only")
    if not taken:
        return "gen takes nothing from the siblings: wrong libraries?"
    more = {exports.plain_name(name) for name in demangled(sorted(taken))} - allowed
    return f"gen takes from the siblings what is not in {listing}: {sorted(more)}" if more else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
