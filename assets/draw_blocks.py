#!/usr/bin/python3
"""Draws the editor's block pictures: nothing.gif, shdblock1..F.gif and
tlblock1..F.gif, at the size of a grid cell on a 96 DPI screen.

Run from anywhere: /usr/bin/python3 assets/draw_blocks.py [output folder]
(default: the folder of this script). Needs Pillow.

Each picture is drawn for its block code; the Tiltbash files are named by
the editor's file table, where code 7 lives in tlblockB.gif and codes 8 to 11
in tlblock7.gif to tlblockA.gif.
"""
import os
import sys

from PIL import Image, ImageDraw

SHD_SIZE = (40, 30)   # 600 x 445 twips
TL_SIZE = (44, 30)    # 660 x 445 twips

FIELD = (28, 34, 44)          # the empty playfield
FIELD_EDGE = (62, 72, 88)
WHITE = (255, 255, 255)
BLACK = (0, 0, 0)


def shade(color, factor):
    return tuple(max(0, min(255, int(c * factor))) for c in color)


def lighten(color, amount):
    return tuple(min(255, int(c + (255 - c) * amount)) for c in color)


def canvas(size):
    img = Image.new("RGB", size, FIELD)
    return img, ImageDraw.Draw(img)


def bevel_block(d, box, color, depth=2):
    """A raised block: light top-left edge, dark bottom-right edge."""
    x0, y0, x1, y1 = box
    d.rectangle(box, fill=color)
    for i in range(depth):
        d.line([(x0 + i, y1 - i), (x0 + i, y0 + i), (x1 - i, y0 + i)], fill=lighten(color, 0.55))
        d.line([(x0 + i + 1, y1 - i), (x1 - i, y1 - i), (x1 - i, y0 + i + 1)], fill=shade(color, 0.45))


def block_box(size, inset=1):
    w, h = size
    return (inset, inset, w - 1 - inset, h - 1 - inset)


# ---- the empty cell ----

def draw_nothing():
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    d.rectangle((0, 0, w - 1, h - 1), outline=FIELD_EDGE)
    # a faint centre dot so an empty cell still reads as a cell
    d.point((w // 2, h // 2), fill=FIELD_EDGE)
    return img


# ---- Shardles ----

KIND_COLORS = {
    "spotted": (40, 170, 70),
    "centerline": (235, 130, 20),
    "zigzag": (150, 70, 200),
    "custom": (20, 160, 170),
}

# The default custom pictures, 10 x 6, as the piece dialog displays them.
NORMAL_PICTURE = [
    ".########.",
    "#........#",
    "#........#",
    "#........#",
    "#........#",
    ".########.",
]
CHANGE_PICTURE = [
    ".########.",
    "#...######",
    "#...######",
    "#...######",
    "#...######",
    ".########.",
]


def draw_motif(d, kind, cx, cy, color):
    """The kind's sign, centred on (cx, cy), about 22 x 14 pixels."""
    if kind == "spotted":
        for dx in (-7, 0, 7):
            for dy in (-4, 4):
                x, y = cx + dx + (3 if dy > 0 else 0) - 1, cy + dy
                d.ellipse((x - 2, y - 2, x + 2, y + 2), fill=color)
    elif kind == "centerline":
        d.rectangle((cx - 13, cy - 1, cx + 12, cy + 1), fill=color)
        for x in (cx - 13, cx + 12):
            d.rectangle((x - 1, cy - 5, x + 1, cy + 5), fill=color)
    elif kind == "zigzag":
        pts = [(cx - 13 + 13 * i // 3, cy + (4 if i % 2 == 0 else -5)) for i in range(7)]
        d.line(pts, fill=color, width=3)
    elif kind in ("custom", "customchanger"):
        picture = CHANGE_PICTURE if kind == "customchanger" else NORMAL_PICTURE
        px = 2
        left, top = cx - 5 * px, cy - 3 * px
        for r, row in enumerate(picture):
            for c, ch in enumerate(row):
                if ch == "#":
                    d.rectangle((left + c * px, top + r * px, left + c * px + px - 1, top + r * px + px - 1),
                                fill=color)


def draw_shardle(kind):
    """A shardle: its colour, rounded, with the kind's sign in white."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    color = KIND_COLORS[kind]
    d.rounded_rectangle((1, 1, w - 2, h - 2), radius=7, fill=shade(color, 0.55))
    d.rounded_rectangle((2, 2, w - 3, h - 4), radius=6, fill=color)
    d.arc((4, 3, w - 5, h - 6), 200, 290, fill=lighten(color, 0.6), width=1)
    draw_motif(d, kind, w // 2, h // 2 - 1, WHITE)
    return img


def draw_changer(kind):
    """Its changer: the same sign in the kind's colour on white, with the
    colour as a frame and two turning arrows in the corners."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    color = KIND_COLORS[kind]
    d.rounded_rectangle((1, 1, w - 2, h - 2), radius=7, fill=color)
    d.rounded_rectangle((4, 4, w - 5, h - 5), radius=4, fill=WHITE)
    motif = "customchanger" if kind == "custom" else kind
    draw_motif(d, motif, w // 2, h // 2, shade(color, 0.8))
    # the "changes into" marks: small black triangles in two corners
    d.polygon([(1, 1), (9, 1), (1, 9)], fill=BLACK)
    d.polygon([(w - 2, h - 2), (w - 10, h - 2), (w - 2, h - 10)], fill=BLACK)
    return img


def draw_plain_block():
    img, d = canvas(SHD_SIZE)
    bevel_block(d, block_box(SHD_SIZE), (60, 110, 200))
    return img


def draw_last_block():
    """The last block: gold with a chequered finishing flag."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    bevel_block(d, block_box(SHD_SIZE), (225, 180, 30))
    sq = 3
    left, top = w // 2 - 4 * sq, h // 2 - 2 * sq - 1
    for r in range(4):
        for c in range(8):
            fill = BLACK if (r + c) % 2 == 0 else WHITE
            d.rectangle((left + c * sq, top + r * sq, left + c * sq + sq - 1, top + r * sq + sq - 1), fill=fill)
    d.rectangle((left - 1, top - 1, left + 8 * sq, top + 4 * sq), outline=BLACK)
    return img


def draw_steel_block():
    """Code 7: a riveted steel plate."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    bevel_block(d, block_box(SHD_SIZE), (150, 155, 165))
    for x, y in ((5, 5), (w - 6, 5), (5, h - 6), (w - 6, h - 6)):
        d.ellipse((x - 2, y - 2, x + 2, y + 2), fill=(90, 95, 105))
        d.point((x - 1, y - 1), fill=(220, 225, 230))
    d.line([(10, h // 2), (w - 11, h // 2)], fill=(110, 115, 125))
    return img


def draw_brick_wall():
    """Code 10: a wall of small red bricks."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    mortar = (200, 190, 170)
    d.rectangle(block_box(SHD_SIZE), fill=mortar)
    brick = (170, 60, 40)
    row_h = 7
    for r, y in enumerate(range(1, h - 1, row_h)):
        offset = 0 if r % 2 == 0 else -6
        for x in range(1 + offset, w - 1, 12):
            x0, x1 = max(1, x), min(w - 2, x + 10)
            y1 = min(h - 2, y + row_h - 2)
            if x1 > x0 and y1 > y:
                d.rectangle((x0, y, x1, y1), fill=brick)
                d.line([(x0, y), (x1, y)], fill=lighten(brick, 0.35))
    return img


def draw_lock_block():
    """Code 11: a padlock."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    bevel_block(d, block_box(SHD_SIZE), (70, 80, 95))
    cx = w // 2
    gold = (240, 200, 60)
    d.arc((cx - 6, 4, cx + 6, 17), 180, 360, fill=gold, width=3)
    d.rectangle((cx - 6, 4 + 6, cx - 4, 14), fill=gold)
    d.rectangle((cx + 4, 4 + 6, cx + 6, 14), fill=gold)
    d.rectangle((cx - 9, 13, cx + 9, 25), fill=gold)
    d.ellipse((cx - 2, 16, cx + 2, 20), fill=BLACK)
    d.rectangle((cx - 1, 19, cx + 1, 23), fill=BLACK)
    return img


def draw_key_block():
    """Code 12: a key."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    bevel_block(d, block_box(SHD_SIZE), (70, 80, 95))
    gold = (240, 200, 60)
    cy = h // 2
    d.ellipse((6, cy - 6, 18, cy + 6), fill=gold)
    d.ellipse((10, cy - 2, 14, cy + 2), fill=(70, 80, 95))
    d.rectangle((17, cy - 2, 34, cy + 1), fill=gold)
    d.rectangle((27, cy + 1, 29, cy + 6), fill=gold)
    d.rectangle((32, cy + 1, 34, cy + 5), fill=gold)
    return img


def draw_arrow_block():
    """Code 15: an arrow block."""
    img, d = canvas(SHD_SIZE)
    w, h = SHD_SIZE
    bevel_block(d, block_box(SHD_SIZE), (200, 40, 50))
    cy = h // 2
    d.rectangle((7, cy - 3, 24, cy + 2), fill=WHITE)
    d.polygon([(23, cy - 9), (33, cy), (23, cy + 9)], fill=WHITE)
    return img


def shardles_pictures():
    return {
        1: draw_plain_block(),
        2: draw_shardle("spotted"),
        3: draw_changer("spotted"),
        4: draw_shardle("centerline"),
        5: draw_changer("centerline"),
        6: draw_last_block(),
        7: draw_steel_block(),
        8: draw_shardle("zigzag"),
        9: draw_changer("zigzag"),
        10: draw_brick_wall(),
        11: draw_lock_block(),
        12: draw_key_block(),
        13: draw_shardle("custom"),
        14: draw_changer("custom"),
        15: draw_arrow_block(),
    }


# ---- Tiltbash ----

TL_COLORS = [
    (215, 45, 45),    # codes 1 and 8
    (235, 135, 25),   # 2 and 9
    (230, 205, 35),   # 3 and 10
    (50, 175, 70),    # 4 and 11
    (35, 185, 200),   # 5 and 12
    (50, 90, 210),    # 6 and 13
    (150, 65, 200),   # 7 and 14
]


def draw_single_hit(color):
    """One hit breaks it: a flat bevelled brick."""
    img, d = canvas(TL_SIZE)
    bevel_block(d, block_box(TL_SIZE), color)
    w, h = TL_SIZE
    d.line([(5, 5), (w - 7, 5)], fill=lighten(color, 0.35))
    return img


def draw_double_hit(color):
    """Two hits break it: an armoured brick, a steel frame around the colour
    with two rivets, so it reads as tougher than the single-hit brick."""
    img, d = canvas(TL_SIZE)
    w, h = TL_SIZE
    steel = (185, 190, 200)
    bevel_block(d, block_box(TL_SIZE), steel, depth=1)
    inner = (5, 5, w - 6, h - 6)
    iw, ih = inner[2] - inner[0] + 1, inner[3] - inner[1] + 1
    plate = Image.new("RGB", (iw, ih), color)
    pd = ImageDraw.Draw(plate)
    for x in range(-ih, iw, 6):
        pd.line([(x, ih - 1), (x + ih, 0)], fill=shade(color, 0.7), width=2)
    img.paste(plate, inner[:2])
    d.rectangle(inner, outline=shade(steel, 0.5))
    for x in (w // 2 - 5, w // 2 + 5):
        d.ellipse((x - 2, 1, x + 2, 4), fill=shade(steel, 0.45))
        d.ellipse((x - 2, h - 5, x + 2, h - 2), fill=shade(steel, 0.45))
    return img


def draw_unbreakable():
    """Code 15: cannot be broken: dark steel with a cross brace."""
    img, d = canvas(TL_SIZE)
    w, h = TL_SIZE
    base = (85, 90, 100)
    bevel_block(d, block_box(TL_SIZE), base)
    d.line([(4, 4), (w - 5, h - 5)], fill=(140, 145, 155), width=3)
    d.line([(4, h - 5), (w - 5, 4)], fill=(140, 145, 155), width=3)
    for x, y in ((4, 4), (w - 5, 4), (4, h - 5), (w - 5, h - 5)):
        d.ellipse((x - 2, y - 2, x + 2, y + 2), fill=(200, 205, 210))
    return img


def tiltbash_pictures():
    pictures = {}
    for i, color in enumerate(TL_COLORS):
        pictures[1 + i] = draw_single_hit(color)
        pictures[8 + i] = draw_double_hit(color)
    pictures[15] = draw_unbreakable()
    return pictures


def tiltbash_file(code):
    """The file the editor loads for a Tiltbash code (7 and 8..11 swapped)."""
    number = code
    if code == 7:
        number = 11
    elif 8 <= code <= 11:
        number = code - 1
    return "tlblock%X.gif" % number


def save(img, folder, name):
    img.convert("P", palette=Image.ADAPTIVE, colors=64).save(os.path.join(folder, name))


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    os.makedirs(folder, exist_ok=True)
    save(draw_nothing(), folder, "nothing.gif")
    for code, img in shardles_pictures().items():
        save(img, folder, "shdblock%X.gif" % code)
    for code, img in tiltbash_pictures().items():
        save(img, folder, tiltbash_file(code))


if __name__ == "__main__":
    main()
