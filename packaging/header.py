"""A public header, read as text: its first comment is about the file, and below that a comment stands above
what it is about, one declaration or several in a row."""

import pathlib
import re


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


def comment_of(paragraph):
    """The comment's text, without its marks."""
    return [re.sub(r"^\s*/// ?", "", line) for line in paragraph if is_comment(line)]


def code_of(paragraph):
    return [line for line in paragraph if not is_comment(line)]


def about(header):
    """The lines of the comment on the whole file."""
    lines = pathlib.Path(header).read_text(encoding="utf-8").split("\n")
    return comment_of(next(paragraph for paragraph in paragraphs(lines) if is_comment(paragraph[0])))
