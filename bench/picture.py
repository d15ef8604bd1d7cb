#!/usr/bin/env python3
"""Draws a table that table.py printed, wherever in a page it stands: a row a work, on each width a dot where gen stands
beside the best peer and a stroke where it has to stand at most. Left of the line is faster than the peer.

    picture.py PAGE.md > PICTURE.svg
"""

import math
import pathlib
import re
import sys
from xml.sax.saxutils import escape

COLOURS = {"64": "#2a6fb0", "32": "#c8641e"}
LOWEST, HIGHEST = 1 / 32, 8 # of the ratios that the axis shows
LEFT, WIDTH, TOP, ROW = 390, 400, 64, 18

HEAD = """\
<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}"
     font-family="Helvetica, Arial, sans-serif" font-size="12" fill="#1e2833">
  <title>The time that gen takes, over the time of the best peer</title>
  <rect width="{width}" height="{height}" fill="#ffffff"/>
"""


def place(ratio):
    """Where a ratio stands on the axis, which is logarithmic and ends somewhere."""
    shown = min(max(ratio, LOWEST), HIGHEST)
    return LEFT + WIDTH * math.log(shown / LOWEST) / math.log(HIGHEST / LOWEST)


def axis(height):
    ratio = LOWEST
    while ratio <= HIGHEST:
        x, at_peer = place(ratio), ratio == 1
        text = f"{ratio:g}" if ratio >= 1 else f"1/{1 / ratio:g}"
        yield (f'<path d="M{x:.1f} {TOP - 8}V{height - 8}" stroke="{"#44566c" if at_peer else "#dde3ea"}"/>'
               f'<text x="{x:.1f}" y="{TOP - 14}" text-anchor="middle">{text}</text>')
        ratio *= 2


def legend():
    for i, (width, colour) in enumerate(COLOURS.items()):
        x = LEFT + 130 * i
        yield (f'<circle cx="{x}" cy="18" r="4" fill="{colour}"/><text x="{x + 9}" y="22">{width}-bit</text>'
               f'<path d="M{x + 62} 12v12" stroke="{colour}" stroke-width="2"/>'
               f'<text x="{x + 68}" y="22">to reach</text>')
    yield '<text x="12" y="22" font-weight="bold">gen over the best peer</text>'


def rows_of(lines):
    """[(work, [(width, ratio, ratio to reach or None)])], the works that have a peer."""
    cells = [[cell.strip() for cell in line.strip().strip("|").split("|")] for line in lines]
    head, *works = cells
    columns = [(re.search(r"\d+", head[i - 2])[0], i) for i, name in enumerate(head) if name == "gen/peer"]
    for work in works:
        found = [(width, re.match(r"([\d.]+)(?: of ([\d.]+))?", work[i])) for width, i in columns]
        marks = [(width, float(ratio[1]), float(ratio[2]) if ratio[2] else None) for width, ratio in found if ratio]
        if marks:
            yield work[0], marks


def drawn(y, work, marks):
    yield f'<text x="{LEFT - 12}" y="{y + 4}" text-anchor="end">{escape(work)}</text>'
    for i, (width, ratio, wanted) in enumerate(marks):
        at = y + (3 if i else -3 if len(marks) > 1 else 0)
        if wanted is not None:
            yield f'<path d="M{place(wanted):.1f} {at - 5}v10" stroke="{COLOURS[width]}" stroke-width="2"/>'
        yield f'<circle cx="{place(ratio):.1f}" cy="{at}" r="4" fill="{COLOURS[width]}"><title>{ratio:.2f}</title></circle>'


def main(page):
    text = pathlib.Path(page).read_text(encoding="utf-8")
    table = re.search(r"^\| work \(ns\) .*\n\|[-|]+\n((?:\|.*\n)+)", text, re.M)
    if not table:
        sys.exit(f"{page} has no table of scripts/bench")
    rows = list(rows_of([table[0].split("\n")[0], *table[1].splitlines()]))
    height = TOP + ROW * len(rows) + 16
    lines = [*legend(), *axis(height)]
    for i, (work, marks) in enumerate(rows):
        lines += drawn(TOP + ROW * i + ROW // 2, work, marks)
    print(HEAD.format(width=LEFT + WIDTH + 24, height=height) + "".join(f"  {line}\n" for line in lines) + "</svg>")


if __name__ == "__main__":
    main(sys.argv[1])
