#!/usr/bin/env python3
"""What Doxygen reads of a page in Markdown: code in a table as HTML, for Doxygen takes marks within it for its own, and
plain words for links to what the reference does not have. Headings are plain words, too.

    doxygen_page.py PAGE
"""

import html
import pathlib
import re
import sys

ELSEWHERE = re.compile(r"\[([^]]+)\]\((?:\.\./)?(?:examples/[^)]*|LICENSE)\)")
CODE = re.compile(r"(`+)(.+?)\1(?!`)|%")


def code_element(found):
    """A code span of a table's row as an element, its "|" no longer escaped from the table. Doxygen reads no marks within
    double quotes. Outside of code it takes "%" for a mark."""
    if found[2] is None:
        return r"\%"
    parts = re.split(r'("[^"]*")', found[2].strip().replace(r"\|", "|"))
    parts[0::2] = [re.sub(r"--|[\\|@%#*]|(?<!\w)_", r"\\\g<0>", part) for part in parts[0::2]]
    parts[1::2] = [re.sub(r"[\\|]", r"\\\g<0>", part) for part in parts[1::2]]
    return f"<code>{html.escape(''.join(parts), quote=False)}</code>"


def filtered(page):
    for line in page.read_text(encoding="utf-8").split("\n"):
        line = ELSEWHERE.sub(r"\1", line)
        if line.startswith("#"):
            line = line.replace("`", "")
        yield CODE.sub(code_element, line) if line.startswith("|") else line


if __name__ == "__main__":
    print("\n".join(filtered(pathlib.Path(sys.argv[1]))))
