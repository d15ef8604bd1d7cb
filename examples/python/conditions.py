#!/usr/bin/python3
"""Checks the breakpoint conditions of a file, one a line, and reports what is wrong with them.

    conditions.py FILE
"""

import sys

import korvane_gen as gen

sys.stdout.reconfigure(errors="surrogateescape") # a condition may hold any bytes
wrong = 0
with open(sys.argv[1], errors="surrogateescape") as file:
    for number, line in enumerate(file, 1):
        condition = line.rstrip("\n")
        complaints = []
        try:
            print(f"{number}: {gen.condition(condition)}")
        except gen.ConditionError as error:
            complaints = [*error.diagnostics, *error.reports]
        except gen.InternalError as error:
            complaints = error.reports
        except ValueError: # the only one that is left
            complaints = ["Null character"]
        wrong += bool(complaints)
        for complaint in complaints:
            print(f"{number}: {complaint}: {condition}")
sys.exit(1 if wrong else 0)
