"""Shapes, a supersampling painter, and writers for BMP, PNG and ICO.

A shape is a function shape(x, y) that tells whether the point lies inside. Coordinates, in px, y
downwards, are computed with + - * / and comparisons alone, so that every machine draws the same
picture to the last bit.
"""

import struct
import zlib

SUBSAMPLES = 8  # per axis and pixel


# ---- Shapes --------------------------------------------------------------------------------------

def disc(cx, cy, r):
    return lambda x, y: (x - cx) * (x - cx) + (y - cy) * (y - cy) <= r * r


def ellipse(cx, cy, rx, ry):
    return lambda x, y: ((x - cx) / rx) * ((x - cx) / rx) + ((y - cy) / ry) * ((y - cy) / ry) <= 1


def box(left, top, right, bottom):
    return lambda x, y: left <= x < right and top <= y < bottom


def rounded_box(left, top, right, bottom, r):
    def inside(x, y):
        if not (left <= x < right and top <= y < bottom):
            return False
        dx = max(left + r - x, 0, x - (right - r))
        dy = max(top + r - y, 0, y - (bottom - r))
        return dx * dx + dy * dy <= r * r
    return inside


def polygon(*points):
    def inside(x, y):
        result = False
        x1, y1 = points[-1]
        for x2, y2 in points:
            if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                result = not result
            x1, y1 = x2, y2
        return result
    return inside


def stroke(points, width):
    """A polyline of that width with round ends and joints."""
    segments = list(zip(points, points[1:]))
    limit = width * width / 4

    def inside(x, y):
        for (ax, ay), (bx, by) in segments:
            dx, dy = bx - ax, by - ay
            length = dx * dx + dy * dy
            t = ((x - ax) * dx + (y - ay) * dy) / length if length else 0
            t = min(max(t, 0), 1)
            ex, ey = x - ax - t * dx, y - ay - t * dy
            if ex * ex + ey * ey <= limit:
                return True
        return False
    return inside


def curve(a, b, c, d, steps=12):
    """steps + 1 points of the cubic Bezier curve from a to d with control points b and c."""
    points = []
    for i in range(steps + 1):
        t = i / steps
        s = 1 - t
        points.append(tuple(s * s * s * p + 3 * s * s * t * q + 3 * s * t * t * r + t * t * t * e
                            for p, q, r, e in zip(a, b, c, d)))
    return points


def drop(cx, top, bottom, r):
    """A falling drop: a disc of radius r that ends at `bottom`, with a tip that curves up to
    (cx, top)."""
    cy = bottom - r
    belly = cy - 0.35 * r
    side = 0.9367496997597597 * r  # sqrt(1 - 0.35 ** 2) * r, half the disc's width at `belly`
    right = curve((cx, top), (cx + 0.12 * r, cy - 1.25 * r), (cx + side - 0.25 * r, belly - 0.62 * r),
                  (cx + side, belly))
    left = [(2 * cx - x, y) for x, y in reversed(right)]
    return union(disc(cx, cy, r), polygon(*right, *left))


def union(*shapes):
    return lambda x, y: any(shape(x, y) for shape in shapes)


def without(shape, *holes):
    return lambda x, y: shape(x, y) and not any(hole(x, y) for hole in holes)


def within(*shapes):
    return lambda x, y: all(shape(x, y) for shape in shapes)


def scaled(shape, factor):
    return lambda x, y: shape(x / factor, y / factor)


# ---- Painting ------------------------------------------------------------------------------------

def fade(top, bottom, first, last):
    """A paint, to be used in place of a colour: `top` above y = first, `bottom` below y = last, and
    a linear gradient between them."""
    def colour(_, y):
        t = min(max((y - first) / (last - first), 0), 1)
        return tuple(a + (b - a) * t for a, b in zip(top, bottom))
    return colour


def paint(width, height, layers, subsamples=SUBSAMPLES):
    """Draws layers of (shape, colour or paint), the last one on top. Returns rows of (red, green,
    blue, alpha), top row first.

    Averages subsamples ** 2 points per pixel: the colour over those inside a shape, alpha over all.
    """
    rows = []
    count = subsamples * subsamples
    for py in range(height):
        row = []
        for px in range(width):
            red = green = blue = hits = 0
            for sy in range(subsamples):
                y = py + (sy + 0.5) / subsamples
                for sx in range(subsamples):
                    x = px + (sx + 0.5) / subsamples
                    for shape, colour in reversed(layers):
                        if shape(x, y):
                            r, g, b = colour(x, y) if callable(colour) else colour
                            red, green, blue, hits = red + r, green + g, blue + b, hits + 1
                            break
            if hits:
                row.append((int(red / hits + 0.5), int(green / hits + 0.5), int(blue / hits + 0.5),
                            int(255 * hits / count + 0.5)))
            else:
                row.append((0, 0, 0, 0))
        rows.append(row)
    return rows


def everywhere(_x, _y):
    return True


# ---- Files ---------------------------------------------------------------------------------------

def bmp(rows):
    """The bytes of a BMP file: 24 bits per pixel, bottom row first, alpha dropped."""
    height, width = len(rows), len(rows[0])
    body = bytearray()
    for row in reversed(rows):
        line = b"".join(bytes((b, g, r)) for r, g, b, _ in row)
        body += line + bytes(-len(line) % 4)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(body), 2835, 2835, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 54 + len(body), 0, 0, 54) + header + bytes(body)


def png(rows):
    height, width = len(rows), len(rows[0])
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in rows)

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def icon_bitmap(rows):
    """One picture of an ICO file: a header with doubled height, 32 bits per pixel with alpha, then
    a 1-bit mask of the transparent pixels."""
    height, width = len(rows), len(rows[0])
    colours, mask = bytearray(), bytearray()
    for row in reversed(rows):
        colours += b"".join(bytes((b, g, r, a)) for r, g, b, a in row)
        line = bytearray((width + 31) // 32 * 4)
        for x, (_, _, _, alpha) in enumerate(row):
            if alpha == 0:
                line[x // 8] |= 0x80 >> x % 8
        mask += line
    header = struct.pack("<IiiHHIIiiII", 40, width, 2 * height, 1, 32, 0, len(colours) + len(mask),
                         0, 0, 0, 0)
    return header + bytes(colours) + bytes(mask)


def unpacked(data):
    """A form of a file's bytes that is equal for files that show the same picture.

    A PNG, which is the last picture in `data` if there is one, is decompressed and its size
    removed: its compressed bytes depend on the version of zlib.
    """
    start = data.find(b"\x89PNG")
    if start < 0:
        return data
    size = struct.pack("<I", len(data) - start)  # as written in the icon's directory
    body = data.find(b"IDAT", start)
    length, = struct.unpack_from(">I", data, body - 4)
    return data[:body - 4].replace(size, b"") + zlib.decompress(data[body + 4:body + 4 + length])


def ico(pictures):
    """The bytes of an ICO file. Pictures of 256 pixels and more are stored as PNG, as the shell
    expects."""
    bodies = [png(rows) if len(rows) >= 256 else icon_bitmap(rows) for rows in pictures]
    offset = 6 + 16 * len(bodies)
    directory = struct.pack("<HHH", 0, 1, len(bodies))
    for rows, body in zip(pictures, bodies):
        size = len(rows) % 256  # one byte: 0 stands for 256
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(body), offset)
        offset += len(body)
    return directory + b"".join(bodies)
