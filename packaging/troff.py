"""Text for manual pages, which have 80 columns."""

import re
import textwrap

WIDTH = 78 # as man leaves them to the text


def plain(text):
    """The text with what troff would read as its own put out of its reach."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace("^", "\\(ha")
    text = text.replace("~", "\\(ti").replace("`", "\\(ga").replace('"', "\\(dq")
    return re.sub(r"^\.", r"\\&.", text, flags=re.M)


def last_column(line, width):
    """Where the last column of a table's row begins, if that leaves room for it; None where there are no columns."""
    columns = [found.end() for found in re.finditer(r"\S(?: {2,}|[^ ]* => )(?=\S)", line)]
    return max((column for column in columns if column < width * 2 // 3), default=None)


def rows(lines, width):
    """The lines, those put together of which one goes on with the last column of the one before."""
    result = []
    for line in lines:
        if result and line and len(line) - len(line.lstrip()) == last_column(result[-1], width):
            result[-1] += " " + line.lstrip()
        else:
            result.append(line)
    return result


def folded(line, width):
    """The line in as many as it takes; the later ones begin where its last column does, if their words leave room for
    that."""
    own = len(line) - len(line.lstrip())
    longest = max(map(len, line.split()))
    indent = last_column(line, width) or width
    return textwrap.wrap(line, width, subsequent_indent=" " * (indent if indent + longest <= width else own + 4),
                         break_long_words=False, break_on_hyphens=False, replace_whitespace=False)


def verbatim(lines, indent=7):
    """Lines that are kept as they are, but for a table too wide where so many columns are left free before it."""
    width = WIDTH - indent
    if max(map(len, lines), default=0) > width:
        lines = [part for row in rows(lines, width) for part in (folded(row, width) if len(row) > width else [row])]
    return [".PP", ".EX", *map(plain, lines), ".EE"]
