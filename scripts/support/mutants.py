"""The changes that mutation testing tries: an operator, a constant or a statement of a source at a time.

A comment marks those that no test can notice, with the reason, in their line or above it:

    // MUTANT_EXCL_LINE: reason                       every change of the line
    // MUTANT_EXCL_LINE(0 to 1; without): reason      those changes that begin so
"""

import dataclasses
import re

MARK = re.compile(r"// .*\bMUTANT_EXCL_LINE(?:\((?P<changes>.+)\))?: \S")
SWAPS = {
    "==": ["!="], "!=": ["=="], "<": ["<="], "<=": ["<"], ">": [">="], ">=": [">"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "<<": [">>"], ">>": ["<<"],
    "&": ["|"], "|": ["&"], "^": ["|"], "|=": ["&="], "&=": ["|="],
    "&&": ["||"], "||": ["&&"], "++": ["--"], "--": ["++"],
}
NO_STATEMENT = {"auto", "case", "class", "const", "constexpr", "do", "else", "extern", "for", "if", "namespace",
                "return", "static", "struct", "switch", "template", "typedef", "using", "while", "public", "private"}
LITERAL_SUFFIX = re.compile(r"[uUlLzZ]*$")
TOKEN = re.compile(r"""
    (?P<skip>//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<string>"(?:\\.|[^"\\\n])*")
  | (?P<character>'(?:\\.|[^'\\\n])+')
  | (?P<number>\b\d[\w.']*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<operator>\+\+|--|<=>|<<=|>>=|<<|>>|->|::|[=!<>+\-*/%&|^]=|&&|\|\||[-+*/%&|^<>!~=?:;,.(){}\[\]])
""", re.VERBOSE | re.MULTILINE | re.DOTALL)


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One changed place. The change numbers those that look alike in one file."""

    file: str
    line: int
    text: str
    change: str
    begin: int
    end: int
    replacement: str

    @property
    def name(self):
        return f"{self.file} | {self.text} | {self.change}"

    def __str__(self):
        return f"{self.file}:{self.line}: {self.change}: {self.text}"


def changed_number(literal):
    suffix = LITERAL_SUFFIX.search(literal).group()
    digits = literal[:len(literal) - len(suffix)].replace("'", "")
    try:
        value = int(digits, 0 if not re.fullmatch(r"0\d+", digits) else 8)
    except ValueError:
        has_odd = not literal[-1].isdigit() or float(literal.replace("'", "")) < 2**53
        return f"({literal} {'+ 1' if has_odd else '* 2'})"
    return f"{value + 1}{suffix}"


def is_spaced(source, begin, end):
    """Binary operators stand between blanks; references, pointers and templates do not."""
    return source[begin - 1] in " \n" and source[end] in " \n"


def token_changes(source, match):
    """What a token may become: (what to call it, its replacement)."""
    kind, token, (begin, end) = match.lastgroup, match.group(), match.span()
    if kind == "number":
        yield token, changed_number(token)
    elif kind == "string":
        yield token, token[:-1] + '~"'
    elif kind == "character":
        yield token, "'~'" if token != "'~'" else "'-'"
    elif kind == "word" and token in ("true", "false"):
        yield token, "false" if token == "true" else "true"
    elif kind == "operator":
        if token == "!":
            yield token, ""
        elif token in ("++", "--") or (token in SWAPS and is_spaced(source, begin, end)):
            for other in SWAPS[token]:
                yield token, other


def is_declaration(tokens, at):
    """The statement begins with a type and a name."""
    angles = 0
    while at + 1 < len(tokens):
        token, following = tokens[at], tokens[at + 1]
        if token.group() == "::" or following.group() in ("::", "<") or angles:
            angles += {"<": 1, ">": -1, ">>": -2}.get(following.group(), 0)
            at += 1
        elif token.lastgroup == "word" or token.group() == ">":
            stands_close = following.start() == token.end()
            return following.lastgroup == "word" or (following.group() in ("*", "&", "&&") and stands_close)
        else:
            return False
    return False


def statement_ends(source, tokens):
    """Index of the last token of each statement by that of its first, for what can go without breaking its
    neighbours: calls, assignments, steps and jumps, each at the beginning of a line."""
    ends = {}
    for first, token in enumerate(tokens):
        if source[source.rfind("\n", 0, token.start()) + 1:token.start()].strip():
            continue
        if first and tokens[first - 1].group() not in ("{", "}", ";", ")", "else", ":"):
            continue
        if token.lastgroup == "word":
            if token.group() in NO_STATEMENT or is_declaration(tokens, first):
                continue
        elif token.group() not in ("++", "--", "*"):
            continue
        depth = 0
        for last in range(first, len(tokens)):
            text = tokens[last].group()
            depth += {"(": 1, "[": 1, ")": -1, "]": -1}.get(text, 0)
            if depth < 0 or text in ("{", "}"):
                break
            if text == ";" and depth == 0:
                if tokens[last - 1].group() not in ("delete", "default"):
                    ends[first] = last
                break
    return ends


def without_assertions(tokens):
    """What the compiler checks by itself is no matter for tests."""
    left = []
    skipping = False
    for token in tokens:
        skipping = skipping or token.group() == "static_assert"
        if not skipping:
            left.append(token)
        skipping = skipping and token.group() != ";"
    return left


class Mark:
    """What a comment says about changes of a line."""

    def __init__(self, line, line_before):
        stands_alone = line.lstrip().startswith("//")
        match = MARK.match(line_before.lstrip()) or (MARK.search(line) if not stands_alone else None)
        self.beginnings = (match["changes"] or "").split("; ") if match else []
        self.idle = set(self.beginnings)

    def excludes(self, mutant):
        meant = {beginning for beginning in self.beginnings if mutant.change.startswith(beginning)}
        self.idle -= meant
        return bool(meant)


@dataclasses.dataclass
class Found:
    tried: list
    excluded: int
    idle_marks: list


def numbered(mutants):
    numbers = {}
    for mutant in mutants:
        number = numbers[mutant.name] = numbers.get(mutant.name, 0) + 1
        yield dataclasses.replace(mutant, change=f"{mutant.change} (place {number})") if number > 1 else mutant


def mutants_of(path, file, is_compiled):
    """All of the source at path, which they call file, in lines for which is_compiled(path, line) holds."""
    source = path.read_text()
    tokens = without_assertions([match for match in TOKEN.finditer(source) if match.lastgroup != "skip"])
    lines = source.split("\n")
    marks = [Mark(*pair) for pair in zip(lines, [""] + lines)]
    every = []

    def add(begin, end, change, replacement):
        line = source.count("\n", 0, begin)
        every.append(Mutant(file, line + 1, lines[line].strip(), change, begin, end, replacement))

    for match in tokens:
        for old, new in token_changes(source, match):
            add(match.start(), match.end(), f"{old} to {new}" if new else f"without {old}", new)
    for first, last in statement_ends(source, tokens).items():
        text = " ".join(source[tokens[first].start():tokens[last].end()].split())
        add(tokens[first].start(), tokens[last].end(), f"without {text}", ";")

    tried = [mutant for mutant in numbered(every) if not marks[mutant.line - 1].excludes(mutant)]
    excluded = len(every) - len(tried)
    if "#if" in source:
        tried = [mutant for mutant in tried if is_compiled(path, mutant.line)]
    idle = [f"{file}:{number}: {lines[number - 1].strip()}" for number, mark in enumerate(marks, 1) if mark.idle]
    return Found(tried, excluded, idle)
