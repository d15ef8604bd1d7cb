#!/usr/bin/python3
"""Sorts the names of a netlist, which stand on standard input, as people count.

    names.py <names
"""

import sys

import korvane_gen as gen

sys.stdout.writelines(sorted(sys.stdin, key=gen.natural_key))
