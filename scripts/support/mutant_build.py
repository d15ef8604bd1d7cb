"""Makes mutants in builds that stay as they are, and runs the tests of those builds on them."""

import ctypes
import functools
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = "faskum/gen"
PROGRAMS = ("gen_tests", "allocation_tests", "query_tests")
UNWANTED = ("-g", "-g1", "-O0", "-O2", "--coverage", "-fprofile-update=atomic")
COMPILE_SECONDS = 300
TEST_SECONDS = 600  # a run that waits for ever takes no time of the processor
PROCESSOR_SECONDS = 10  # for the tests of a topic; an endless loop is over by then, however busy the machine
TIMES_FOR_ALL_TESTS = 6
TIMES_UNDER_SANITIZERS = 6
MEGABYTES = 2000
SANITIZED_MEGABYTES = 3072  # what is freed is kept for a while
LIBC = ctypes.CDLL(None, use_errno=True)
CLONE_NEWNS, CLONE_NEWUSER = 0x20000, 0x10000000
MS_BIND, MS_REC, MS_PRIVATE = 0x1000, 0x4000, 0x40000


@functools.lru_cache(maxsize=None)
def suites_of(stem):
    """The test suites of the files whose names begin with the stem."""
    suites = set()
    for file in (ROOT / "tests").glob(stem + "_*test.cpp"):
        if not file.stem.startswith("gen_query"):
            suites.update(re.findall(r"^(?:TEST|TEST_F|TEST_P)\((\w+),", file.read_text(), re.MULTILINE))
    return suites


def topic_of(stem):
    return "_".join(stem.split("_")[:2])


def filter_of(suites):
    return ":".join(f"{suite}.*:*/{suite}.*" for suite in sorted(suites))


class Build:
    """How the library is made in a build directory."""

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
        self.is_sanitized = "-fsanitize=" in self.link
        self.programs = [program for program in PROGRAMS if (directory / "bin" / program).exists()]
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

    def compiles(self, path, line):
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

    def __init__(self, place, number):
        self.place = place / f"worker{number}"
        shutil.rmtree(self.place, ignore_errors=True)
        self.place.mkdir(parents=True)
        self.library = self.place / "libkorvane_gen.so"
        self.sources = self.place / "gen"
        shutil.copytree(ROOT / SOURCES, self.sources)

    def compile_command(self, build, source, target):
        command = [argument for argument in build.compile[source]
                   if not argument.startswith("-W") and argument not in UNWANTED]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(self.sources / source)
        return command + ["-O1", "-w"]

    def link_command(self, build, objects):
        """The link in the build directory, with these objects in place of those of the same sources."""
        command = build.link.split("&&")[1] if "&&" in build.link else build.link
        command = [argument.replace("\\$", "$") for argument in shlex.split(command)]
        command[command.index("-o") + 1] = str(self.library)
        for index, argument in enumerate(command):
            replacement = objects.get(pathlib.Path(argument).name.removesuffix(".o"))
            if argument.endswith(".o") and replacement:
                command[index] = str(replacement)
        return command

    def make(self, build, mutant):
        """Makes the build's library with the mutant; false where it does not compile."""
        name = pathlib.Path(mutant.file).name
        path = self.sources / name
        original = path.read_text()
        path.write_text(original[:mutant.begin] + mutant.replacement + original[mutant.end:])
        try:
            objects = {source: self.place / (source + ".o")
                       for source in sorted(build.includers.get(name, {name}))}
            commands = [self.compile_command(build, source, target) for source, target in objects.items()]
            return all(run(command, COMPILE_SECONDS, build.directory) == 0
                       for command in commands + [self.link_command(build, objects)])
        finally:
            path.write_text(original)

    def survives_near(self, build, mutant):
        """Whether the tests of the source pass, and of its topic; for a header, of those that include it."""
        path = pathlib.Path(mutant.file)
        own = suites_of(path.stem)
        topics = {topic_of(pathlib.Path(name).stem) for name in {path.name} | build.includers.get(path.name, set())}
        others = set().union(*map(suites_of, topics)) - own
        return all(self.passes(build, "gen_tests", filter_of(suites)) for suites in (own, others) if suites)

    def survives_all(self, build):
        return all(self.passes(build, program, "*") for program in build.programs)

    def passes(self, build, program, suites):
        temporary = self.place / "tmp"
        temporary.mkdir()
        environment = dict(os.environ, GEN_TEST_EFFORT="quick", TMPDIR=str(temporary))
        if build.is_sanitized:
            limit_of_memory = f"hard_rss_limit_mb={SANITIZED_MEGABYTES}:"
            environment["ASAN_OPTIONS"] = limit_of_memory + environment.get("ASAN_OPTIONS", "")
        command = [str(build.directory / "bin" / program), "--gtest_fail_fast", "--gtest_brief=1",
                   "--gtest_filter=" + suites]

        def prepare():
            put_over(self.library, build.library)
            limit(build.is_sanitized, suites == "*")

        try:
            return run(command, TEST_SECONDS, self.place, environment, prepare) == 0
        finally:
            subprocess.run(["chmod", "-R", "u+rwx", temporary], check=False, stderr=subprocess.DEVNULL)
            shutil.rmtree(temporary, ignore_errors=True)


def put_over(source, target):
    """Has this process, and all that it starts with whatever environment, see the file source in place of target."""
    def ask(call, *arguments):
        if call(*arguments) != 0:
            raise OSError(ctypes.get_errno(), call.__name__)

    user, group = os.geteuid(), os.getegid()
    if user == 0:
        ask(LIBC.unshare, CLONE_NEWNS)
    else:
        ask(LIBC.unshare, CLONE_NEWNS | CLONE_NEWUSER)
        for file, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"), ("gid_map", f"{group} {group} 1")):
            pathlib.Path("/proc/self", file).write_text(text)
    ask(LIBC.mount, b"none", b"/", None, MS_REC | MS_PRIVATE, None)
    ask(LIBC.mount, os.fsencode(source), os.fsencode(target), None, MS_BIND, None)


def limit(is_sanitized, for_all_tests):
    """Sanitizers reserve most of the address space, and take their time."""
    seconds = PROCESSOR_SECONDS
    seconds *= TIMES_UNDER_SANITIZERS if is_sanitized else 1
    seconds *= TIMES_FOR_ALL_TESTS if for_all_tests else 1
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    if not is_sanitized:
        resource.setrlimit(resource.RLIMIT_AS, (MEGABYTES << 20, MEGABYTES << 20))


def run(command, seconds, directory, environment=None, prepare=None):
    """The exit status; -1 for a command that did not end in time. Nothing of it lives on."""
    process = subprocess.Popen(command, cwd=directory, env=environment, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                               preexec_fn=prepare)
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
