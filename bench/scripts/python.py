#!/usr/bin/python3
"""Measures calls of korvane_gen beside the cheapest call that Python has of the same library function, and
beside one of a function of the same types that does nothing. The peer calls the library too: what that takes
is no cost of the module, and a call of nothing could not be reached by any.

    python.py SUITE        with both modules in PYTHONPATH

A round takes turns; the figures are nanoseconds, of the quickest round of each: many short ones, some of which
nobody disturbs even on a busy machine. The exit status is 1 where a call costs more than LIMIT times the
cheapest one.
"""

import sys
import timeit

import cheapest

import korvane_gen as gen

LIMIT = 1.3
ROUNDS = 1000
CALLS = 2000

CASES = {
    "cached lookup": (gen.find_cached, cheapest.found, cheapest.nothing_found, "'counter.v'"),
    "natural comparison": (gen.natural_compare, cheapest.compared, cheapest.nothing_compared,
                           "'data[10]', 'data[9]'"),
    "checksum": (gen.checksum, cheapest.summed, cheapest.nothing_summed, "'counter.v'"),
}


def main(suite):
    gen.start(suite)
    gen.project.directory = f"{suite}/project"
    slow = False
    print(f"{'call':20}{'ours':>8}{'cheapest':>10}{'ratio':>7}{'nothing':>9}")
    for name, (*functions, arguments) in CASES.items():
        timers = [timeit.Timer(f"f({arguments})", globals={"f": f}) for f in functions]
        rounds = [[each.timeit(CALLS) / CALLS * 1e9 for each in timers] for _ in range(ROUNDS)]
        ours, peer, nothing = map(min, zip(*rounds))
        ratio = ours / peer
        slow = slow or ratio > LIMIT
        print(f"{name:20}{ours:8.1f}{peer:10.1f}{ratio:7.2f}{nothing:9.1f}")
    return 1 if slow else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
