"""Writes the survey drawing the DXF store's benchmark works on.

usage: make_survey.py OUT.dxf COUNT
COUNT model-space entities in equal parts lines, light-weight polylines, texts and points, with survey-size
coordinates around a Gauss-Krueger site (easting 2,561,234.567, northing 5,634,012.345), reproducibly.
"""
import random
import sys

import ezdxf

E0, N0 = 2561234.567, 5634012.345


def main():
    out, count = sys.argv[1], int(sys.argv[2])
    rnd = random.Random(20261121)
    doc = ezdxf.new("R2000")
    for name, color in (("Grenze", 1), ("Gebaeude", 3), ("Punkte", 5), ("Beschriftung", 7)):
        doc.layers.add(name, color=color)
    msp = doc.modelspace()
    coord = lambda: (round(E0 + rnd.uniform(0, 5000), 3), round(N0 + rnd.uniform(0, 5000), 3),
                     round(rnd.uniform(300, 400), 3))
    for i in range(count):
        kind = i % 4
        x, y, z = coord()
        if kind == 0:
            msp.add_line((x, y, z), (x + round(rnd.uniform(-50, 50), 3), y + round(rnd.uniform(-50, 50), 3), z),
                         dxfattribs={"layer": "Grenze"})
        elif kind == 1:
            pts = [(x + round(rnd.uniform(-30, 30), 3), y + round(rnd.uniform(-30, 30), 3))
                   for _ in range(rnd.randint(4, 6))]
            msp.add_lwpolyline(pts, dxfattribs={"layer": "Gebaeude", "closed": True})
        elif kind == 2:
            msp.add_text(f"P{i} {z:.2f}", dxfattribs={"layer": "Beschriftung", "height": 0.5,
                                                      "rotation": round(rnd.uniform(0, 360), 2),
                                                      "insert": (x, y, z)})
        else:
            msp.add_point((x, y, z), dxfattribs={"layer": "Punkte"})
    doc.saveas(out)


if __name__ == "__main__":
    main()
