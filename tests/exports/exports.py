#!/usr/bin/env python3
"""Compares what a library exports with what its headers declare with KORVANE_API.

    exports.py LIBRARY DIRECTORY gen|gen_c|sibling

Names are compared as the linker shows them, without parameters; overloads are counted. So a
declaration without a definition is found, a definition that is not exported, and an export that
nobody declared.
"""

import collections
import pathlib
import re
import subprocess
import sys

API = "KORVANE_API"


def without_noise(text):
    """The text without comments, preprocessor lines and the content of literals."""
    text = re.sub(r"//[^\n]*|/\*.*?\*/", " ", text, flags=re.S)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.M)
    text = re.sub(r'"(?:\\.|[^"\\\n])*"', '""', text)
    return re.sub(r"'(?:\\.|[^'\\\n])+'", "' '", text)


def end_of(text, at, opening, closing):
    """Behind the bracket that closes the one at `at`."""
    depth = 0
    for position in range(at, len(text)):
        depth += (text[position] == opening) - (text[position] == closing)
        if depth == 0:
            return position + 1
    raise ValueError(f"no {closing} for: {text[at:at + 60]}")


def statements(text):
    """The declarations of one scope: (what stands before, body in braces or None)."""
    start = at = 0
    while at < len(text):
        if text[at] == "(":
            at = end_of(text, at, "(", ")")
        elif text[at] == ";":
            yield text[start:at].strip(), None
            start = at = at + 1
        elif text[at] == "{":
            end = end_of(text, at, "{", "}")
            yield text[start:at].strip(), text[at + 1:end - 1]
            start = at = end
        else:
            at += 1


class Declarations:
    """Every exported name with the number of its overloads."""

    def __init__(self):
        self.expected = collections.Counter()

    def scope(self, text, prefix="", exported_class=False):
        for head, body in statements(text):
            head = re.sub(r"^(\s*(public|private|protected)\s*:)+\s*", "", head)
            head = re.sub(r"\[\[.*?\]\]|\balignas\s*\([^()]*\)", "", head).strip()
            if not head or re.match(r"(template|using|friend|typedef|enum|static_assert)\b", head):
                continue
            self.declaration(head, body, prefix, exported_class)

    def declaration(self, head, body, prefix, exported_class):
        if head == 'extern ""' and body is not None: # "C", without the content of its literal
            self.scope(body)
            return
        kind = re.match(r"(class|struct|namespace)\b\s*(KORVANE_API\s+)?(\w+)[^()]*$", head)
        if kind:
            if body is not None:
                # A class within an exported one is exported with it.
                self.definition_of_type(kind, body, prefix, exported_class or kind[2] is not None)
            return
        if API not in head and not exported_class:
            return
        words = re.sub(rf"\b{API}\b|\bKORVANE_PRINTF\s*\([^)]*\)", " ", head).strip()
        if re.search(r"\b(inline|constexpr)\b", words):
            return
        before_value = words.split("=")[0].strip()
        if "(" in before_value or re.search(r"\boperator\b", words):
            self.function(words, body, prefix)
        elif re.search(r"\b(extern|static)\b", words):
            self.expected[prefix + re.search(r"(\w+)\s*(\[[^\]]*\]\s*)*$", before_value)[1]] += 1

    def definition_of_type(self, kind, body, prefix, exported):
        name = prefix + kind[3]
        self.scope(body, name + "::", exported)
        if exported and re.search(r"\bvirtual\b|\boverride\b", body):
            for what in ("vtable for ", "typeinfo for ", "typeinfo name for "):
                self.expected[what + name] += 1

    def function(self, words, body, prefix):
        if body is not None or re.search(r"=\s*(default|delete|0)$", words):
            return
        operator = re.search(r"\boperator\b\s*(\(\s*\)|[^\s\w(]+|[^(]+?)\s*\(", words)
        if operator:
            symbol = operator[1].replace(" ", "")
            name = "operator" + symbol if not re.match(r"\w", symbol) else "operator conversion"
        else:
            name = re.search(r"(~?\w+)\s*\(", words)[1]
        self.expected[prefix + name] += 1


def without_brackets(name, opening, closing):
    while opening in name:
        at = name.index(opening)
        name = name[:at] + name[end_of(name, at, opening, closing):]
    return name


def exported_names(library):
    """What the library exports, constructors and destructors counted once whatever their variants."""
    def listing(*options):
        return subprocess.run(["nm", "-D", "--defined-only", *options, library],
                              capture_output=True, text=True, check=True).stdout.splitlines()

    demangled = {line.split(maxsplit=2)[2] for line in listing("-C")
                 if line.split(maxsplit=2)[1] != "A"} # version names
    return collections.Counter(map(plain_name, demangled))


def plain_name(whole):
    """A demangled symbol without its version, parameters and template arguments."""
    name = re.sub(r"@@?.*$", "", whole).replace("[abi:cxx11]", "")
    if re.match(r"(vtable|typeinfo name|typeinfo) for ", name):
        return name
    name = re.sub(r"operator\(\)", "operator<>call", name)
    conversion = re.match(r"(\w+::)*operator [\w]", name)
    if conversion:
        name = name[:name.index("operator")] + "operator conversion"
    elif not re.search(r"operator<", name):
        name = without_brackets(name, "<", ">")
    name = name.split("(")[0].replace("operator<>call", "operator()")
    return name.split(" ")[-1] if "operator" not in name else name


def owner_of(header):
    if header.name == "gen_c.h":
        return "gen_c"
    return "gen" if header.name.startswith("gen") else "sibling"


def main(library, directory, owner):
    declarations = Declarations()
    for header in pathlib.Path(directory).glob("*.h"):
        if owner == owner_of(header):
            declarations.scope(without_noise(header.read_text()))
    expected, exported = declarations.expected, exported_names(library)
    for name in sorted(expected.keys() | exported.keys()):
        if expected[name] != exported[name]:
            print(f"{name}: declared {expected[name]} times, exported {exported[name]} times")
    print(f"{sum(exported.values())} names exported, {sum(expected.values())} declared")
    return 0 if expected == exported and expected else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
