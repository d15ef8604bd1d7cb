#!/usr/bin/env python3
"""Asks gen_query of both widths the same requests and wants the same answers, byte for byte.

    parity.py BUILD OTHER_BUILD EXAMPLES

The requests are in cases/*.txt, one file a family of subcommands:

    # A comment.
    $ gen_query text sort -i        a request; each is asked as it is and again with --json
    < file10                        lines for its standard input
    < file9
    ? 1                             the exit status it must have, 0 where none is given
    ~ [0-9]+ seconds                what a run may differ in: masked before the comparison

Requests are asked in a copy of the example suite, with its project as the current directory. Both
widths see the same paths, since both run from the same place, one after the other.
"""

import dataclasses
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

SKIPPED = 77


@dataclasses.dataclass
class Request:
    place: str
    arguments: list
    text: str = ""
    status: int = 0
    masks: list = dataclasses.field(default_factory=list)

    def forms(self):
        yield self.arguments
        if not {"--json", "--help"} & set(self.arguments):
            yield self.arguments[:1] + self.json_arguments()

    def json_arguments(self):
        rest = self.arguments[1:]
        at = rest.index("--") if "--" in rest else len(rest)
        return rest[:at] + ["--json"] + rest[at:]


def read_requests(path):
    requests = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        mark, rest = line[:2], line[2:]
        if mark == "$ ":
            requests.append(Request(f"{path.name}:{number}", shlex.split(rest)))
        elif mark.rstrip() == "<":
            requests[-1].text += rest + "\n"
        elif mark == "? ":
            requests[-1].status = int(rest)
        elif mark == "~ ":
            requests[-1].masks.append(rest)
        elif line.strip() and not line.startswith("#"):
            sys.exit(f"{path.name}:{number}: not understood: {line}")
    return requests


def ask(root, request, arguments):
    done = subprocess.run(arguments, input=request.text.encode(), capture_output=True,
                          cwd=root / "project", env=staging.environment(root),
                          executable=root / "linux" / "gen_query", timeout=60, check=False)
    answer = [done.stdout, done.stderr]
    fault = json_fault(done.stdout) if "--json" in arguments else None
    for mask in request.masks:
        answer = [re.sub(mask.encode(), b"<masked>", text) for text in answer]
    return done.returncode, *answer, fault


def json_fault(output):
    """An answer is one object, or objects in a line each."""
    for parts in ([output], output.splitlines()):
        try:
            for part in parts:
                json.loads(part or b"{}")
            return None
        except ValueError as error:
            fault = f"no JSON: {error}"
    return fault


def answers_of(root, binary, examples, requests):
    staging.stage(root, binary, examples)
    return [ask(root, request, arguments)
            for request in requests for arguments in request.forms()]


def faults_of(request, one, other):
    status, _, errors, no_json = one
    if one != other:
        yield f"the widths differ:\n{one}\n{other}"
    if status != request.status:
        yield f"exit status {status}, not {request.status}: {errors.decode(errors='replace')}"
    if no_json:
        yield no_json


def main(build, other_build, examples):
    if not (other_build / "CMakeCache.txt").exists():
        print(f"skipped: the other width is not configured in {other_build}")
        return SKIPPED
    # Never compare with what an older state of the sources left there.
    subprocess.run(["cmake", "--build", other_build, "--target", "gen_query"],
                   stdout=subprocess.DEVNULL, check=True)

    cases = pathlib.Path(__file__).parent / "cases"
    requests = [request for path in sorted(cases.glob("*.txt"))
                for request in read_requests(path)]
    with staging.scratch() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        ours, theirs = (answers_of(root, path / "bin" / "gen_query", examples, requests)
                        for path in (build, other_build))

    asked = [(request, arguments) for request in requests for arguments in request.forms()]
    failed = False
    for (request, arguments), one, other in zip(asked, ours, theirs):
        for fault in faults_of(request, one, other):
            failed = True
            print(f"{request.place}: {shlex.join(arguments)}\n  {fault}")
    print(f"{len(asked)} requests asked of both widths")
    return 1 if failed or not asked else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
