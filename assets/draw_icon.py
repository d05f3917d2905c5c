#!/usr/bin/python3
"""Draws the editor's icon: a wall of blocks, a ball and a paddle on the
playfield's dark blue, as icons/shardles-editor.svg and as PNGs at the usual
hicolor theme sizes, icons/NxN/shardles-editor.png.

Run from anywhere: /usr/bin/python3 assets/draw_icon.py [output folder]
(default: icons/ beside this script). Plain Python: the PNGs are written
with zlib, each pixel sampled 4 x 4 times so edges are smooth.

The picture is laid out on a 16 x 16 grid, so at 16 pixels every block edge
falls on a pixel edge and the smallest icon stays crisp.
"""
import os
import struct
import sys
import zlib

SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
GRID = 16.0

FIELD = (28, 34, 44)          # the empty playfield, as in the block pictures
FIELD_EDGE = (62, 72, 88)
WHITE = (255, 255, 255)
STEEL = (185, 190, 200)
ROWS = ((200, 60, 45), (240, 200, 60), (60, 130, 220))


def shade(color, factor):
    return tuple(max(0, min(255, int(c * factor))) for c in color)


def lighten(color, amount):
    return tuple(min(255, int(c + (255 - c) * amount)) for c in color)


def bevel_block(x0, y0, x1, y1, color, depth=0.5):
    """A raised block: its face, a light top-left edge and a dark bottom-right one."""
    light = [(x0, y0), (x1, y0), (x1 - depth, y0 + depth), (x0 + depth, y0 + depth),
             (x0 + depth, y1 - depth), (x0, y1)]
    dark = [(x1, y0), (x1, y1), (x0, y1), (x0 + depth, y1 - depth),
            (x1 - depth, y1 - depth), (x1 - depth, y0 + depth)]
    return [("rect", (x0, y0, x1, y1), color),
            ("poly", light, lighten(color, 0.55)),
            ("poly", dark, shade(color, 0.45))]


def shapes():
    """The icon, back to front, in grid units."""
    out = [("round", (0, 0, 16, 16, 2.5), FIELD_EDGE),
           ("round", (0.75, 0.75, 15.25, 15.25, 1.9), FIELD)]
    for row, color in enumerate(ROWS):
        for column in range(3):
            if row == 2 and column == 1:
                continue  # the ball has just broken this one
            x, y = 2 + 4 * column, 2 + 2 * row
            out += bevel_block(x, y, x + 4, y + 2, color)
    out.append(("circle", (8.0, 9.5, 1.25), WHITE))
    out += bevel_block(5, 13, 11, 14.25, STEEL)
    return out


def inside(shape, x, y):
    kind, g, _ = shape
    if kind == "rect":
        return g[0] <= x < g[2] and g[1] <= y < g[3]
    if kind == "circle":
        return (x - g[0]) ** 2 + (y - g[1]) ** 2 <= g[2] ** 2
    if kind == "round":
        x0, y0, x1, y1, r = g
        if not (x0 <= x < x1 and y0 <= y < y1):
            return False
        cx = min(max(x, x0 + r), x1 - r)
        cy = min(max(y, y0 + r), y1 - r)
        return (x - cx) ** 2 + (y - cy) ** 2 <= r * r
    # an even-odd polygon
    hit = False
    for (ax, ay), (bx, by) in zip(g, g[1:] + g[:1]):
        if (ay > y) != (by > y) and x < ax + (y - ay) * (bx - ax) / (by - ay):
            hit = not hit
    return hit


def render(size, samples=4):
    """RGBA rows of the icon at `size` pixels."""
    scene = shapes()
    scale = GRID / size
    rows = []
    for py in range(size):
        row = bytearray()
        for px in range(size):
            acc = [0, 0, 0, 0]
            for sy in range(samples):
                for sx in range(samples):
                    x = (px + (sx + 0.5) / samples) * scale
                    y = (py + (sy + 0.5) / samples) * scale
                    color = None
                    for shape in reversed(scene):
                        if inside(shape, x, y):
                            color = shape[2]
                            break
                    if color:
                        acc[0] += color[0]
                        acc[1] += color[1]
                        acc[2] += color[2]
                        acc[3] += 1
            n = acc[3]
            if n:
                row += bytes((acc[0] // n, acc[1] // n, acc[2] // n, 255 * n // (samples * samples)))
            else:
                row += bytes(4)
        rows.append(bytes(row))
    return rows


def png(size, rows):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    raw = b"".join(b"\0" + r for r in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def svg():
    def fill(c):
        return "#%02x%02x%02x" % c
    parts = ['<svg xmlns="http://www.w3.org/2000/svg" width="256" height="256" viewBox="0 0 16 16">']
    for kind, g, color in shapes():
        if kind == "rect":
            parts.append('<rect x="%g" y="%g" width="%g" height="%g" fill="%s"/>' %
                         (g[0], g[1], g[2] - g[0], g[3] - g[1], fill(color)))
        elif kind == "round":
            parts.append('<rect x="%g" y="%g" width="%g" height="%g" rx="%g" fill="%s"/>' %
                         (g[0], g[1], g[2] - g[0], g[3] - g[1], g[4], fill(color)))
        elif kind == "circle":
            parts.append('<circle cx="%g" cy="%g" r="%g" fill="%s"/>' % (g[0], g[1], g[2], fill(color)))
        else:
            points = " ".join("%g,%g" % p for p in g)
            parts.append('<polygon points="%s" fill="%s"/>' % (points, fill(color)))
    parts.append("</svg>")
    return "\n".join(parts) + "\n"


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "icons")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "shardles-editor.svg"), "w") as f:
        f.write(svg())
    for size in SIZES:
        sub = os.path.join(folder, "%dx%d" % (size, size))
        os.makedirs(sub, exist_ok=True)
        with open(os.path.join(sub, "shardles-editor.png"), "wb") as f:
            f.write(png(size, render(size)))


if __name__ == "__main__":
    main()
