#!/usr/bin/env python3
"""Has real tools read every HDL file of the examples: Icarus Verilog, Verilator and GHDL.

    hdl.py EXAMPLES

A tool that is not installed reads nothing; without any of them the test is skipped.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77


def include_directories(suite):
    return [suite / "project", suite / "project/inc", suite / "libraries/parablocks"]


def icarus(suite, source, _):
    standard = "-g2012" if source.suffix == ".sv" else "-g2005"
    return ["iverilog", standard, "-i", "-tnull",
            *[f"-I{directory}" for directory in include_directories(suite)], source]


def verilator(suite, source, directory):
    # It wants every module that is instantiated. One is written in VHDL, and stands here by its ports.
    (pathlib.Path(directory) / "debounce.v").write_text(
        "module debounce (input clk, input button, output pressed);\nendmodule\n")
    modules = [directory, suite / "libraries/primitives/other", suite / "project/src/display"]
    return ["verilator", "--lint-only", "--no-timing", "-Wno-fatal", "-Wno-lint", "-Wno-style",
            *[f"-I{each}" for each in include_directories(suite)],
            *[word for each in modules for word in ("-y", each)], source]


def ghdl(_, source, directory):
    return ["ghdl", "-a", "--std=08", f"--workdir={directory}", source]


TOOLS = {"iverilog": ({".v", ".sv"}, icarus), "verilator": ({".v", ".sv"}, verilator), "ghdl": ({".vhd"}, ghdl)}


def main(suite):
    installed = [name for name in TOOLS if shutil.which(name)]
    if not installed:
        print("skipped: none of " + ", ".join(TOOLS) + " is installed")
        return SKIPPED
    read, failed = 0, 0
    with tempfile.TemporaryDirectory() as directory:
        for name in installed:
            suffixes, command = TOOLS[name]
            for source in sorted(path for path in suite.rglob("*") if path.suffix in suffixes):
                done = subprocess.run(command(suite, source, directory), cwd=directory, text=True, check=False,
                                      stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                read += 1
                if done.returncode != 0:
                    failed += 1
                    print(f"{name} refuses {source}:\n{done.stdout}")
    missing = sorted(set(TOOLS) - set(installed))
    print(f"{read} readings" + (f"; not installed: {', '.join(missing)}" if missing else ""))
    return 1 if failed or not read else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
