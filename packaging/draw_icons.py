#!/usr/bin/env python3
"""Draws Velmaro's pictures: draw_icons.py FOLDER, draw_icons.py --png NAME SIZE FILE, or draw_icons.py --svg NAME FILE."""
import math
import pathlib
import struct
import sys
import zlib

# Windows draws pictures and window icons at these sizes, from 100 % to 300 %.
SIZES = (16, 20, 24, 32, 40, 48, 64, 72, 80, 96)
# The largest is for the file in a folder, which shows the first picture of the program.
FILE_PICTURE, FILE_SIZE = 'app', 256
# Even at 16 pixels a whole coordinate then falls between two pixels, so straight edges stay sharp.
GRID = 16
ROWS_PER_PIXEL = 8
WHITE = (255, 255, 255)


def box(left, top, right, bottom, radius=0.0):
    if not radius:
        return [(left, top), (right, top), (right, bottom), (left, bottom)]
    corners = ((right - radius, top + radius, -90), (right - radius, bottom - radius, 0),
               (left + radius, bottom - radius, 90), (left + radius, top + radius, 180))
    return [(x + radius * math.cos(math.radians(turn + step)), y + radius * math.sin(math.radians(turn + step)))
            for x, y, turn in corners for step in range(0, 91, 6)]


def chevron(top, height, thickness):
    return [(8, top), (12.5, top + height), (12.5, top + height + thickness), (8, top + thickness),
            (3.5, top + height + thickness), (3.5, top + height)]


def spark(x, y, reach):
    """A star of four points whose sides are drawn in towards the middle."""
    return [(x + math.copysign(reach * abs(math.cos(a)) ** 2.6, math.cos(a)),
             y + math.copysign(reach * abs(math.sin(a)) ** 2.6, math.sin(a)))
            for a in (math.radians(step) for step in range(0, 360, 5))]


def tile(colour):
    edge = tuple(int(c * 0.78) for c in colour)
    return [(edge, [box(0, 0, 16, 16, 3.25)]), (colour, [box(0, 0, 16, 15.25, 3.25)])]


BLUE, ORANGE, GREEN, TEAL, VIOLET = (45, 98, 214), (226, 108, 24), (38, 146, 84), (10, 138, 156), (118, 84, 196)

PICTURES = {
    'app': tile(BLUE) + [
        (WHITE, [[(6, 3), (13.5, 8), (6, 13)]]),
        ((176, 202, 255), [box(2, 6, 5, 7), box(2, 9, 5, 10)]),
    ],
    'priority': tile(ORANGE) + [
        (WHITE, [chevron(2.5, 4.5, 2.5)]),
        ((255, 218, 184), [chevron(6.5, 4.5, 2.5)]),
    ],
    'memory': tile(GREEN) + [
        ((190, 236, 206), [box(x, y, x + 2, y + 2) for x in (5, 9) for y in (2, 12)]
         + [box(x, y, x + 2, y + 2) for y in (5, 9) for x in (2, 12)]),
        (WHITE, [box(4, 4, 12, 12, 1)]),
        (GREEN, [box(6, 6, 10, 10, 0.5)]),
    ],
    'resources': tile(TEAL) + [
        (WHITE, [spark(7, 9, 5.5)]),
        ((178, 236, 242), [spark(12, 4, 2.75)]),
    ],
    'editor': tile(VIOLET) + [
        (WHITE, [[(4, 2), (9, 2), (12, 5), (12, 14), (4, 14)]]),
        ((206, 190, 246), [[(9, 2), (12, 5), (9, 5)]]),
        (VIOLET, [box(5.5, 7, 10.5, 8), box(5.5, 9, 10.5, 10), box(5.5, 11, 9, 12)]),
    ],
}


def coverage(outline, size):
    """Yields (x, y, share) for each pixel that the outline covers, row by row in slices of a pixel."""
    points = [(x * size / GRID, y * size / GRID) for x, y in outline]
    edges = list(zip(points, points[1:] + points[:1]))
    for y in range(size):
        row = [0.0] * size
        for part in range(ROWS_PER_PIXEL):
            level = y + (part + 0.5) / ROWS_PER_PIXEL
            cuts = sorted(a[0] + (level - a[1]) * (b[0] - a[0]) / (b[1] - a[1])
                          for a, b in edges if (a[1] <= level) != (b[1] <= level))
            for start, end in zip(cuts[::2], cuts[1::2]):
                for x in range(max(0, int(start)), min(size, math.ceil(end))):
                    row[x] += max(0.0, min(end, x + 1) - max(start, x)) / ROWS_PER_PIXEL
        yield from ((x, y, share) for x, share in enumerate(row) if share > 0)


def draw(name, size):
    """The rows of a picture, top first, each a list of (red, green, blue, alpha)."""
    rows = [[(0.0, 0.0, 0.0, 0.0)] * size for _ in range(size)]
    for colour, outlines in PICTURES[name]:
        for outline in outlines:
            for x, y, share in coverage(outline, size):
                under = rows[y][x]
                alpha = share + under[3] * (1 - share)
                rows[y][x] = (*((c * share + u * under[3] * (1 - share)) / alpha
                                for c, u in zip(colour, under)), alpha)
    return [[(round(r), round(g), round(b), min(255, round(a * 255))) for r, g, b, a in row] for row in rows]


def png(rows):
    def chunk(kind, data):
        return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))

    pixels = b''.join(b'\0' + bytes(v for pixel in row for v in pixel) for row in rows)
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', len(rows), len(rows), 8, 6, 0, 0, 0))
            + chunk(b'IDAT', zlib.compress(pixels, 9)) + chunk(b'IEND', b''))


def icon(name):
    """Every image is a PNG, which all Windows since Vista read at any size: a tenth of the bytes of a bitmap."""
    sizes = SIZES + ((FILE_SIZE,) if name == FILE_PICTURE else ())
    images = [png(draw(name, size)) for size in sizes]
    offset = 6 + 16 * len(sizes)
    directory = struct.pack('<HHH', 0, 1, len(sizes))
    for size, image in zip(sizes, images):
        directory += struct.pack('<BBBBHHII', size % 256, size % 256, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    return directory + b''.join(images)


def svg(name):
    """The picture as a drawing that scales."""
    shapes = [f'<path fill="#{bytes(colour).hex()}" d="M' + 'L'.join(f'{x:.3f},{y:.3f}' for x, y in outline) + 'Z"/>'
              for colour, outlines in PICTURES[name] for outline in outlines]
    return '\n'.join([f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {GRID} {GRID}">', *shapes, '</svg>', ''])


def main(arguments):
    if len(arguments) == 4 and arguments[0] == '--png':
        pathlib.Path(arguments[3]).write_bytes(png(draw(arguments[1], int(arguments[2]))))
    elif len(arguments) == 3 and arguments[0] == '--svg':
        pathlib.Path(arguments[2]).write_text(svg(arguments[1]))
    elif len(arguments) == 1 and not arguments[0].startswith('-'):
        folder = pathlib.Path(arguments[0])
        folder.mkdir(parents=True, exist_ok=True)
        for name in PICTURES:
            (folder / f'{name}.ico').write_bytes(icon(name))
    else:
        sys.exit(__doc__)


if __name__ == '__main__':
    main(sys.argv[1:])
