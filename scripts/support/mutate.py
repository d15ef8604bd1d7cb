#!/usr/bin/env python3
"""Mutation testing of faskum/gen/ (see scripts/mutate).

    mutate.py PLACE BUILD... [--mutants N] [--seed N] [--jobs N] [--only TEXT] [--keep] [--again]

Each BUILD is a build directory in which the test programs are ready, and which stays as it is; PLACE is for what comes
up here. A mutant is one changed place of one source: the sources that it is part of are compiled as in the first BUILD
that compiles the place, but with little optimisation, the library is linked anew, and the test programs, which need not
be linked again, are run with it in the place of the BUILD's: first the tests of the source and its topic, then all. A
test that fails, a crash, and a run that does not come to an end kill the mutant. What survives the tests of its topic
meets those in the next BUILD, before all tests of the first one take their time.
"""

import argparse
import concurrent.futures
import json
import os
import pathlib
import random
import sys
import threading
import time

from mutant_build import ROOT, SOURCES, Build, Worker
from mutants import Mutant, mutants_of

KILLED = 0.96


class Campaign:
    def __init__(self, place, builds, jobs):
        self.builds = builds
        self.workers = [Worker(place, number) for number in range(jobs)]
        self.results_file = place / "results.json"
        self.seed = None
        self.states = {}
        self.lock = threading.Lock()

    def load(self):
        """Takes the last run up again."""
        if self.results_file.exists():
            last = json.loads(self.results_file.read_text())
            self.seed, self.states = last["seed"], last["states"]

    def save(self):
        self.results_file.write_text(json.dumps({"seed": self.seed, "states": self.states}, indent=1))

    def check_unchanged(self):
        """The tests have to pass on the library as it is, made and run the way that mutants are."""
        path = next((ROOT / SOURCES).glob("*.cpp"))
        same = Mutant(str(path.relative_to(ROOT)), 1, "", "nothing", 0, 0, "")
        for build in self.builds:
            if not self.workers[0].make(build, same) or not self.workers[0].survives_all(build):
                sys.exit(f"mutate: the tests of {build.directory.name} fail on the library as it is")

    def state_of(self, worker, mutant):
        made = [build for build in self.builds if build.compiles(pathlib.Path(mutant.file), mutant.line)]
        for build in list(made):
            if not worker.make(build, mutant):
                made.remove(build)
            elif not worker.survives_near(build, mutant):
                return "killed"
        if not made:
            return "no library"
        survives = worker.make(made[0], mutant) and worker.survives_all(made[0])
        return "survived" if survives else "killed"

    def try_one(self, mutant):
        if self.states.get(mutant.name) in ("killed", "no library"):
            return self.states[mutant.name]
        with self.lock:
            worker = self.workers.pop()
        start = time.monotonic()
        try:
            state = self.state_of(worker, mutant)
        finally:
            with self.lock:
                self.workers.append(worker)
        with self.lock:
            self.states[mutant.name] = state
            self.save()
            print(f"{state:10} {time.monotonic() - start:5.1f} s  {mutant}", flush=True)
        return state

    def run(self, mutants):
        with concurrent.futures.ThreadPoolExecutor(len(self.workers)) as pool:
            return dict(zip(mutants, pool.map(self.try_one, mutants)))


def parse_command_line():
    parser = argparse.ArgumentParser(description="Mutation testing of " + SOURCES)
    parser.add_argument("place", type=pathlib.Path)
    parser.add_argument("builds", type=pathlib.Path, nargs="+")
    parser.add_argument("--mutants", type=int, default=300, help="how many to try")
    parser.add_argument("--seed", type=int, help="which ones; a fresh choice each time unless given")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many at a time")
    parser.add_argument("--only", default="", help="only in files with this in their names")
    parser.add_argument("--keep", action="store_true", help="goes on with the last run, which was interrupted")
    parser.add_argument("--again", action="store_true", help="only the survivors of the last run")
    return parser.parse_args()


def main():
    options = parse_command_line()
    builds = [Build(build.resolve()) for build in options.builds]
    campaign = Campaign(options.place.resolve(), builds, options.jobs)
    if options.keep or options.again:
        campaign.load()

    def is_compiled(path, line):
        return any(build.compiles(path, line) for build in builds)

    every, excluded, idle = [], 0, []
    for path in sorted((ROOT / SOURCES).iterdir()):
        if path.suffix in (".cpp", ".h"):
            found = mutants_of(path, str(path.relative_to(ROOT)), is_compiled)
            every += found.tried
            excluded += found.excluded
            idle += found.idle_marks
    if options.again:
        chosen = [mutant for mutant in every if campaign.states.get(mutant.name) == "survived"]
    else:
        # The same choice for a seed as long as the sources are the same.
        campaign.seed = next(seed for seed in (options.seed, campaign.seed, random.randrange(10**6)) if seed is not None)
        chosen = [mutant for mutant in every if options.only in mutant.file]
        chosen = random.Random(campaign.seed).sample(chosen, min(options.mutants, len(chosen)))
        print(f"seed {campaign.seed}", flush=True)
    campaign.check_unchanged()
    states = campaign.run(chosen)

    survivors = [mutant for mutant, state in states.items() if state == "survived"]
    killed = sum(state == "killed" for state in states.values())
    made = killed + len(survivors)
    print(f"{len(every)} places to change, {excluded} more are marked as without effect; {len(chosen)} tried, "
          f"{len(chosen) - made} do not compile")
    print(f"seed {campaign.seed}: {killed} of {made} killed" + (f", {100 * killed / made:.1f} %" if made else ""))
    for mutant in survivors:
        print(f"survived: {mutant}")
    for mark in idle:
        print(f"no change is like this mark: {mark}", file=sys.stderr)
    sys.exit(1 if idle or killed < KILLED * made else 0)


if __name__ == "__main__":
    main()
