"""Writes the realistic survey drawing of the DXF store's benchmarks, as a field crew's plan looks.

usage: make_site_survey.py OUT.dxf [SCALE]
Around a Gauss-Krueger site (easting 2,561,234, northing 5,634,012), reproducibly:
  40,000 survey points as block references, each with three attributes (point number, height, code),
  10,000 hatches (buildings and areas: polyline boundaries, some with arcs, and edge boundaries of lines
  and arcs; solid and patterned), 10,000 splines (terrain break lines, kerbs), 10,000 MTEXT labels,
  20,000 light-weight polylines (parcels, some with arcs), 5,000 3D polylines (terrain lines with heights),
on seven layers. SCALE (default 1) multiplies every count, for a quick look at a smaller drawing.
"""
import math
import random
import sys

import ezdxf

E0, N0 = 2561234.0, 5634012.0
SIZE = 6000.0  # the site's extent in metres
LAYERS = (("Grenze", 1), ("Gebaeude", 3), ("Punkte", 5), ("Beschriftung", 7), ("Schraffur", 8),
          ("Gelaende", 30), ("Bruchkanten", 150))


def main():
    out = sys.argv[1]
    scale = float(sys.argv[2]) if len(sys.argv) > 2 else 1.0
    count = lambda n: max(1, int(n * scale))
    rnd = random.Random(20261123)
    doc = ezdxf.new("R2000")
    for name, color in LAYERS:
        doc.layers.add(name, color=color)
    here = lambda: (round(E0 + rnd.uniform(0, SIZE), 3), round(N0 + rnd.uniform(0, SIZE), 3))
    height = lambda: round(rnd.uniform(240, 320), 3)

    # The survey point symbol: a circle with a cross, its number, height and code as attributes.
    symbol = doc.blocks.new("VP")
    symbol.add_circle((0, 0), 0.25, dxfattribs={"layer": "0"})
    symbol.add_line((-0.4, 0), (0.4, 0), dxfattribs={"layer": "0"})
    symbol.add_line((0, -0.4), (0, 0.4), dxfattribs={"layer": "0"})
    for tag, dy in (("PNR", 0.4), ("HOEHE", 0.0), ("CODE", -0.4)):
        symbol.add_attdef(tag, (0.5, dy), dxfattribs={"height": 0.25, "layer": "0"})

    msp = doc.modelspace()
    codes = ("GR", "GEB", "BK", "FH", "MA", "ZA", "BO")
    for i in range(count(40000)):
        x, y = here()
        z = height()
        ref = msp.add_blockref("VP", (x, y, z), dxfattribs={"layer": "Punkte",
                                                             "rotation": round(rnd.uniform(0, 360), 3)})
        ref.add_auto_attribs({"PNR": str(100000 + i), "HOEHE": f"{z:.3f}", "CODE": rnd.choice(codes)})

    for i in range(count(10000)):
        x, y = here()
        hatch = msp.add_hatch(color=rnd.randint(1, 9), dxfattribs={"layer": "Schraffur"})
        if i % 3 == 2:
            hatch.set_pattern_fill("ANSI31", scale=0.5, angle=round(rnd.uniform(0, 90), 1))
        w, h = round(rnd.uniform(5, 30), 3), round(rnd.uniform(5, 30), 3)
        if i % 2 == 0:
            # A building outline; every fourth one has a rounded corner (a bulge).
            bulge = 0.4142 if i % 4 == 0 else 0.0
            hatch.paths.add_polyline_path([(x, y, 0), (x + w, y, bulge), (x + w, y + h, 0), (x, y + h, 0)],
                                          is_closed=True)
        else:
            # An area bounded by lines and an arc.
            edges = hatch.paths.add_edge_path()
            edges.add_line((x, y), (x + w, y))
            edges.add_line((x + w, y), (x + w, y + h))
            edges.add_arc((x + w / 2, y + h), radius=w / 2, start_angle=0, end_angle=180, ccw=True)
            edges.add_line((x, y + h), (x, y))

    for _ in range(count(10000)):
        x, y = here()
        z = height()
        points = [(round(x + k * 4 + rnd.uniform(-1, 1), 3), round(y + rnd.uniform(-3, 3), 3),
                   round(z + rnd.uniform(-0.5, 0.5), 3)) for k in range(rnd.randint(4, 8))]
        msp.add_open_spline(points, degree=3, dxfattribs={"layer": "Bruchkanten"})

    for i in range(count(10000)):
        x, y = here()
        msp.add_mtext(f"Flurstueck {1000 + i}/{rnd.randint(1, 40)}\\PGemarkung Nord\\P{rnd.uniform(100, 9000):.0f} m²",
                      dxfattribs={"layer": "Beschriftung", "insert": (x, y, 0), "char_height": 1.2,
                                  "width": 25.0, "rotation": round(rnd.uniform(0, 360), 2)})

    for i in range(count(20000)):
        x, y = here()
        points = [(round(x + rnd.uniform(-40, 40), 3), round(y + rnd.uniform(-40, 40), 3), 0,
                   0, 0.3 if (i % 5 == 0 and k == 0) else 0) for k in range(rnd.randint(4, 9))]
        msp.add_lwpolyline(points, format="xyseb", close=True, dxfattribs={"layer": "Grenze"})

    for _ in range(count(5000)):
        x, y = here()
        z = height()
        a = rnd.uniform(0, 2 * math.pi)
        points = [(round(x + k * 10 * math.cos(a), 3), round(y + k * 10 * math.sin(a), 3),
                   round(z + rnd.uniform(-1, 1), 3)) for k in range(rnd.randint(6, 14))]
        msp.add_polyline3d(points, dxfattribs={"layer": "Gelaende"})

    doc.saveas(out)


if __name__ == "__main__":
    main()
