#!/usr/bin/env python3
"""Draws the cursors and the icon beside this file. Run it after changing a shape, and commit what it writes.

The cursors are black shapes with a white outline of one pixel, so that they are seen on a white table, on the grey
rows and on the dark spectrum alike. They have no half-transparent pixels, so every screen can show them.
"""
import math
import pathlib
import struct

FOLDER = pathlib.Path(__file__).resolve().parent
ICON_TYPE, CURSOR_TYPE = 1, 2


# --- Cursors: a shape gives BLACK, WHITE or CLEAR for a pixel ---

CURSOR_SIZE = 32
CLEAR, BLACK, WHITE = range(3)


def select(x, y):
    """A bar over one column, with an arrow to either side."""
    across, down = abs(x - 14), abs(y - 14)
    bar = across == 0 and down <= 9
    shaft = 3 <= across <= 10 and down == 0
    head = 7 <= across <= 10 and down <= 10 - across
    return BLACK if bar or shaft or head else CLEAR


def slanted(x, y, corner):
    """Where a pixel lies on a tool that leans to the upper right: along it from its corner, and across to its left."""
    right, up = x - corner[0], corner[1] - y
    return right + up, up - right


def pen(x, y):
    along, across = slanted(x, y, (1, 19))
    if not 0 <= along <= 31 or abs(across) > min(along * 0.55, 5):
        return CLEAR
    return WHITE if along in (11, 12) else BLACK


def erase(x, y):
    """A block standing on its corner: white rubber below, a black sleeve above."""
    along, across = slanted(x, y, (13, 25))
    if not (0 <= along <= 26 and 0 <= across <= 13):
        return CLEAR
    return WHITE if 2 <= along <= 9 and 2 <= across <= 11 else BLACK


def outlined(shape):
    """The rows of a shape, with every clear pixel that touches black made white."""
    around = [(dx, dy) for dx in (-1, 0, 1) for dy in (-1, 0, 1)]

    def pixel(x, y):
        own = shape(x, y)
        touches = any(shape(x + dx, y + dy) == BLACK for dx, dy in around)
        return WHITE if own == CLEAR and touches else own

    return [[pixel(x, y) for x in range(CURSOR_SIZE)] for y in range(CURSOR_SIZE)]


def plane(rows, is_set):
    """One bit a pixel, bottom row first, as a bitmap has it; 32 pixels fill a row without padding."""
    bits = [int("".join("1" if is_set(pixel) else "0" for pixel in row), 2) for row in reversed(rows)]
    return b"".join(struct.pack(">I", row) for row in bits)


def cursor_image(shape):
    rows = outlined(shape)
    palette = bytes([0, 0, 0, 0, 255, 255, 255, 0])
    colour = plane(rows, lambda pixel: pixel == WHITE)
    mask = plane(rows, lambda pixel: pixel == CLEAR)
    return bitmap_header(CURSOR_SIZE, 1, len(colour) + len(mask)) + palette + colour + mask


# --- The icon: a voice that glides up over note rows and ends in a vibrato ---

BACKGROUND, BLACK_KEY_ROW, CURVE = (0x24, 0x3B, 0x53), (0x33, 0x4E, 0x68), (0xFF, 0xB3, 0x4D)
NOTE_ROWS = 8
BLACK_KEYS = (1, 3, 6)
SAMPLES_PER_SIDE = 4  # of a pixel, against jagged edges


def curve_height(x):
    """Height of the pitch at x, both from 0 to 1 and up from the bottom."""
    glide = min(max((x - 0.15) / 0.4, 0), 1)
    vibrato = 0.09 * math.sin((x - 0.55) * 3 * math.pi / 0.35) if x > 0.55 else 0
    return 0.25 + 0.45 * glide * glide * (3 - 2 * glide) + vibrato


def near_curve(x, y, reach):
    """Whether a point is within reach of the curve, measured at points that lie closer than an icon's pixels."""
    points = (index / 200 for index in range(24, 177))
    return any((px - x) ** 2 + (curve_height(px) - y) ** 2 <= reach * reach for px in points)


def inside_tile(x, y):
    """Whether a point lies in the square with rounded corners."""
    radius = 0.16
    across, down = max(abs(x - 0.5) - 0.5 + radius, 0), max(abs(y - 0.5) - 0.5 + radius, 0)
    return across * across + down * down <= radius * radius


def icon_sample(x, y, reach):
    """Colour of a point, or None outside of the icon."""
    if not inside_tile(x, y):
        return None
    if near_curve(x, y, reach):
        return CURVE
    return BLACK_KEY_ROW if int(y * NOTE_ROWS) in BLACK_KEYS else BACKGROUND


def icon_pixel(column, row, size):
    """Blue, green, red and opacity of one pixel, row 0 being the bottom one."""
    step = 1 / (size * SAMPLES_PER_SIDE)
    reach = max(0.05, 1.1 / size)  # the line of the smallest icon stays two pixels wide
    samples = [
        icon_sample((column * SAMPLES_PER_SIDE + i + 0.5) * step, (row * SAMPLES_PER_SIDE + j + 0.5) * step, reach)
        for i in range(SAMPLES_PER_SIDE) for j in range(SAMPLES_PER_SIDE)
    ]
    colours = [sample for sample in samples if sample]
    if not colours:
        return bytes(4)
    red, green, blue = (round(sum(channel) / len(colours)) for channel in zip(*colours))
    return bytes([blue, green, red, round(255 * len(colours) / len(samples))])


def icon_image(size):
    pixels = b"".join(icon_pixel(column, row, size) for row in range(size) for column in range(size))
    mask = bytes((size + 31) // 32 * 4 * size)  # opacity decides, the mask hides nothing
    return bitmap_header(size, 32, len(pixels) + len(mask)) + pixels + mask


# --- Files ---

def bitmap_header(size, bits, data_size):
    """A BITMAPINFOHEADER; its height counts the colours and the mask."""
    return struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, bits, 0, data_size, 0, 0, 0, 0)


def write(name, kind, images):
    """Writes an icon or cursor file of (size, first field, second field, image); the fields are a cursor's hot spot."""
    directory, data = struct.pack("<HHH", 0, kind, len(images)), b""
    offset = len(directory) + 16 * len(images)
    for size, first, second, image in images:
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, first, second, len(image), offset + len(data))
        data += image
    (FOLDER / name).write_bytes(directory + data)


def main():
    for name, shape, hot_spot in (("select", select, (14, 14)), ("pen", pen, (1, 19)), ("erase", erase, (13, 25))):
        write(f"{name}.cur", CURSOR_TYPE, [(CURSOR_SIZE, *hot_spot, cursor_image(shape))])
    write("marlit.ico", ICON_TYPE, [(size, 1, 32, icon_image(size)) for size in (16, 32, 48)])


main()
