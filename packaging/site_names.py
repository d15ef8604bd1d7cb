#!/usr/bin/env python3
"""Writes what the search box of the reference looks through, as a script: a row for each name that a header declares,
each page and each heading.

    site_names.py TAGFILE HEADERS HTML > names.js
"""

import html
import json
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

from header import about, blocks, code_of, comment_of, is_comment, paragraphs

KINDS = {"define": "macro", "enumeration": "enum", "enumvalue": "value", "page": "page", "class": "class",
         "struct": "struct", "file": "header", "group": "family"}


def sentence(comment):
    """The first sentence of a comment, without its marks."""
    text = next((block.text for block in blocks(comment) if block.kind == "text"), "")
    return re.sub(r"@p |`", "", re.split(r"(?<=[.:]) ", text)[0])


def summaries(headers):
    """What is said first of each name; of one that is there again, what is said of the first."""
    summary_of = {}
    for path in sorted(headers.glob("*.h")):
        summary_of[path.name] = sentence(about(path))
        for paragraph in paragraphs(path.read_text(encoding="utf-8").split("\n")):
            if is_comment(paragraph[0]):
                for name in re.findall(r"\w+(?=\(| =|;| \{)", "\n".join(code_of(paragraph))):
                    summary_of.setdefault(name, sentence(comment_of(paragraph)))
    return summary_of


def rows(compound):
    """[name, where it stands, what it is] of a compound and of what it holds."""
    kind, page = compound.get("kind"), compound.findtext("filename")
    if kind == "dir":
        return
    page = page if page.endswith(".html") else page + ".html"
    name = compound.findtext("title" if kind in ("page", "group") else "name")
    yield [name, page, KINDS.get(kind, kind)]
    for member in compound.iter("member"):
        if member.get("kind") == "friend":
            continue
        owner = f"{name}::" if kind in ("class", "struct") else ""
        yield [owner + member.findtext("name"), f"{member.findtext('anchorfile')}#{member.findtext('anchor')}",
               KINDS.get(member.get("kind"), member.get("kind"))]


def headings(site):
    """The rows of the headings on the pages."""
    for page in sorted(site.glob("md_*.html")):
        text = page.read_text(encoding="utf-8")
        name = re.search(r'<div class="title">(.*?)\s*</div>', text)[1]
        for anchor, heading in re.findall(r'<h\d><a class="anchor" id="(\w+)"></a>\s*(.*?)</h\d>', text):
            yield [html.unescape(re.sub("<[^>]*>", "", heading)), f"{page.name}#{anchor}", "in " + html.unescape(name), ""]


def main(tagfile, headers, site):
    summary_of = summaries(headers)
    found = {} # a name is a member of its header and of its family, at one place
    for compound in ElementTree.parse(tagfile).getroot().iter("compound"):
        for row in rows(compound):
            found.setdefault(row[1], [*row, summary_of.get(row[0].rpartition("::")[2], "")])
    for row in headings(site):
        found[row[1]] = row
    listed = ",\n".join(json.dumps(row, ensure_ascii=False) for row in sorted(found.values()))
    print(f"const NAMES = [\n{listed}\n];")


if __name__ == "__main__":
    main(*(pathlib.Path(argument) for argument in sys.argv[1:]))
