#!/usr/bin/env python3
"""Writes a sheet of the pictures as the program combines them, for checking them by eye.

    contact_sheet.py FILE.bmp

One band for each cell size and zoom. In a band: one row per mark or pair of marks, one column per
colour that a cell can have (white, the blues, oranges, greens and reds).
"""

import pathlib
import struct
import sys

sys.dont_write_bytecode = True
from canvas import bmp

RESOURCES = pathlib.Path(__file__).resolve().parent.parent
WHITE = (255, 255, 255)


def blend(colour, share):
    return tuple(int(a * share + 255 * (1 - share)) for a in colour)


COLOURS = [WHITE] + [blend((0, 0, 255), t) for t in (0.1, 1 / 3, 2 / 3, 1)] + \
          [blend((255, 128, 0), t) for t in (0.3, 1)] + [blend((0, 255, 0), t) for t in (0.3, 1)] + \
          [(255, 128, 128), (255, 64, 64), (255, 0, 0)]
# (under, over): the mark that is ORed onto the colour, and the one that is ANDed onto the cell.
COMBINATIONS = [(None, None), (None, "106"), (None, "112"), (None, "116"), ("107", None),
                ("107", "106"), ("107", "112")]


def read_bmp(path):
    data = path.read_bytes()
    offset, = struct.unpack_from("<I", data, 10)
    width, height = struct.unpack_from("<ii", data, 18)
    line = (width * 3 + 3) // 4 * 4
    return [[tuple(reversed(data[offset + y * line + 3 * x:offset + y * line + 3 * x + 3]))
             for x in range(width)] for y in reversed(range(height))]


def combine(image, x0, y0, side, colour, under, over):
    """Draws one cell into `image`, with the order and offsets of the agenda's painter."""
    fill = WHITE if under else colour
    for y in range(side + 1):
        for x in range(side + 1):
            edge = x in (0, side) or y in (0, side)
            image[y0 + y][x0 + x] = (0, 0, 0) if edge else fill

    def place(mark, operation):
        left = x0 + int((side - len(mark[0])) / 2) + 1
        top = y0 + int((side - len(mark)) / 2) + 1
        for y, row in enumerate(mark):
            for x, pixel in enumerate(row):
                image[top + y][left + x] = operation(image[top + y][left + x], pixel)

    if under:
        place(under, lambda _, source: tuple(c | s for c, s in zip(colour, source)))
    if over:
        place(over, lambda target, source: tuple(t & s for t, s in zip(target, source)))


def band(marks, side, zoom):
    step = side + 9
    image = [[WHITE] * (step * len(COLOURS) + 9) for _ in range(step * len(COMBINATIONS) + 9)]
    for row, (under, over) in enumerate(COMBINATIONS):
        for column, colour in enumerate(COLOURS):
            combine(image, 6 + step * column, 6 + step * row, side, colour, marks.get(under),
                    marks.get(over))
    return enlarge(image, zoom)


def enlarge(image, zoom):
    return [[pixel for pixel in row for _ in range(zoom)] for row in image for _ in range(zoom)]


def main(arguments):
    marks = {name: read_bmp(RESOURCES / f"bitmaps/mark{name}.bmp") for name in ("106", "107", "112", "116")}
    strip = read_bmp(RESOURCES / "bitmaps/menubar120.bmp")
    face = [[(240, 240, 240) if pixel == (192, 192, 192) else pixel for pixel in row] for row in strip]
    legend = read_bmp(RESOURCES / "bitmaps/legend105.bmp")
    bands = [band(marks, 31, 1), band(marks, 24, 1), band(marks, 18, 1), band(marks, 13, 1), band(marks, 31, 3), strip, face,
             enlarge(face, 6), legend, enlarge(legend, 6)]
    width = max(len(rows[0]) for rows in bands)
    sheet = [[(*pixel, 255) for pixel in row + [WHITE] * (width - len(row))]
             for rows in bands for row in rows]
    pathlib.Path(arguments[0]).write_bytes(bmp(sheet))


if __name__ == "__main__":
    main(sys.argv[1:])
