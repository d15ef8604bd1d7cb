#!/usr/bin/env python3
"""Lets the library's system calls fail, one kind at a time, and looks at what it makes of that.

    faults.py PROBE             each call with the errors that have a meaning of their own to somebody
    faults.py --all PROBE       with every error that its manual page names, and that again for each
                                single time that the call is made
    faults.py --list PROBE      only lists the calls, as a table

PROBE is fault_probe: it asks the library for one thing between two marks in its trace, and once more
behind them. What it gets between them has to be in the table below, and what it gets behind them has
to be the usual answer: a fault leaves nothing behind. What the loader and the probe itself ask for is
left alone. Memory (mmap, brk and the like) is not among the calls: an allocation that fails is another
matter.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import os
import pathlib
import re
import subprocess
import sys
import tempfile

SKIPPED = 77
MARK = '"/mark"'
# A call that would hang the probe hangs for that long.
PATIENCE = 20

FILE_ERRORS = "EACCES EFAULT ELOOP ENAMETOOLONG ENOENT ENOMEM ENOTDIR"
# What the manual pages name.
ERRORS = {
    "close": "EBADF EINTR EIO ENOSPC EDQUOT",
    "connect": "EACCES EPERM EADDRINUSE EADDRNOTAVAIL EAFNOSUPPORT EAGAIN EALREADY EBADF "
               "ECONNREFUSED EFAULT EINPROGRESS EINTR EISCONN ENETUNREACH ENOTSOCK EPROTOTYPE "
               "ETIMEDOUT",
    "faccessat2": FILE_ERRORS + " EBADF EINVAL EIO EPERM EROFS ETXTBSY",
    "fcntl": "EACCES EAGAIN EBADF EBUSY EDEADLK EFAULT EINTR EINVAL EMFILE ENOLCK ENOTDIR EPERM",
    "fstat": FILE_ERRORS + " EBADF EINVAL EOVERFLOW",
    "getcwd": "EACCES EFAULT EINVAL ENAMETOOLONG ENOENT ENOMEM ERANGE",
    "getdents64": "EBADF EFAULT EINVAL ENOENT ENOTDIR",
    "getpriority": "EINVAL ESRCH",
    "getrusage": "EFAULT EINVAL",
    "ioctl": "EBADF EFAULT EINVAL ENOTTY",
    "lseek": "EBADF EINVAL ENXIO EOVERFLOW ESPIPE",
    "mkdir": FILE_ERRORS + " EDQUOT EEXIST EINVAL EMLINK ENOSPC EPERM EROFS",
    "openat": FILE_ERRORS + " EBADF EBUSY EDQUOT EEXIST EFBIG EINTR EINVAL EISDIR EMFILE ENFILE "
              "ENODEV ENOSPC ENXIO EOPNOTSUPP EOVERFLOW EPERM EROFS ETXTBSY EAGAIN",
    "read": "EAGAIN EBADF EFAULT EINTR EINVAL EIO EISDIR",
    "rt_sigaction": "EFAULT EINVAL",
    "rt_sigprocmask": "EFAULT EINVAL",
    "sched_getaffinity": "EFAULT EINVAL EPERM ESRCH",
    "setpriority": "EACCES EINVAL EPERM ESRCH",
    "socket": "EACCES EAFNOSUPPORT EINVAL EMFILE ENFILE ENOBUFS ENOMEM EPROTONOSUPPORT",
    "statx": FILE_ERRORS + " EBADF EINVAL",
    "sysinfo": "EFAULT",
    "tgkill": "EAGAIN EINVAL EPERM ESRCH",
    "times": "EFAULT",
    "uname": "EFAULT",
    "write": "EAGAIN EBADF EDESTADDRREQ EDQUOT EFAULT EFBIG EINTR EINVAL EIO ENOSPC EPERM EPIPE",
}
# The same call under other names, by width and by the C library's choice.
SAME = {
    "access": "faccessat2",
    "faccessat": "faccessat2",
    "fcntl64": "fcntl",
    "fstatat64": "fstat",
    "fstat64": "fstat",
    "_llseek": "lseek",
    "lstat": "fstat",
    "lstat64": "fstat",
    "newfstatat": "fstat",
    "open": "openat",
    "pread64": "read",
    "stat": "fstat",
    "stat64": "fstat",
    "writev": "write",
}
# Without --all, these stand for the others.
MEANINGFUL = {"EACCES", "EAGAIN", "EEXIST", "EINTR", "EINVAL", "EIO", "ENOENT", "ENOMEM", "ENOSPC", "EPERM"}
# They cannot fail, or are memory.
NEVER = {"brk", "clock_gettime", "clock_gettime64", "futex", "geteuid", "geteuid32", "getpid",
         "gettid", "getuid", "getuid32", "getrandom", "gettimeofday", "madvise", "mmap", "mmap2",
         "mprotect", "munmap", "mremap", "time"}


@dataclasses.dataclass(frozen=True)
class Thing:
    """What else the library may answer while calls fail, and what it then keeps."""
    otherwise: tuple = ()
    keeps: bool = False         # it is documented to remember what it was given at first
    statuses: tuple = (0,)
    unharmed_by: tuple = ()     # errors that must not be noticed at all
    noticed_at: tuple = ()      # calls whose other errors must be
    apart_from: tuple = ()      # calls that cannot be failed here


def thing(*otherwise, **more):
    return Thing(otherwise, **more)


PATHS_FOUND = r"((/\S+)? ?)*"
THINGS = {
    # Relative while the current directory is unknown.
    "absolute": thing("b.v"),
    # The resolver's own requests to servers would wait for answers.
    "address": thing("none", apart_from=(
        "socket", "connect", "setsockopt", "poll", "send", "sendto", "sendmmsg", "recvfrom")),
    "available": thing("failed", unharmed_by=("EINTR",)),
    "break": thing(),
    "cached": thing("", keeps=True),
    "commit": thing("none", "empty", "cut short", unharmed_by=("EINTR",)),
    "cpu": thing(),
    "create": thing("no"),
    "current": thing(""),
    "date": thing(),
    "devices": thing(""),
    "eda": thing(""),
    "executable": thing(r"/\S+/korvane/linux/tool", ""),
    "exists": thing("no"),
    "file": thing("no"),
    "find": thing(""),
    "find_all": thing("", r"\.\./project/top\.v "),
    "findfirst": thing("none"),
    "flags": thing("none", "empty", unharmed_by=("EINTR",)),
    "frequency": thing(),
    "host_name": thing("none, reported"),
    "include": thing("none"),
    # A locale that cannot be read is taken for one that the system does not have.
    "locale": thing("yes, reported", "no, reported", keeps=True),
    "output": thing(r"/\S+/project/"),
    "path_list": thing(),
    "physical": thing(),
    "priority": thing(),
    "processors": thing(),
    "profile": thing("none", "open"),
    # The project stays the one that the first lookup found.
    "project": thing("", keeps=True),
    "report": thing("2 lines"),
    "search_paths": thing("no"),
    "sources": thing(""),
    # Each line that cannot be written is lost whole, and no other one.
    "standard_error": thing("", r"korvane: internal error: broken \(GEN, gen_probe:1\);",
                            "GEN: message 2;"),
    "start": thing(r"/\S+/korvane/bin/tool", r"", statuses=(0, 255)),
    "system_names": thing("failed"),
    "temp_file": thing(),
    "temp_path": thing("none, reported", "known"),
    "ticks": thing(),
    "total": thing(),
    "touch": thing("no"),
    "try_commit": thing("no", unharmed_by=("EINTR",), noticed_at=("close",)),
    "usage": thing(),
    "user": thing("none, reported"),
    "user_profile": thing(""),
    "virtual": thing("failed", unharmed_by=("EINTR",)),
    "working_set": thing("none", unharmed_by=("EINTR",)),
}


@dataclasses.dataclass
class Run:
    status: int
    results: list
    errors: str
    calls: list         # (name, its number among the calls of that name, injected, behind the marks)


def run(probe, name, options):
    with tempfile.TemporaryDirectory(prefix="gen_faults_") as scratch:
        trace = os.path.join(scratch, "trace")
        ground = os.path.join(scratch, "ground")
        os.mkdir(ground)
        try:
            done = subprocess.run(
                ["strace", "-o", trace, "-s", "9999", "-e", "signal=none", *options, probe, name, ground],
                capture_output=True, text=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)
        except subprocess.TimeoutExpired:
            return Run(-1, ["<did not end>"], "", [])
        if not os.path.exists(trace):
            return Run(-1, [f"<strace did not start: {done.stderr.strip()}>"], "", [])
        calls, results = read_trace(trace)
        results = [text.replace(scratch, "/scratch") for text in results]
        return Run(done.returncode, results, done.stderr, calls)


def read_trace(path):
    """The calls from the first mark on, and what came of it."""
    calls = []
    results = []
    counts = collections.Counter()
    marks = 0
    for line in pathlib.Path(path).read_text(errors="replace").split("\n"):
        match = re.match(r"(?:\d+ +)?(\w+)\(", line)
        if not match:
            continue
        name = match[1]
        counts[name] += 1
        text = re.search(r'"/result/(.*)", X_OK', line)
        if MARK in line:
            marks += 1
        elif text:
            results.append(text[1])
        elif marks:
            calls.append((name, counts[name], "(INJECTED)" in line, marks > 1))
    return calls, results


def errors_of(call):
    return ERRORS[SAME.get(call, call)].split()


def interrupts_data(call):
    """Data could be lost where it is interrupted; a close has done its work then."""
    return SAME.get(call, call) in ("read", "write", "openat")


class Check:
    """One thing, on a system that works and on one that does not."""

    def __init__(self, probe, name):
        self.probe = probe
        self.name = name
        self.thing = THINGS[name]
        trial = run(probe, name, [])
        self.usual = trial.results
        self.problems = []
        if trial.status != 0 or len(set(trial.results)) != 1:
            self.problems.append(f"{name}: without a fault: {trial}")
        self.numbers = collections.OrderedDict()
        for call, number, _, behind in trial.calls:
            if not behind:
                self.numbers.setdefault(call, []).append(number)

    def failing_calls(self):
        for call, numbers in self.numbers.items():
            if call in NEVER or call in self.thing.apart_from:
                continue
            if SAME.get(call, call) not in ERRORS:
                self.problems.append(f"{self.name}: no errors are known of {call}")
                continue
            yield call, numbers

    def injections(self, every):
        for call, numbers in self.failing_calls():
            whens = [f"{numbers[0]}..{numbers[-1]}"]
            if every and len(numbers) > 1:
                whens += [str(number) for number in numbers]
            for when in whens:
                for error in errors_of(call):
                    if every or error in MEANINGFUL or len(errors_of(call)) < 3:
                        yield call, error, when

    def judge(self, call, error, when):
        """What is wrong with what becomes of it; nothing if all is well."""
        options = ["-e", f"trace={call},?access,?faccessat,?faccessat2",
                   "-e", f"inject={call}:error={error}:when={when}"]
        found = run(self.probe, self.name, options)
        what = f"{self.name}: {call}:error={error}:when={when}"
        if found.status not in self.thing.statuses:
            return f"{what}: status {found.status}: {found.results} {found.errors.strip()}"
        if found.status != 0:
            return None if found.errors.strip() else f"{what}: status {found.status} without a word"
        if len(found.results) != 2:
            return f"{what}: {found.results}"
        noticed = found.results[0] != self.usual[0]
        if not noticed and call in self.thing.noticed_at and error not in self.thing.unharmed_by:
            return f"{what}: is not noticed"
        if noticed and error in self.thing.unharmed_by and (
                interrupts_data(call) or call in self.thing.noticed_at):
            return f"{what}: data is lost: {found.results[0]}"
        if noticed and not any(re.fullmatch(other, found.results[0])
                               for other in self.thing.otherwise):
            return f"{what}: {found.results[0]!r} instead of {self.usual[0]!r}"
        strayed = any(injected and behind for _, _, injected, behind in found.calls)
        if found.results[1] != self.usual[1] and not self.thing.keeps and not strayed:
            return f"{what}: afterwards {found.results[1]!r} instead of {self.usual[1]!r}"
        return None


def list_calls(checks):
    users = collections.defaultdict(list)
    for check in checks:
        for call in check.numbers:
            users[call].append(check.name)
    for call in sorted(users):
        errors = "never fails, or is memory" if call in NEVER else " ".join(errors_of(call))
        print(f"| `{call}` | {', '.join(users[call])} | {errors} |")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("probe")
    parser.add_argument("things", nargs="*")
    options = parser.parse_args()
    # The resolver is not to wait for servers, nor the zone to be another one than the site's.
    os.environ["RES_OPTIONS"] = "timeout:1 attempts:1"
    os.environ.pop("TZ", None)

    traced = subprocess.run(["strace", "-o", os.devnull, "true"], capture_output=True)
    if traced.returncode != 0:
        print("strace cannot trace here")
        return SKIPPED
    known = subprocess.run([options.probe], capture_output=True, text=True, check=True)
    names = known.stdout.split()
    if names != list(THINGS):
        print(f"the probe knows {names}, this table {list(THINGS)}")
        return 1
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        checks = list(pool.map(lambda name: Check(options.probe, name), options.things or names))
        if options.list:
            list_calls(checks)
            return 0
        injections = [(check, injection) for check in checks
                      for injection in check.injections(options.all)]
        verdicts = pool.map(lambda pair: pair[0].judge(*pair[1]), injections)
        problems = [problem for problem in verdicts if problem]
    problems = [problem for check in checks for problem in check.problems] + problems
    for problem in problems:
        print(problem)
    print(f"{len(injections)} faults in {len(checks)} things, {len(problems)} problems")
    return 1 if problems or not injections else 0


if __name__ == "__main__":
    sys.exit(main())
