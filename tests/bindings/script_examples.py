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

# The last lines end without a line feed; \udcff is the byte 0xFF.
CONDITIONS = "a = 1\n\na == 1\n)\na) = (b\na\udcff = 1\nb\0 = 1\n(|top|a = 1) && (time > 10ns)\na\U0001f480 == 2"
NAMES = "data[10]\ndata[9]\nDATA[1]\n\udcff2\n\U0001f480\ndata[11]\n\ndata[8]"
CASES = [
    ("files", ["ROOT", "ROOT/project", "counter", "adder"], "", 0,
     ["counter   project             ROOT/project/counter.vhd",
      "            shadows database: ROOT/project/db/adder.v"]),
    ("conditions", ["ROOT/conditions.txt"], "", 1,
     ["1: EQUAL_TO(HPATH(a),BUS(1))",
      "2: ",
      "3: Missing left hand side of equation: a == 1",
      "4: paren_count >= 0 (gen_bp_parser:LINE): )",
      "5: Parse Error: Bad symbol(s) after terminal in equation: a) = (b",
      "5: paren_count >= 0 (gen_bp_parser:LINE): a) = (b",
      "6: EQUAL_TO(HPATH(a),BUS(1))",
      "7: Null character: b\0 = 1",
      "8: LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))",
      "9: Missing left hand side of equation: a\U0001f480 == 2"]),
    ("conditions", ["ROOT/clean.txt"], "", 0, ["1: EQUAL_TO(HPATH(a),BUS(1))"]),
    ("conditions", ["ROOT/internal.txt"], "", 1, ["1: paren_count >= 0 (gen_bp_parser:LINE): )"]),
    ("names", [], NAMES, 0,
     ["", "\U0001f480", "\udcff2", "DATA[1]", "data[8]", "data[9]", "data[10]", "data[11]"]),
    ("names", [], "b\na\n\n\n", 0, ["", "", "a", "b"]),
    ("names", [], "", 0, []),
]


def run(command, text, root, environment):
    done = subprocess.run(command, input=os.fsencode(text), stdout=subprocess.PIPE, timeout=60,
                          check=False, cwd=root / "project",
                          env={**staging.environment(root), **environment})
    shown = os.fsdecode(done.stdout).replace(str(root), "ROOT")
    return done.returncode, re.sub(r"(gen_bp_parser:)\d+", r"\1LINE", shown)


def is_expected(name, answer, status, lines):
    """Of the files only some are looked at."""
    shown = answer[1].split("\n")[:-1]
    return answer[0] == status and (shown == lines or (name == "files" and set(lines) <= set(shown)))


def faults_of(case, examples, root, build, locale):
    """What an example prints in the two languages, where that is not the same or not what it should be."""
    name, arguments, text, status, lines = case
    given = [argument.replace("ROOT", str(root)) for argument in arguments]
    python = run(["/usr/bin/python3", examples / "python" / f"{name}.py", *given], text, root,
                 {"PYTHONPATH": str(build / "python"), "LC_ALL": locale})
    tcl = run(["tclsh8.6", examples / "tcl" / f"{name}.tcl", *given], text, root,
              {"TCLLIBPATH": str(build / "tcl"), "LC_ALL": locale})
    if python == tcl and is_expected(name, python, status, lines):
        return []
    return [(name, locale, ascii(python), ascii(tcl))]


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
        for name, text in ("conditions", CONDITIONS), ("clean", "a = 1"), ("internal", ")\n"):
            (root / f"{name}.txt").write_bytes(os.fsencode(text))
        for case in CASES:
            for locale in "C", "C.UTF-8":
                faults += faults_of(case, examples, root, build, locale)
        ran = [(document.name, *one) for document in documents
               for one in run_shown(document, root, build)]
        faults += [one for one in ran if one[-1] != 0]
    for fault in faults:
        print(*fault, sep="\n  ")
    print(f"{len(CASES)} cases of the examples in two languages, {len(ran)} scripts that documents show")
    return 1 if faults or len(ran) < len(documents) else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
