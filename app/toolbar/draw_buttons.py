#!/usr/bin/env python3
"""Draws the two button images of the VIRA cadtools toolbar (24 x 24 pixels, PNG with transparency).

    ViraCoordDef.png  transform the drawing: a plan outline moved and turned into a new place
    ViraPtPick.png    pick points: a crosshair over three surveyed points

The shapes are drawn as geometry and anti-aliased by 4 x 4 supersampling; only the standard library is used.
Run it again after changing a shape: python3 app/toolbar/draw_buttons.py
"""
import math
import os
import struct
import zlib

SIZE = 24
SAMPLES = 4


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(px - ax - t * dx, py - ay - t * dy)


def polygon_edges(points):
    return [(points[i], points[(i + 1) % len(points)]) for i in range(len(points))]


def inside(px, py, points):
    result = False
    for (ax, ay), (bx, by) in polygon_edges(points):
        if (ay > py) != (by > py) and px < ax + (py - ay) * (bx - ax) / (by - ay):
            result = not result
    return result


class Canvas:
    def __init__(self):
        self.layers = []  # (coverage function, rgba), painted in order

    def stroke(self, points, width, rgba, closed=False):
        edges = polygon_edges(points) if closed else list(zip(points, points[1:]))
        self.layers.append((lambda x, y: any(
            segment_distance(x, y, a[0], a[1], b[0], b[1]) <= width / 2 for a, b in edges), rgba))

    def fill(self, points, rgba):
        self.layers.append((lambda x, y: inside(x, y, points), rgba))

    def disc(self, cx, cy, r, rgba):
        self.layers.append((lambda x, y: math.hypot(x - cx, y - cy) <= r, rgba))

    def ring(self, cx, cy, r, width, rgba):
        self.layers.append((lambda x, y: abs(math.hypot(x - cx, y - cy) - r) <= width / 2, rgba))

    def pixels(self):
        rows = []
        for py in range(SIZE):
            row = bytearray()
            for px in range(SIZE):
                acc = [0.0, 0.0, 0.0, 0.0]  # premultiplied
                for sy in range(SAMPLES):
                    for sx in range(SAMPLES):
                        x, y = px + (sx + 0.5) / SAMPLES, py + (sy + 0.5) / SAMPLES
                        c = [0.0, 0.0, 0.0, 0.0]
                        for covers, (r, g, b, a) in self.layers:
                            if covers(x, y):
                                a /= 255.0
                                c = [r * a + c[0] * (1 - a), g * a + c[1] * (1 - a), b * a + c[2] * (1 - a),
                                     a + c[3] * (1 - a)]
                        acc = [u + v for u, v in zip(acc, c)]
                n = SAMPLES * SAMPLES
                alpha = acc[3] / n
                if alpha > 0:
                    row += bytes(round(min(255, acc[i] / n / alpha)) for i in range(3))
                else:
                    row += b"\0\0\0"
                row.append(round(alpha * 255))
            rows.append(bytes(row))
        return rows


def write_png(path, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)
    raw = b"".join(b"\0" + row for row in rows)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")
    with open(path, "wb") as f:
        f.write(png)


GREY = (128, 128, 128, 255)
BLUE = (30, 90, 200, 255)
BLUE_FILL = (150, 185, 240, 255)
DARK = (40, 40, 40, 255)
RED = (210, 30, 30, 255)
WHITE = (255, 255, 255, 255)


def turned(points, cx, cy, degrees, dx, dy):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return [(cx + (x - cx) * c - (y - cy) * s + dx, cy + (x - cx) * s + (y - cy) * c + dy) for x, y in points]


def bezier(p0, p1, p2, steps=12):
    return [((1 - t) ** 2 * p0[0] + 2 * (1 - t) * t * p1[0] + t * t * p2[0],
             (1 - t) ** 2 * p0[1] + 2 * (1 - t) * t * p1[1] + t * t * p2[1])
            for t in (i / steps for i in range(steps + 1))]


def transform_button():
    canvas = Canvas()
    # The plan where it was: a grey outline of a house in the lower left.
    house = [(2.5, 22.0), (2.5, 16.0), (6.5, 12.0), (10.5, 16.0), (10.5, 22.0)]
    canvas.stroke(house, 1.2, GREY, closed=True)
    # The same plan moved up to the right and turned: filled and outlined in blue.
    moved = turned(house, 6.5, 17.0, 20, 11.5, -7.0)
    canvas.fill(moved, BLUE_FILL)
    canvas.stroke(moved, 1.4, BLUE, closed=True)
    # The arrow of the move: from above the old place along a bow towards the new one.
    bow = bezier((5.0, 10.0), (4.5, 3.0), (11.0, 3.0))
    canvas.stroke(bow, 1.4, DARK)
    canvas.fill([(14.0, 3.0), (10.0, 0.3), (10.0, 5.7)], DARK)
    return canvas


def pick_button():
    canvas = Canvas()
    # Three surveyed points, red with a light rim so that they stand out on dark bars too.
    for x, y in ((5.0, 6.0), (19.0, 8.0), (7.5, 19.0)):
        canvas.disc(x, y, 2.6, WHITE)
        canvas.disc(x, y, 1.9, RED)
    # The crosshair of the pick cursor, with the pick box at its centre over a fourth point.
    c = 13.5
    for a, b in (((c, 1.0), (c, c - 3.5)), ((c, c + 3.5), (c, 23.0)),
                 ((1.0, c), (c - 3.5, c)), ((c + 3.5, c), (23.0, c))):
        canvas.stroke([a, b], 1.4, DARK)
    canvas.stroke([(c - 2.5, c - 2.5), (c + 2.5, c - 2.5), (c + 2.5, c + 2.5), (c - 2.5, c + 2.5)], 1.2, DARK,
                  closed=True)
    canvas.disc(c, c, 1.3, RED)
    return canvas


if __name__ == "__main__":
    here = os.path.dirname(os.path.abspath(__file__))
    write_png(os.path.join(here, "ViraCoordDef.png"), transform_button().pixels())
    write_png(os.path.join(here, "ViraPtPick.png"), pick_button().pixels())
