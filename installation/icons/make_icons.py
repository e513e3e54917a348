#!/usr/bin/env python3
"""Draws the images that dialogs and menu name, into ../text/resource. Run it after a change; the images are kept."""

import pathlib
import struct
import zlib

CLEAR = (0, 0, 0, 0)
WHITE, GREY = (255, 255, 255, 255), (128, 128, 128, 255)
BLUE, GREEN, YELLOW, RED = (40, 90, 200, 255), (30, 150, 60, 255), (230, 180, 20, 255), (200, 40, 40, 255)

# Three dots wide, five high, a row of each letter a word.
LETTERS = {
    "I": "111 010 010 010 111", "G": "111 100 101 101 111", "K": "101 110 100 110 101",
    "?": "111 001 011 000 010", "!": "010 010 010 000 010", "M": "101 111 101 101 101", "+": "000 010 111 010 000",
}


def canvas(size):
    return [[CLEAR] * size for _ in range(size)]


def where(size, inside, colour, image):
    """Colours each dot for which inside(x, y), with x and y from 0 to 1, holds."""
    for y in range(size):
        for x in range(size):
            if inside((x + 0.5) / size, (y + 0.5) / size):
                image[y][x] = colour


SHAPES = {
    "none": lambda x, y: False,
    "box": lambda x, y: 0.12 < x < 0.88 and 0.12 < y < 0.88,
    "pair": lambda x, y: (0.06 < x < 0.6 and 0.06 < y < 0.6) or (0.4 < x < 0.94 and 0.4 < y < 0.94),
    "sheet": lambda x, y: 0.18 < x < 0.82 and 0.06 < y < 0.94 and x - y < 0.5,
    "disc": lambda x, y: (x - 0.5) ** 2 + (y - 0.5) ** 2 < 0.19,
    "triangle": lambda x, y: 0.1 < y < 0.9 and abs(x - 0.5) < (y - 0.1) * 0.55,
    "funnel": lambda x, y: abs(x - 0.5) < max(0.45 - 0.75 * y, 0.09) and 0.1 < y < 0.95,
    "tick": lambda x, y: (x < 0.42 and abs(y - x - 0.38) < 0.13 and x > 0.1)
    or (0.38 <= x < 0.92 and abs(y + 0.9 * x - 1.14) < 0.13),
    # A drive: its slot and its light are left out.
    "disk": lambda x, y: 0.06 < x < 0.94 and 0.2 < y < 0.8
    and not (0.5 < y < 0.62 and 0.18 < x < 0.62) and not (0.5 < y < 0.66 and 0.7 < x < 0.86),
}

# file                              size  shape       colour  letter
ICONS = [
    ("kvanetool.png",                24, "disc",      BLUE,   "K"),
    ("help.png",                     24, "disc",      GREEN,  "?"),
    ("installui.png",                24, "sheet",     BLUE,   "+"),
    ("invisible.png",                24, "none",      CLEAR,  ""),
    ("act_filter24.png",             24, "funnel",    GREEN,  ""),
    ("act_filterdeac24.png",         24, "funnel",    GREY,   ""),
    ("part.png",                     16, "box",       BLUE,   ""),
    ("part_instance.png",            16, "box",       BLUE,   "I"),
    ("part_generic.png",             16, "box",       BLUE,   "G"),
    ("part_generic_dependency.png",  16, "box",       GREY,   "G"),
    ("assembly.png",                 16, "pair",      YELLOW, ""),
    ("assembly_instance.png",        16, "pair",      YELLOW, "I"),
    ("assembly_generic.png",         16, "pair",      YELLOW, "G"),
    ("assembly_generic_dependency.png", 16, "pair",   GREY,   "G"),
    ("drawing.png",                  16, "sheet",     GREEN,  ""),
    ("checkedout.gif",               16, "tick",      GREEN,  ""),
    ("checkedoutmod.gif",            16, "disc",      GREEN,  "M"),
    ("notcheckedout.gif",            16, "box",       GREY,   ""),
    ("notcheckedoutmod.gif",         16, "disc",      GREY,   "M"),
    ("fromHDD.gif",                  16, "disk",      GREY,   ""),
    ("checkoutrefused.gif",          16, "disc",      RED,    "!"),
    ("log_group.png",                16, "sheet",     GREY,   ""),
    ("log_done.png",                 16, "tick",      GREEN,  ""),
    ("log_warning.png",              16, "triangle",  YELLOW, "!"),
    ("log_error.png",                16, "disc",      RED,    "!"),
]


def draw(size, shape, colour, letter):
    image = canvas(size)
    where(size, SHAPES[shape], colour, image)
    if letter:
        dot = max(size // 12, 1)
        left, top = (size - 3 * dot) // 2, (size - 5 * dot) // 2
        for row, bits in enumerate(LETTERS[letter].split()):
            for column, bit in enumerate(bits):
                for step in range(dot * dot):
                    if bit == "1":
                        image[top + row * dot + step // dot][left + column * dot + step % dot] = WHITE
    return image


def png(image):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    size = len(image)
    rows = b"".join(b"\0" + bytes(value for dot in row for value in dot) for row in image)
    head = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def gif(image):
    """Eight colours, the first one transparent. The codes are all of one width: the table is cleared before it grows."""
    size = len(image)
    palette = [CLEAR] + sorted({dot for row in image for dot in row} - {CLEAR})
    palette += [CLEAR] * (8 - len(palette))
    codes = []
    for count, dot in enumerate(dot for row in image for dot in row):
        if count % 6 == 0:
            codes.append(8)
        codes.append(palette.index(dot))
    codes.append(9)
    bits = sum(code << (4 * place) for place, code in enumerate(codes))
    data = bits.to_bytes((4 * len(codes) + 7) // 8, "little")
    blocks = b"".join(bytes([len(data[i:i + 255])]) + data[i:i + 255] for i in range(0, len(data), 255))
    return (b"GIF89a" + struct.pack("<HHBBB", size, size, 0xA2, 0, 0) + bytes(v for c in palette for v in c[:3])
            + b"\x21\xf9\x04\x01\x00\x00\x00\x00" + b"\x2c" + struct.pack("<HHHHB", 0, 0, size, size, 0)
            + b"\x03" + blocks + b"\0;")


def main():
    folder = pathlib.Path(__file__).resolve().parent.parent / "text" / "resource"
    for name, size, shape, colour, letter in ICONS:
        image = draw(size, shape, colour, letter)
        (folder / name).write_bytes(png(image) if name.endswith(".png") else gif(image))
    # The indicator names its image by the path of one language.
    wrong = folder.parent / "usascii" / "resource" / "kvd_parameter_wrong.png"
    wrong.parent.mkdir(exist_ok=True)
    wrong.write_bytes(png(draw(32, "triangle", YELLOW, "!")))


if __name__ == "__main__":
    main()
