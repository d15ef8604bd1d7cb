#!/usr/bin/python3
"""Sorts the names of a netlist, which stand on standard input, as people count.

    names.py <names
"""

import sys

import korvane_gen as gen

for stream in sys.stdin, sys.stdout:
    stream.reconfigure(errors="surrogateescape") # a name may hold any bytes
for name in sorted((line.rstrip("\n") for line in sys.stdin), key=gen.natural_key):
    print(name)
