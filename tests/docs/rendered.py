#!/usr/bin/env python3
"""Reads every page of the reference as a browser would show it: links lead somewhere, examples and tables of the headers
keep their lines, tables of the pages say what their sources say, and no marks are left over.

    rendered.py SITE SOURCES
"""

import html.parser
import pathlib
import re
import sys

sys.path.append(str(pathlib.Path(__file__).parents[2] / "packaging"))
import header  # noqa: E402

LEFT_OVER = re.compile(r"@(?:p|param|return)\b|~~~|</?tt>|\\[_*#%|]")


class Page(html.parser.HTMLParser):
    """The text of a page, the lines of its examples, the cells of its tables, where it leads and what leads to it."""

    def __init__(self, path):
        super().__init__()
        self.text, self.lines, self.items, self.rows, self.links, self.anchors = "", [], [], [], [], set()
        self._hidden, self._line_depth, self._in_cell = 0, 0, False
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.anchors |= {given[key] for key in ("id", "name") if given.get(key)}
        self.links += [given[key] for key in ("href", "src", "data") if given.get(key)]
        if tag in ("script", "style"):
            self._hidden += 1
        elif tag == "div" and (self._line_depth or given.get("class") == "line"):
            self._line_depth += 1
            if self._line_depth == 1:
                self.lines.append("")
        elif tag == "li":
            self.items.append("")
        elif tag == "tr" and given.get("class", "").startswith("markdownTable"):
            self.rows.append([])
        elif tag in ("td", "th") and given.get("class", "").startswith("markdownTable"):
            self.rows[-1].append("")
            self._in_cell = True

    def handle_endtag(self, tag):
        if tag in ("script", "style"):
            self._hidden -= 1
        elif tag == "div" and self._line_depth:
            self._line_depth -= 1
        elif tag in ("td", "th"):
            self._in_cell = False

    def handle_data(self, data):
        if self._hidden:
            return
        self.text += data
        if self._line_depth:
            self.lines[-1] += data
        if self.items:
            self.items[-1] += data
        if self._in_cell:
            self.rows[-1][-1] += data


def words_of(text):
    """A text as it is read, however it is typeset."""
    return " ".join(text.replace("\u2013", "--").replace("\u2014", "---").replace("\u200b", "").split())


def broken_links(site, pages):
    for name, page in pages.items():
        for link in page.links:
            target, _, anchor = link.partition("#")
            if "://" in link or link.startswith(("mailto:", "javascript:")):
                continue
            if target and not (site / target).exists():
                yield f"{name} leads to {link}, which is not there"
            elif anchor and target in pages and anchor not in pages[target].anchors:
                yield f"{name} leads to {link}, and there is no such place on that page"


def lost_lines(pages, headers):
    """Complaints about lines of examples and tables, and items of lists, that do not stand by themselves."""
    shown = {line.strip() for page in pages.values() for line in page.lines}
    text = " ".join(words_of(page.text) for page in pages.values())
    items = [words_of(item) for page in pages.values() for item in page.items]
    for path in headers:
        for paragraph in header.paragraphs(path.read_text(encoding="utf-8").split("\n")):
            for sentence in re.split(r"[.:`] ?", header.remark_of(paragraph)):
                if words_of(sentence) not in text:
                    yield f"{path.name}: nowhere: {sentence}"
            for block in header.blocks(header.comment_of(paragraph)):
                for line in block.lines if block.kind == "verbatim" else []:
                    if line.strip() not in shown:
                        yield f"{path.name}: not a line of its own: {line}"
                if block.kind == "item" and not any(item.startswith(block.text) for item in items):
                    yield f"{path.name}: not an item of a list: {block.text}"


def source_rows(page):
    """The rows of the tables of a page in Markdown, as text."""
    for line in page.read_text(encoding="utf-8").split("\n"):
        if line.startswith("|") and not re.fullmatch(r"[|\s:-]+", line):
            cells = re.split(r"(?<!\\)\|", line)[1:-1]
            yield [words_of(re.sub(r"\[([^]]+)\]\([^)]*\)", r"\1", cell.replace(r"\|", "|")).replace("`", ""))
                   for cell in cells]


def changed_rows(pages, sources):
    shown = {tuple(map(words_of, row)) for page in pages.values() for row in page.rows}
    for source in sources:
        for row in source_rows(source):
            if tuple(row) not in shown:
                yield f"{source.name}: no table has the row {row}"


def main(site, sources):
    pages = {path.name: Page(path) for path in sorted(site.glob("*.html"))}
    headers = sorted((sources / "h").glob("*.h"))
    complaints = [*broken_links(site, pages), *lost_lines(pages, headers),
                  *changed_rows(pages, [sources / "README.md", *sorted((sources / "docs").glob("*.md"))])]
    complaints += [f"no page on {path.name}" for path in headers
                   if f"{path.stem.replace('_', '__')}_8h.html" not in pages]
    complaints += [f"{name}: {found[0]} is left over: {page.text[max(0, found.start() - 40):found.end() + 40]!r}"
                   for name, page in pages.items() if (found := LEFT_OVER.search(page.text))]
    print("\n".join(complaints) or f"{len(pages)} pages read")
    return 1 if complaints or not pages else 0


if __name__ == "__main__":
    sys.exit(main(*(pathlib.Path(argument) for argument in sys.argv[1:])))
