#!/usr/bin/env python3
"""Asks bash, zsh and fish to complete command lines of gen_query and wants what a user expects.

    completion.py BASH_COMPLETION ZSH_COMPLETION FISH_COMPLETION

fish is asked where it is installed.
"""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

# What is typed, and words that are then offered and not offered.
CASES = [
    ("gen_query ", {"find", "text", "where"}, {"--trace", "describe", "sort"}),
    ("gen_query fi", {"find"}, {"flags"}),
    ("gen_query find --tr", {"--trace"}, {"--eda"}),
    ("gen_query text ", {"sort", "compare"}, {"find"}),
    ("gen_query text sort --", {"--json", "--help"}, {"--trace"}),
    ("gen_query legal --notice ", {"banner", "trademark"}, {"--prefix", "find"}),
    ("gen_query legal --notice=b", {"banner", "bitstream"}, {"trademark"}),
    ("gen_query find --project ", {"a_directory"}, {"a_file", "--trace"}),
    ("gen_query histogram a_", {"a_directory", "a_file"}, {"--bins"}),
    ("gen_query units --json ", set(), {"find", "a_file"}),
    ("gen_query find ", {"a_file", "a_directory"}, {"where", "--trace"}),
    ("gen_query find -- ", {"a_file"}, {"--trace", "where"}),
    ("gen_query find --cached --", {"--json"}, {"--eda", "--all"}),
    ("gen_query find --all --", {"--trace"}, {"--cached"}),
    ("gen_query time stopwatch tru", {"true", "truncate"}, {"a_file"}),
    ("gen_query time stopwatch ls a", {"a_file", "a_directory"}, {"apropos", "awk"}),
    ("gen_query time stopwatch ls --", set(), {"--json"}),
    ("gen_query text sort --co", {"--color"}, set()),
    ("gen_query find --root ", {"a_directory"}, {"a_file", "--trace"}),
    ("gen_query where > ", set(), {"--json", "find"}),
]


def bash(script, typed, directory):
    words = re.findall(r"[^\s=]+|=", typed) + ([""] if typed.endswith((" ", "=")) else [])
    asked = (f"source {script}; COMP_WORDS=({' '.join(repr(word) for word in words)}); "
             f"COMP_CWORD={len(words) - 1}; _gen_query; printf '%s\\n' \"${{COMPREPLY[@]}}\"")
    done = subprocess.run(["bash", "--norc", "-c", asked], cwd=directory, text=True, check=True,
                          stdout=subprocess.PIPE)
    return set(done.stdout.split())


def fish(script, typed, directory):
    asked = f"source {script}; complete -C '{typed}'"
    done = subprocess.run(["fish", "--no-config", "-c", asked], cwd=directory, text=True, check=True,
                          stdout=subprocess.PIPE, env={**os.environ, "HOME": str(directory)})
    return {line.split("\t")[0].split("=")[-1].rstrip("/") for line in done.stdout.splitlines()}


def read_for(master, seconds, until=None):
    text, end = "", time.monotonic() + seconds
    while time.monotonic() < end and not (until and until in text):
        if select.select([master], [], [], 0.1)[0]:
            text += os.read(master, 65536).decode(errors="replace")
    return text


class Zsh:
    """An interactive shell at a terminal: its completion works nowhere else."""

    def __init__(self, script, directory):
        self.child, self.master = pty.fork()
        if self.child == 0:
            os.chdir(directory)
            environment = {"PATH": "/usr/bin:/bin", "TERM": "dumb", "HOME": str(directory),
                           "ZDOTDIR": str(directory), "PS1": "", "LC_ALL": "C"}
            os.execve("/usr/bin/zsh", ["zsh", "-f", "-i"], environment)
        self.type("stty columns 200 rows 100; unsetopt zle_bracketed_paste; setopt no_list_beep\n")
        self.type(f"fpath=({script.parent} $fpath); autoload -U compinit; compinit -D -u\n")
        self.type("zstyle ':completion:*' list-prompt ''; LISTMAX=1000; setopt no_auto_menu\n")
        self.type("bindkey '^I' list-choices; print READ''Y\n")
        read_for(self.master, 60, "READY")

    def type(self, text):
        os.write(self.master, text.encode())

    def offered(self, typed):
        self.type(typed + "\t")
        time.sleep(0.2)
        self.type("\x15print DO''NE\n")  # the line is dropped: nothing of it is run
        text = read_for(self.master, 30, "DONE")
        listed = text.partition(typed)[2].partition("print DO")[0]
        return set(re.findall(r"[-\w]+", re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", " ", listed)))

    def close(self):
        os.close(self.master)
        os.waitpid(self.child, 0)


def complaints(shell, offered):
    for typed, wanted, unwanted in CASES:
        words = offered(typed)
        if not wanted <= words or unwanted & words:
            yield f"{shell}: '{typed}' offers {sorted(words)}"


def main(bash_script, zsh_script, fish_script):
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        (directory / "a_directory").mkdir()
        (directory / "a_file").touch()
        (directory / ".zshrc").touch()
        failed = list(complaints("bash", lambda typed: bash(bash_script, typed, directory)))
        zsh = Zsh(zsh_script, directory)
        failed += complaints("zsh", zsh.offered)
        zsh.close()
        shells = 2
        if shutil.which("fish"):
            failed += complaints("fish", lambda typed: fish(fish_script, typed, directory))
            shells = 3
    print("\n".join(failed) or f"{len(CASES)} lines completed by each of {shells} shells")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:])))
