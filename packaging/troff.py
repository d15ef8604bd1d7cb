"""Text for manual pages."""

import re


def plain(text):
    """The text with what troff would read as its own put out of its reach."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace("^", "\\(ha")
    text = text.replace("~", "\\(ti").replace("`", "\\(ga").replace('"', "\\(dq")
    return re.sub(r"^\.", r"\\&.", text, flags=re.M)


def verbatim(lines):
    return [".PP", ".EX", *[plain(line) for line in lines], ".EE"]
