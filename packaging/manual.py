#!/usr/bin/env python3
"""Writes gen_query(1), each subcommand with its example.

    manual.py DESCRIPTION VERSION DATE
"""

import sys

import describe
from troff import plain, verbatim

HEAD = """\
.TH GEN_QUERY 1 "{date}" "korvane_gen {version}" "korvane suite"
.SH NAME
gen_query \\- asks the general-utilities library what every tool of the suite would answer
.SH SYNOPSIS
.B gen_query
.I subcommand
.RI [ option ...]
.RI [ argument ...]
.br
.B gen_query
.RB [ \\-\\-help | \\-\\-help\\-all | \\-\\-version ]
.SH DESCRIPTION
Every executable of the suite asks one library where it lies, which file a name means, how names compare and what a
condition means.
.B gen_query
asks that library, so that people and scripts see the answers that the tools get.
It takes its installation from where it lies itself, as each tool does, or as a tool of the installation that
.B \\-\\-root
names.
.PP
Every subcommand takes
.BR \\-\\-json ,
which answers as one JSON object, and
.BR \\-\\-help .
Before a subcommand or behind it may stand
.TP
.BI \\-\\-root " dir"
Ask as a tool of the installation at
.IR dir .
.TP
.BI \\-\\-color " when"
Let rows stand out in colour:
.BR always ,
.BR never ,
or
.B auto
as suits the terminal.
.SH SUBCOMMANDS
"""

TAIL = """\
.SH EXIT STATUS
.TP
.B 0
found, true, equal, nothing to complain of
.TP
.B 1
not found, false, different, diagnostics
.TP
.B 2
the command line or the input cannot be used, or the answer cannot be printed
.SH ENVIRONMENT
.TP
.B PATH
Where the executable is looked for when it was started by its bare name.
.TP
.B KORVANE_CFG
Switches of the usage report, which
.B gen_query modules
shows.
.TP
.B GEN_QUERY_ROOT
As
.BR \\-\\-root ,
which goes before it.
.TP
.B KORVANE_ROOTDIR
Set for the programs that a tool starts, where it is not set yet. It says where an executable is looked for that was started by
its bare name, and nothing else: libraries and data are those of the installation that the executable lies in, whatever this
variable says.
.TP
.BR KORVANE_DIR ", " KORVANE_PLATFORM ", " KORVANE_BIT_TYPE
The executable directories and the width of the installation, as in every tool of the suite.
.TP
.BR TZ ", " LC_ALL ", " LC_CTYPE ", " LC_NUMERIC ", " LC_TIME ", " LANG
Time zone and locale.
.TP
.BR NO_COLOR ", " TERM ", " COLUMNS
Whether answers on a terminal have colours, and how wide bars may be.
.SH FILES
.TP
.I gen_query.toml
The directories of a project, which lies where it does; see the subcommand
.BR settings .
.SH SEE ALSO
.BR korvane_gen (3)
"""


def split_footer(footer):
    """The example's lines, and the remarks below it."""
    example, remarks = [], []
    for line in footer.splitlines():
        if line.startswith("  "):
            example.append(line[2:])
        elif line:
            remarks.append(line)
    return example, remarks


def term(option):
    value = option.value.lower() if option.value else ""
    if option.positional:
        return f".I {plain(option.positional)}{' ...' if option.repeated else ''}"
    names = ", ".join(f"\\fB{plain(name)}\\fR" for name in option.names)
    return names + (f" \\fI{plain(value)}\\fR" if value else "")


def described(option):
    text = option.summary
    if option.choices:
        text += ": " + ", ".join(option.choices[:-1]) + " or " + option.choices[-1]
    if option.default:
        text += f" ({option.default} if not given)"
    return plain(text) + "."


def synopsis(path, command):
    words = []
    for option in command.options:
        if option.positional:
            word = f"\\fI{plain(option.positional)}\\fR" + ("..." if option.repeated else "")
            words.append(word if option.required else f"[{word}]")
    return " ".join([f"\\fBgen_query {plain(' '.join(path))}\\fR", "[\\fIoption\\fR...]", *words])


def section(path, command):
    example, remarks = split_footer(command.footer)
    lines = [f'.SS "{plain(" ".join(path))}"', synopsis(path, command), ".PP",
             plain(command.summary) + "."]
    for option in command.options:
        if "--help" not in option.names and "--json" not in option.names:
            lines += [".TP", term(option), described(option)]
    if remarks:
        lines += [".PP", plain("\n".join(remarks))]
    return "\n".join(lines + verbatim(example)) + "\n"


def page(root, version, date):
    sections = [section(path, command) for path, command in root.all() if not command.commands]
    return HEAD.format(version=version, date=date) + "".join(sections) + TAIL


if __name__ == "__main__":
    sys.stdout.write(page(describe.read(sys.argv[1]), *sys.argv[2:]))
