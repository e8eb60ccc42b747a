"""Draws a screen of text as an SVG picture that refers to nothing outside itself.

screen_svg.py TITLE COLUMN ROW <screen >picture: the screen as "tmux capture-pane -e" prints it,
of whose attributes the program uses one, standout; the cursor stands at the column and row.
"""

import html
import itertools
import re
import sys

SIZE, WIDTH, HEIGHT, MARGIN = 15, 9, 18, 14  # of a character, of its cell, around the screen
PAPER, INK, CURSOR = "#16191d", "#d9dee3", "#f5b83d"
PLAIN, STANDOUT, UNDER_CURSOR = (None, INK), (INK, PAPER), (CURSOR, PAPER)


def cells(line):
    """Yields the characters of a line with the colours behind and of each."""
    colours = PLAIN
    for attribute, character in re.findall(r"\x1b\[([\d;]*)m|([^\x1b])", line):
        if character:
            yield character, colours
        elif attribute not in ("39", "49"):  # the terminal's own colours
            colours = {"7": STANDOUT, "": PLAIN, "0": PLAIN, "27": PLAIN}[attribute]


def draw(line, y, cursor):
    """Yields the elements of the line whose upper edge is at y; its cursor may be None."""
    row = list(cells(line))
    if cursor is not None:
        row += [(" ", PLAIN)] * (cursor + 1 - len(row))
        row[cursor] = row[cursor][0], UNDER_CURSOR
    column = 0
    for (paper, ink), run in itertools.groupby(row, key=lambda cell: cell[1]):
        text = "".join(character for character, _ in run)
        if paper:
            yield (f'<rect x="{MARGIN + WIDTH * column}" y="{y}" '
                   f'width="{WIDTH * len(text)}" height="{HEIGHT}" fill="{paper}"/>')
        for word in re.finditer(r"\S+", text):
            yield (f'<text x="{MARGIN + WIDTH * (column + word.start())}" y="{y + 14}" '
                   f'textLength="{WIDTH * len(word[0])}" fill="{ink}">'
                   f'{html.escape(word[0])}</text>')
        column += len(text)


def main(title, column, row):
    lines = sys.stdin.read().rstrip("\n").split("\n")
    columns = max(len(list(cells(line))) for line in lines)
    width, height = columns * WIDTH + 2 * MARGIN, len(lines) * HEIGHT + 2 * MARGIN
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
          f'viewBox="0 0 {width} {height}" font-family="monospace" font-size="{SIZE}">')
    print(f"<title>{html.escape(title)}</title>")
    print(f'<rect width="{width}" height="{height}" rx="8" fill="{PAPER}"/>')
    for number, line in enumerate(lines):
        cursor = int(column) if number == int(row) else None
        print(*draw(line, MARGIN + HEIGHT * number, cursor), sep="\n")
    print("</svg>")


main(*sys.argv[1:])
