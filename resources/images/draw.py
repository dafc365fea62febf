#!/usr/bin/env python3
"""Draws the program's bitmaps and its icon. This file is their source; the outputs are committed in
resources/, so that a build needs no Python.

    draw.py           writes the bitmaps and the icon
    draw.py --check   compares the committed files with what it draws; exit 1 when they differ

docs/images.md explains each picture and how it is combined with the cell under it.
"""

import pathlib
import sys

sys.dont_write_bytecode = True
from canvas import (bmp, box, curve, disc, drop, ellipse, everywhere, fade, ico, paint, polygon,
                    rounded_box, scaled, stroke, union, unpacked, within,
                    without)

RESOURCES = pathlib.Path(__file__).resolve().parent.parent

WHITE = (255, 255, 255)
BUTTON_FACE = (192, 192, 192)  # the transparent colour of the menu-bar strip

BUTTON = 16  # px, side of a menu-bar image


# ---- Marks of the agenda -------------------------------------------------------------------------
# Pure black and white: the agenda combines marks and colours with bitwise OR and AND, in which a
# grey, antialiased edge would turn into stray colours.

QUESTION_MARK = """
............#####...
...........#######..
..........####.####.
..........###...###.
................###.
...............####.
..............####..
.............####...
.............###....
.............###....
....................
.............###....
.............###....
.............###....
....................
....................
....................
....................
....................
....................
"""

CROSS = """
....................
..##............##..
.####..........####.
.#####........#####.
..#####......#####..
...#####....#####...
....#####..#####....
.....##########.....
......########......
.......######.......
.......######.......
......########......
.....##########.....
....#####..#####....
...#####....#####...
..#####......#####..
.#####........#####.
.####..........####.
..##............##..
....................
"""

# Left of the centre, so that the question mark stands beside it: black on the darkest blue could
# not be read.
DROP = """
......##............
......##............
.....####...........
.....####...........
....######..........
....######..........
...########.........
...########.........
..##########........
.############.......
.############.......
##############......
##############......
##############......
##############......
##############......
.############.......
.############.......
..##########........
....######..........
"""

NOTE_SHEET = """
....................
...##########.......
...##########.......
...##......####.....
...##......#####....
...##......######...
...##......######...
...##..........##...
...##..######..##...
...##..######..##...
...##..........##...
...##..######..##...
...##..######..##...
...##..........##...
...##..####....##...
...##..####....##...
...##..........##...
...#############....
...#############....
....................
"""


def mark(pixels):
    colours = {"#": (0, 0, 0, 255), ".": (255, 255, 255, 255)}
    return [[colours[pixel] for pixel in line] for line in pixels.split()]


# ---- The menu bar --------------------------------------------------------------------------------

def notes_button():
    page = polygon((2, 1), (9, 1), (12, 4), (12, 15), (2, 15))
    lines = union(box(4, 5, 8, 6), box(4, 7, 9, 8), box(4, 9, 7, 10), box(4, 11, 6, 12))
    pencil = stroke([(14.2, 5.2), (8.4, 11.6)], 3.2)
    return [(page, (70, 70, 80)),
            (polygon((3, 2), (8.6, 2), (11, 4.4), (11, 14), (3, 14)), WHITE),
            (lines, (120, 130, 160)),
            (pencil, (70, 45, 10)),
            (stroke([(14.1, 5.3), (9.2, 10.7)], 1.8), (255, 190, 40)),
            (polygon((6.2, 14), (7.2, 10.5), (9.5, 12.7)), (70, 45, 10))]


def bleeding_button():
    return [(drop(8, 0.6, 15.4, 5.2), (140, 0, 20)),
            (drop(8, 2.6, 14.4, 4.2), (225, 20, 45)),
            (ellipse(6.2, 10.4, 1.0, 1.7), (255, 170, 175))]


def period_button():
    days = [(box(3 + 3 * i, y, 5 + 3 * i, y + 2), colour) for i, y, colour in
            ((0, 7, (190, 195, 205)), (1, 7, (0, 0, 230)), (2, 7, (0, 0, 230)), (3, 7, (0, 0, 230)),
             (0, 10, (0, 0, 230)), (1, 10, (0, 0, 230)), (2, 10, (190, 195, 205)),
             (3, 10, (190, 195, 205)))]
    return [(box(1, 2, 16, 15), (60, 65, 85)),
            (box(2, 6, 15, 14), WHITE),
            (box(2, 3, 15, 5), (90, 100, 150)),
            (box(4, 1, 6, 4), (60, 65, 85)),
            (box(11, 1, 13, 4), (60, 65, 85))] + days


def ovulation_button():
    return [(disc(8, 8, 7.3), (165, 75, 0)),
            (disc(8, 8, 6.3), (255, 205, 140)),
            (disc(8, 8, 3.6), (255, 128, 0)),
            (disc(7, 7, 1.1), (255, 215, 160))]


def pregnancy_button():
    """A pram."""
    body = within(disc(7.5, 6.5, 6.5), box(0, 6.5, 16, 16))
    hood = within(disc(7.5, 6.5, 6.5), polygon((7.5, 6.5), (7.5, -2), (-2, -2), (-2, 6.5)))
    green, dark = (20, 165, 45), (0, 95, 25)
    return [(stroke([(13.4, 6.8), (15, 3.4)], 1.5), dark),
            (body, green),
            (hood, (110, 215, 110)),
            (box(1, 6, 14, 7), dark),
            (disc(4.5, 13.6, 1.9), dark), (disc(10.5, 13.6, 1.9), dark),
            (disc(4.5, 13.6, 0.8), WHITE), (disc(10.5, 13.6, 0.8), WHITE)]


def temperature_button():
    glass = union(stroke([(7, 2.6), (7, 11)], 4.6), disc(7, 12, 3.6))
    inner = union(stroke([(7, 2.6), (7, 11)], 2.6), disc(7, 12, 2.6))
    column = union(box(6, 5, 8, 12), disc(7, 12, 2.1))
    ticks = union(*(box(10, y, 13, y + 1) for y in (2, 5, 8)))
    return [(glass, (70, 75, 90)), (inner, WHITE), (column, (225, 20, 45)), (ticks, (70, 75, 90))]


def menu_bar_strip():
    buttons = (notes_button, bleeding_button, period_button, ovulation_button, pregnancy_button,
               temperature_button)
    pictures = [paint(BUTTON, BUTTON, [(everywhere, BUTTON_FACE)] + button()) for button in buttons]
    return [sum((picture[y] for picture in pictures), []) for y in range(BUTTON)]


# ---- The bleeding graph's legend ------------------------------------------------------------------

LEGEND_WIDTH, LEGEND_HEIGHT = 30, 26


def legend():
    """Three drops on a common ground line, growing from left to right: slight, norm, heavy."""
    layers = [(everywhere, WHITE)]
    for cx, top, r in ((4.5, 13.5, 3.0), (12.5, 8.5, 4.0), (23.5, 1.5, 5.8)):
        layers += [(drop(cx, top, 24.4, r), (140, 0, 20)),
                   (drop(cx, top + 2.2, 23.4, r - 1), (225, 20, 45)),
                   (ellipse(cx - r * 0.36, 24.4 - r * 1.1, r * 0.2, r * 0.34), (255, 170, 175))]
    return paint(LEGEND_WIDTH, LEGEND_HEIGHT, layers + [(box(1, 25, 29, 26), (60, 65, 85))])


# ---- The program's icon --------------------------------------------------------------------------

def icon(side):
    """A crescent that holds a drop, on a night sky; designed at 48 px and scaled to `side`."""
    sky = disc(24, 24, 23)
    moon = without(disc(22.5, 24, 15.5), disc(28.4, 20.6, 13.2))
    layers = [(sky, fade((92, 62, 150), (44, 26, 92), 1, 47)),
              (moon, fade((255, 246, 214), (250, 214, 140), 9, 39)),
              (drop(29.4, 11.4, 28.6, 5.2), fade((255, 120, 140), (226, 30, 70), 12, 28))]
    factor = side / 48
    return paint(side, side, [(scaled(shape, factor), unscaled(colour, factor))
                              for shape, colour in layers], 4 if side >= 256 else 8)


def unscaled(colour, factor):
    return lambda x, y: colour(x / factor, y / factor)


# ---- Outputs -------------------------------------------------------------------------------------

def pictures():
    return {
        "bitmaps/mark106.bmp": bmp(mark(QUESTION_MARK)),
        "bitmaps/mark107.bmp": bmp(mark(DROP)),
        "bitmaps/mark112.bmp": bmp(mark(CROSS)),
        "bitmaps/mark116.bmp": bmp(mark(NOTE_SHEET)),
        "bitmaps/menubar120.bmp": bmp(menu_bar_strip()),
        "bitmaps/legend105.bmp": bmp(legend()),
        "lunara.ico": ico([icon(side) for side in (16, 32, 48, 256)]),
    }


def main(arguments):
    different = 0
    for name, data in pictures().items():
        path = RESOURCES / name
        if arguments == ["--check"]:
            kept = path.read_bytes() if path.exists() else b""
            if not kept or unpacked(kept) != unpacked(data):
                print(f"draw.py: {name} is not what the script draws", file=sys.stderr)
                different = 1
        else:
            path.write_bytes(data)
    return different


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
