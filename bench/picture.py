#!/usr/bin/env python3
"""Draws what Google Benchmark measured: a row a work, on each width a dot where gen stands beside the best peer and a
stroke where it has to stand at most. Left of the line is faster than the peer.

    picture.py TARGETS LABEL=RESULT.json... > PICTURE.svg
"""

import math
import sys
from xml.sax.saxutils import escape

import table

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


def ratio_of(contestants):
    peers = [time for name, time in contestants.items() if name not in ("gen", "limit")]
    return contestants["gen"] / min(peers) if "gen" in contestants and peers else None


def rows_of(targets, results):
    """[(work, [(width, ratio, ratio to reach or None)])], the works that have a peer."""
    works = dict.fromkeys(work for _, medians in results for work in medians)
    for work in works:
        marks = []
        for label, medians in results:
            ratio = ratio_of(medians.get(work, {}))
            if ratio is not None:
                wanted = targets.get(work, [None] * 3)[1 if label.startswith("32") else 0]
                marks.append((label[:2], ratio, wanted))
        if marks:
            yield work, marks


def drawn(y, work, marks):
    yield f'<text x="{LEFT - 12}" y="{y + 4}" text-anchor="end">{escape(work)}</text>'
    for i, (width, ratio, wanted) in enumerate(marks):
        at = y + (3 if i else -3 if len(marks) > 1 else 0)
        if wanted is not None:
            yield f'<path d="M{place(wanted):.1f} {at - 5}v10" stroke="{COLOURS[width]}" stroke-width="2"/>'
        yield f'<circle cx="{place(ratio):.1f}" cy="{at}" r="4" fill="{COLOURS[width]}"><title>{ratio:.2f}</title></circle>'


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    results = [(label, table.read_medians(path))
               for label, path in (argument.split("=", 1) for argument in arguments[1:])]
    rows = list(rows_of(table.read_targets(arguments[0]), results))
    height = TOP + ROW * len(rows) + 16
    lines = [*legend(), *axis(height)]
    for i, (work, marks) in enumerate(rows):
        lines += drawn(TOP + ROW * i + ROW // 2, work, marks)
    print(HEAD.format(width=LEFT + WIDTH + 24, height=height) + "".join(f"  {line}\n" for line in lines) + "</svg>")


if __name__ == "__main__":
    main(sys.argv[1:])
