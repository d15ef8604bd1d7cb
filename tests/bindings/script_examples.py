#!/usr/bin/env python3
"""Runs the examples in both languages on the example suite: they print the same, and what they should. Then it
runs what the documents show in either language, each document's pieces as one script.

    script_examples.py BUILD GEN_QUERY EXAMPLES DOCUMENT...
"""

import os
import pathlib
import re
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

CONDITIONS = "(|top|a = 1) && (time > 10ns)\na == 1\n"
NAMES = "data[10]\ndata[9]\nDATA[1]\n"
CASES = [
    ("files", ["ROOT", "ROOT/project", "counter", "adder"], "", 0,
     ["counter   project             ROOT/project/counter.vhd",
      "            shadows database: ROOT/project/db/adder.v"]),
    ("conditions", ["ROOT/conditions.txt"], "", 1,
     ["1: LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))",
      "2: Missing left hand side of equation: a == 1"]),
    ("names", [], NAMES, 0, ["DATA[1]", "data[9]", "data[10]"]),
]


def run(command, text, root, environment):
    done = subprocess.run(command, input=text, stdout=subprocess.PIPE, text=True, timeout=60,
                          check=False, cwd=root / "project",
                          env={**staging.environment(root), **environment})
    return done.returncode, done.stdout.replace(str(root), "ROOT")


def shown(document, language):
    """What the document shows in that language."""
    return "".join(re.findall(rf"^```{language}\n(.*?)^```", document.read_text(), re.S | re.M))


def run_shown(document, root, build):
    """[(language, exit status)] of the scripts that a document shows."""
    interpreters = {"python": ["/usr/bin/python3", {"PYTHONPATH": str(build / "python")}],
                    "tcl": ["tclsh8.6", {"TCLLIBPATH": str(build / "tcl")}]}
    for language, (interpreter, environment) in interpreters.items():
        script = root / f"shown.{language}"
        script.write_text(shown(document, language).replace("/opt/korvane", str(root)))
        if script.stat().st_size:
            yield language, run([interpreter, script], "", root, environment)[0]


def main(build, binary, examples, *documents):
    faults = []
    with staging.scratch() as directory:
        root = pathlib.Path(os.path.realpath(directory)) / "korvane"
        staging.stage(root, binary, examples / "suite")
        (root / "conditions.txt").write_text(CONDITIONS)
        for name, arguments, text, status, lines in CASES:
            given = [argument.replace("ROOT", str(root)) for argument in arguments]
            python = run(["/usr/bin/python3", examples / "python" / f"{name}.py", *given], text, root,
                         {"PYTHONPATH": str(build / "python")})
            tcl = run(["tclsh8.6", examples / "tcl" / f"{name}.tcl", *given], text, root,
                      {"TCLLIBPATH": str(build / "tcl")})
            if python != tcl or python[0] != status or not set(lines) <= set(python[1].splitlines()):
                faults.append((name, python, tcl))
        ran = [(document.name, *one) for document in documents
               for one in run_shown(document, root, build)]
        faults += [one for one in ran if one[-1] != 0]
    for fault in faults:
        print(*fault, sep="\n  ")
    print(f"{len(CASES)} examples in two languages, {len(ran)} scripts that documents show")
    return 1 if faults or len(ran) < len(documents) else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
