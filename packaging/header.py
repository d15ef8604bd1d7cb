"""A public header, read as text: its first comment is about the file, and below that a comment stands above
what it is about, one declaration or several in a row."""

import dataclasses
import pathlib
import re

NUMBERED = re.compile(r"(\d+\.|[-*]) +(?=\S)")
MARKED = re.compile(r"@(param (\w+(?:, ?\w+)*)|return)\b *")


@dataclasses.dataclass
class Block:
    """A piece of a comment: "text", "verbatim" (examples, tables), "item" of a list, "param" or "return"."""
    kind: str
    label: str  # of an item its number or mark, of a param its name
    lines: list

    @property
    def text(self):
        return " ".join(line.strip() for line in self.lines)


def is_comment(line):
    return line.lstrip().startswith("///")


def paragraphs(lines):
    """Runs of lines that belong together: nothing blank in between, a comment only at the top."""
    paragraph = []
    for line in lines:
        begins = is_comment(line) and paragraph and not is_comment(paragraph[-1])
        if not line.strip() or begins:
            if paragraph:
                yield paragraph
            paragraph = []
        if line.strip():
            paragraph.append(line)
        else:
            yield [line]
    if paragraph:
        yield paragraph


def remark_of(paragraph):
    """The text of a comment between declarations, about those that follow it; empty where the paragraph is none."""
    if all(re.match(r"\s*// ", line) for line in paragraph):
        return " ".join(line.strip()[3:] for line in paragraph)
    return ""


def comment_of(paragraph):
    """The comment's text, without its marks."""
    return [re.sub(r"^\s*/// ?", "", line) for line in paragraph if is_comment(line)]


def code_of(paragraph):
    return [line for line in paragraph if not is_comment(line)]


def about(header):
    """The lines of the comment on the whole file."""
    lines = pathlib.Path(header).read_text(encoding="utf-8").split("\n")
    return comment_of(next(paragraph for paragraph in paragraphs(lines) if is_comment(paragraph[0])))


def block_begun_by(line, last):
    """The block that a line begins by its own mark; None where it has none, or goes on with the text before it."""
    if found := MARKED.match(line):
        return Block(found[1].split()[0], found[2] or "", [line[found.end():]])
    goes_on = last and last.kind != "item" and not last.text.endswith(":")
    if (found := NUMBERED.match(line)) and not goes_on:
        return Block("item", found[1], [line[found.end():]])
    return None


def blocks(comment):
    """The blocks of a comment. What stands two or more columns to the right keeps its lines, unless it goes on with
    an item or a mark."""
    found, blank = [], True
    for line in comment:
        last = found[-1] if found and not blank else None
        indented = line.startswith("  ")
        if not line.strip():
            if found and found[-1].kind == "verbatim":
                found[-1].lines.append("")
                continue # an example may go on
            blank = True
            continue
        if indented and found and found[-1].kind == "verbatim":
            found[-1].lines.append(line)
        elif begun := block_begun_by(line, last):
            found.append(begun)
        elif indented and not (last and last.kind in ("item", "param", "return")):
            found.append(Block("verbatim", "", [line]))
        elif last and (indented or last.kind == "text"):
            last.lines.append(line)
        else:
            found.append(Block("text", "", [line]))
        blank = False
    for block in found:
        if block.kind == "verbatim":
            block.lines = unindented(block.lines)
    return found


def unindented(lines):
    """The lines of an example, as far to the left as they go, without blank ones at their end."""
    while not lines[-1]:
        lines = lines[:-1]
    margin = min(len(line) - len(line.lstrip()) for line in lines if line)
    return [line[margin:] for line in lines]
