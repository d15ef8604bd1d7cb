#!/usr/bin/env python3
"""Mutation testing of faskum/gen/ (see scripts/mutate).

    mutate.py BUILD PLACE LIST.MD [--mutants N] [--seed N] [--jobs N] [--only TEXT] [--keep] [--again]

BUILD is a build directory in which the test programs are ready, and which stays as it is; PLACE is for what comes
up here. A mutant is one changed place of one source: the sources that it is part of are compiled as in BUILD, but
with little optimisation, the library is linked anew in a directory of the worker's own, and the test programs,
which need not be linked again, are run on it: first the tests of the source's topic, then all. A test that fails,
a crash, and a run that does not come to an end kill the mutant.

LIST.MD has a table of the mutants that no test can kill, since they answer alike, a row each:

    | `file` | `the line's text` | `change` | reason |
"""

import argparse
import concurrent.futures
import functools
import json
import os
import pathlib
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time

from mutants import Mutant, mutants_of

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = "faskum/gen"
PROGRAMS = ("gen_tests", "allocation_tests", "query_tests")
UNWANTED = ("-g", "-g1", "-O0", "-O2", "--coverage", "-fprofile-update=atomic")
KILLED = 0.95
COMPILE_SECONDS = 120
TEST_SECONDS = 300
PROCESSOR_SECONDS = 20  # an endless loop is over by then, however busy the machine
ADDRESS_SPACE = 1 << 30


def equivalents(list_file):
    row = re.compile(r"\| `(?P<file>[^`]+)` \| ``?(?P<text>.+?)``? \| ``?(?P<change>[^`]+)``? \| .+ \|$")
    rows = (row.match(line) for line in list_file.read_text().splitlines()) if list_file.exists() else ()
    return {" | ".join(match.group("file", "text", "change")).replace(r"\|", "|") for match in rows if match}


def suites_of(source):
    """The gtest filter for the tests of the source's topic."""
    stem = pathlib.Path(source).stem
    while True:
        files = [file for file in (ROOT / "tests").glob("*_test.cpp")
                 if file.stem == stem + "_test" or file.stem.startswith(stem + "_")]
        if files or "_" not in stem:
            break
        stem = stem.rpartition("_")[0]
    suites = set()
    for file in files:
        if not file.stem.startswith("gen_query"):
            suites.update(re.findall(r"^(?:TEST|TEST_F|TEST_P)\((\w+),", file.read_text(), re.MULTILINE))
    return ":".join(f"{suite}.*:*/{suite}.*" for suite in sorted(suites))


class Build:
    """How the library is made in the build directory."""

    def __init__(self, directory):
        self.directory = directory
        self.compile = {}
        for entry in json.loads((directory / "compile_commands.json").read_text()):
            file = pathlib.Path(entry["file"])
            if file.parent == ROOT / SOURCES:
                self.compile[file.name] = shlex.split(entry["command"])
        self.library = next((directory / "lib").glob("libkorvane_gen.so.*.*.*"))
        commands = subprocess.run(["ninja", "-C", directory, "-t", "commands", f"lib/{self.library.name}"],
                                  capture_output=True, text=True, check=True).stdout.splitlines()
        self.link = next(line for line in reversed(commands) if "-shared" in line)
        self.includers = self.find_includers()

    @functools.lru_cache(maxsize=None)
    def compiled_lines(self, source):
        """(file name, line) of every line that the compiler sees when it compiles the source."""
        command = list(self.compile[source])
        command[command.index("-c")] = "-E"
        command[command.index("-o") + 1] = "-"
        seen = set()
        name, number = "", 0
        for line in subprocess.run(command, cwd=self.directory, capture_output=True, text=True,
                                   check=True).stdout.splitlines():
            if marker := re.match(r'# (\d+) "([^"]*)"', line):
                number, name = int(marker[1]), pathlib.Path(marker[2]).name
                continue
            if line.strip():
                seen.add((name, number))
            number += 1
        return seen

    def is_compiled(self, path, line):
        return any((path.name, line) in self.compiled_lines(source)
                   for source in self.includers.get(path.name, {path.name}))

    def find_includers(self):
        deps = subprocess.run(["ninja", "-C", self.directory, "-t", "deps"], capture_output=True, text=True,
                              check=True).stdout
        includers = {}
        source = None
        for line in deps.splitlines():
            if line and not line.startswith(" "):
                source = pathlib.Path(line.split(":")[0]).name.removesuffix(".o")
            elif "/" + SOURCES + "/" in line and source in self.compile:
                includers.setdefault(pathlib.Path(line.strip()).name, set()).add(source)
        return includers


class Worker:
    """A directory with a copy of the sources, in which one mutant at a time lives."""

    def __init__(self, build, place, number):
        self.build = build
        self.place = place / f"worker{number}"
        shutil.rmtree(self.place, ignore_errors=True)
        (self.place / "lib").mkdir(parents=True)
        (self.place / "objects").mkdir()
        self.sources = self.place / "gen"
        shutil.copytree(ROOT / SOURCES, self.sources)

    def compile_command(self, source, target):
        command = [argument for argument in self.build.compile[source]
                   if not argument.startswith("-W") and argument not in UNWANTED]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(self.sources / source)
        return command + ["-O1", "-w"]

    def link_command(self, objects):
        """The link in the build directory, with these objects in place of those of the same sources."""
        command = self.build.link.split("&&")[1] if "&&" in self.build.link else self.build.link
        command = shlex.split(command)
        command[command.index("-o") + 1] = str(self.place / "lib" / "libkorvane_gen.so.1")
        for index, argument in enumerate(command):
            replacement = objects.get(pathlib.Path(argument).name.removesuffix(".o"))
            if argument.endswith(".o") and replacement:
                command[index] = str(replacement)
        return command

    def make(self, mutant):
        """Builds the library with the mutant; false where it does not compile."""
        name = pathlib.Path(mutant.file).name
        original = (ROOT / mutant.file).read_text()
        path = self.sources / name
        path.write_text(original[:mutant.begin] + mutant.replacement + original[mutant.end:])
        try:
            objects = {source: self.place / "objects" / (source + ".o")
                       for source in sorted(self.build.includers.get(name, {name}))}
            commands = [self.compile_command(source, target) for source, target in objects.items()]
            for command in commands + [self.link_command(objects)]:
                if run(command, COMPILE_SECONDS, self.build.directory) != 0:
                    return False
            return True
        finally:
            path.write_text(original)

    def survives(self, mutant):
        suites = suites_of(mutant.file)
        if suites and not self.passes("gen_tests", suites):
            return False
        return all(self.passes(program, "*") for program in PROGRAMS
                   if (self.build.directory / "bin" / program).exists())

    def passes(self, program, suites):
        temporary = self.place / "tmp"
        temporary.mkdir()
        libraries = f"{self.place / 'lib'}:{self.build.directory / 'lib'}"
        environment = dict(os.environ, GEN_TEST_EFFORT="quick", TMPDIR=str(temporary), LD_LIBRARY_PATH=libraries)
        command = [str(self.build.directory / "bin" / program), "--gtest_fail_fast", "--gtest_brief=1",
                   "--gtest_filter=" + suites]
        try:
            return run(command, TEST_SECONDS, self.place, environment, limited=True) == 0
        finally:
            subprocess.run(["chmod", "-R", "u+rwx", temporary], check=False, stderr=subprocess.DEVNULL)
            shutil.rmtree(temporary, ignore_errors=True)


def limit():
    for kind, most in ((resource.RLIMIT_AS, ADDRESS_SPACE), (resource.RLIMIT_CPU, PROCESSOR_SECONDS),
                       (resource.RLIMIT_CORE, 0)):
        resource.setrlimit(kind, (most, most))


def run(command, seconds, directory, environment=None, limited=False):
    """The exit status; -1 for a command that did not end in time. Nothing of it lives on."""
    process = subprocess.Popen(command, cwd=directory, env=environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                               preexec_fn=limit if limited else None)
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        return -1
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


class Campaign:
    def __init__(self, build, place, jobs, keep):
        self.keep = keep
        self.workers = [Worker(build, place, number) for number in range(jobs)]
        self.results_file = place / "results.json"
        self.results = json.loads(self.results_file.read_text()) if self.results_file.exists() else {}
        self.lock = threading.Lock()

    def check_unchanged(self):
        """The tests have to pass on the library as it is, linked and run the way that mutants are."""
        path = next((ROOT / SOURCES).glob("*.cpp"))
        same = Mutant(str(path.relative_to(ROOT)), 1, "", "nothing", 0, 0, "")
        if not self.workers[0].make(same) or not self.workers[0].survives(same):
            sys.exit("mutate: the tests fail on the library as it is")

    def try_one(self, mutant):
        if self.keep and self.results.get(mutant.name) in ("killed", "no library"):
            return self.results[mutant.name]
        with self.lock:
            worker = self.workers.pop()
        start = time.monotonic()
        try:
            made = worker.make(mutant)
            state = "survived" if made and worker.survives(mutant) else "killed" if made else "no library"
        finally:
            with self.lock:
                self.workers.append(worker)
        with self.lock:
            self.results[mutant.name] = state
            self.results_file.write_text(json.dumps(self.results, indent=1))
            print(f"{state:10} {time.monotonic() - start:5.1f} s  {mutant}", flush=True)
        return state

    def run(self, mutants):
        with concurrent.futures.ThreadPoolExecutor(len(self.workers)) as pool:
            return dict(zip(mutants, pool.map(self.try_one, mutants)))


def sample(mutants, number, seed):
    """The same for a seed as long as the sources are the same."""
    return random.Random(seed).sample(mutants, min(number, len(mutants)))


def main():
    parser = argparse.ArgumentParser(description="Mutation testing of " + SOURCES)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("place", type=pathlib.Path)
    parser.add_argument("list", type=pathlib.Path)
    parser.add_argument("--mutants", type=int, default=300, help="how many to try")
    parser.add_argument("--seed", type=int, default=1, help="which ones")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many at a time")
    parser.add_argument("--only", default="", help="only in files with this in their names")
    parser.add_argument("--keep", action="store_true", help="believe what earlier runs found killed")
    parser.add_argument("--again", action="store_true", help="only the survivors of the last run")
    options = parser.parse_args()

    build = Build(options.build.resolve())
    every = [mutant for path in sorted((ROOT / SOURCES).iterdir()) if path.suffix in (".cpp", ".h")
             for mutant in mutants_of(path, str(path.relative_to(ROOT)), build.is_compiled)]
    alike = equivalents(options.list)
    gone = alike - {mutant.name for mutant in every}
    chosen = [mutant for mutant in every if options.only in mutant.file and mutant.name not in alike]
    campaign = Campaign(build, options.place.resolve(), options.jobs, options.keep)
    if options.again:
        chosen = [mutant for mutant in chosen if campaign.results.get(mutant.name) == "survived"]
    else:
        chosen = sample(chosen, options.mutants, options.seed)
    campaign.check_unchanged()
    states = campaign.run(chosen)

    survivors = [mutant for mutant, state in states.items() if state == "survived"]
    killed = sum(state == "killed" for state in states.values())
    made = killed + len(survivors)
    print(f"{len(every)} places to change, {len(alike)} of them told as equivalent; {len(chosen)} tried, "
          f"{len(chosen) - made} do not compile")
    print(f"{killed} of {made} killed" + (f", {100 * killed / made:.1f} %" if made else ""))
    for mutant in survivors:
        print(f"survived: {mutant}")
    for name in sorted(gone):
        print(f"told as equivalent, but not there: {name}", file=sys.stderr)
    sys.exit(1 if gone or killed < KILLED * made else 0)


if __name__ == "__main__":
    main()
