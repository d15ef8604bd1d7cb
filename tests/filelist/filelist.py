#!/usr/bin/env python3
"""Writes lists of files with gen_query, and has Verilator and Icarus Verilog elaborate what is in them.

    filelist.py GEN_QUERY SUITE

Each case asks in the project of the example suite; the simulators run elsewhere, so that absolute names are what
counts. A simulator that is not installed is left out; without any the status is 77.
"""

import dataclasses
import os
import pathlib
import shutil
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402


@dataclasses.dataclass
class Case:
    name: str
    files: dict          # lists, by their names below the project; the first one is asked for
    top: str
    options: tuple = ()
    variables: dict = dataclasses.field(default_factory=dict)
    readers: tuple = ("verilator", "iverilog")


CASES = [
    Case("names", {"d.f": "adder.v\ncarry.v\n"}, "adder"),
    Case("comments", {"d.f": "// adders\n# all\nadder.v // ours\n/* not\nthis.v */ carry.v\n"}, "adder"),
    Case("-f", {"d.f": "-f lists/more.f\n", "lists/more.f": "adder.v carry.v"}, "adder"),
    Case("-F", {"d.f": "-F lists/more.f carry.v", "lists/more.f": "own.v",
                "lists/own.v": "module own (input a, input b, output s);\n"
                               "  carry c (.a(a), .b(b), .c_in(1'b0), .sum(s), .c_out());\nendmodule\n"}, "own"),
    Case("-y and +libext+", {"d.f": "adder.v -y ../libraries/primitives/other +libext+.v"}, "adder"),
    Case("-v", {"d.f": "adder.v -v carry.v"}, "adder"),
    Case("+incdir+", {"d.f": "+incdir+.+inc+../libraries/parablocks src/display/display.sv"}, "display"),
    Case("-I", {"d.f": "-I. -I inc -I../libraries/parablocks src/display/display.sv"}, "display"),
    Case("+define+", {"d.f": "+define+WIDE=3 own.v",
                      "own.v": "module own (output [`WIDE-1:0] o);\n  assign o = `WIDE;\nendmodule\n"}, "own"),
    Case("-D", {"d.f": "-DWIDE=3 -D HIGH=2 own.v",
                "own.v": "module own (output [`WIDE:`HIGH] o);\n  assign o = 0;\nendmodule\n"}, "own"),
    Case("quotes within a word", {"d.f": '+incdir+"inc"+.+"../libraries/parablocks" +define+TITLE="x" src/display/display.sv'},
         "display"),
    Case("an option's value", {"d.f": "--top-module adder adder.v carry.v"}, "adder",
         readers=("verilator",)),
    Case("variables", {"d.f": "$OURS.v ${THEIRS}.v"}, "adder", variables={"OURS": "adder", "THEIRS": "carry"}),
    Case("--includes", {"d.f": "src/display/display.sv"}, "display", ("--includes",)),
    Case("--includes of units from directories", {
        "d.f": "own.v -y units +libext+.v", "own.v": "module own;\n  leaf l ();\nendmodule\n",
        "units/leaf.v": '`include "beside.vh"\n`include "looked_up.vh"\nmodule leaf; endmodule\n',
        "units/beside.vh": "", "lib/looked_up.vh": ""}, "own", ("--includes", "--project-libs", "lib")),
]

SIMULATORS = {
    "verilator": lambda top, written: ["verilator", "--lint-only", "-Wno-fatal", "--top-module", top, "-f", written],
    "iverilog": lambda top, written: ["iverilog", "-g2012", "-tnull", "-s", top, "-c", written],
}

# What cannot be used, with the exit status and a part of what is said.
REFUSED = [
    ({"d.f": "adder.v no_such.v"}, 1, "d.f:1: 'no_such.v' is not found"),
    ({"d.f": "adder.v\n-y no/such"}, 1, "d.f:2: there is no directory 'no/such'"),
    ({"d.f": "-f d.f"}, 2, "d.f:1: 'd.f' names itself"),
    ({"d.f": "\n-f e.f", "e.f": "-f d.f"}, 2, "e.f:1: 'd.f' names itself"),
    ({"d.f": "-f"}, 2, "d.f:1: -f without a value"),
    ({"d.f": "-f -"}, 2, "d.f:1: standard input cannot be named in a list"),
    ({"d.f": '+incdir+"my dir"'}, 1, "d.f:1: there is no directory 'my dir'"),
    ({"d.f": 'adder.v"'}, 2, "d.f:1: a name in quotes does not end"),
    ({"d.f": "adder.v\n-sv"}, 0, "d.f:2: '-sv' stays as it is; Icarus Verilog reads it in no list"),
    ({"d.f": "-f no.f"}, 2, "d.f:1: cannot read 'no.f': No such file"),
    ({"d.f": "a /* b"}, 2, "d.f:1: a comment does not end"),
    ({"d.f": "$NOBODY_SETS_THIS.v"}, 2, "d.f:1: the variable 'NOBODY_SETS_THIS' is not set"),
    ({"d.f": "adder.v"}, 0, "shadows"),
    ({"d.f": "adder.v adder.v"}, 0, "is listed already"),
    ({"d.f": "src"}, 1, "/src' is a directory"),
    ({"d.f": "counter.kbd"}, 0, "/counter.kbd' is no Verilog"),
    ({"d.f": "-Ip+q", "p+q/x": ""}, 1, 'simulators take a "+" for the end of a directory'),
    ({"d.f": '"a b.v"', "a b.v": ""}, 1, "cannot read a name with blanks"),
    ({"d.f": "own.v", "own.v": "`define F \"x.vh\"\n`include `F\n"}, 1, "'`include `F' is not followed"),
    ({"d.f": "own.v", "own.v": "`include <no_such.vh>\n"}, 1, "'no_such.vh' is not found"),
    ({"d.f": "own.v", "own.v": "// `include \"a.vh\"\n`include\n`include \"b\n"}, 0, ""),
]


class Ground:
    def __init__(self, root, binary, suite):
        self.root, self.binary, self.suite = root, binary, suite

    def stage(self, files):
        staging.stage(self.root, self.binary, self.suite)
        for name, text in files.items():
            path = self.root / "project" / name
            path.parent.mkdir(exist_ok=True)
            path.write_text(text)

    def ask(self, *arguments, variables=None):
        return subprocess.run([self.root / "linux/gen_query", *arguments], text=True, cwd=self.root / "project",
                              env={**staging.environment(self.root), **(variables or {})}, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def simulate(self, name, simulator, top, lines, elsewhere):
        """Why the simulator refuses what is listed, or nothing."""
        written = elsewhere / "written.f"
        written.write_text(lines)
        done = subprocess.run(SIMULATORS[simulator](top, written), cwd=elsewhere, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return [] if done.returncode == 0 else [f"{name}: {simulator} refuses\n{lines}{done.stdout}"]


def faults_of_lists(ground, simulators, elsewhere):
    for case in CASES:
        ground.stage(case.files)
        done = ground.ask("filelist", "d.f", *case.options, variables=case.variables)
        if done.returncode != 0:
            yield f"{case.name}: status {done.returncode}: {done.stderr}"
            continue
        for simulator in set(simulators).intersection(case.readers):
            yield from ground.simulate(case.name, simulator, case.top, done.stdout, elsewhere)


def faults_of_units(ground, simulators, elsewhere):
    ground.stage({"shown.sv": (ground.suite / "project/src/display/display.sv").read_text()})
    for unit, top, *options in (("mux", "mux"), ("shown", "display"), ("adder", "adder"),
                                ("mux", "mux", "--shipped")):
        done = ground.ask("sources", unit, "--filelist", *options)
        if done.returncode != 0:
            yield f"sources {unit}: status {done.returncode}: {done.stderr}"
        for simulator in simulators:
            yield from ground.simulate(f"sources {unit}", simulator, top, done.stdout, elsewhere)


def faults_of_refused(ground):
    for files, status, message in REFUSED:
        ground.stage(files)
        done = ground.ask("filelist", "d.f", "--includes")
        if done.returncode != status or message not in done.stderr:
            yield f"{files}: status {done.returncode}, not {status}: {done.stderr}"


def main(binary, suite):
    simulators = [name for name in SIMULATORS if shutil.which(name)]
    with staging.scratch() as directory:
        scratch = pathlib.Path(os.path.realpath(directory))
        elsewhere = scratch / "elsewhere"
        elsewhere.mkdir()
        ground = Ground(scratch / "korvane", binary, suite)
        faults = [*faults_of_refused(ground), *faults_of_lists(ground, simulators, elsewhere),
                  *faults_of_units(ground, simulators, elsewhere)]
    if not faults and not simulators:
        print("there is no simulator here that could read the lists")
        return 77
    print("\n".join(faults) or f"{len(CASES) + 4} lists read by: {', '.join(simulators)}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:])))
