#!/usr/bin/python3
"""Makes examples/site-plan.dxf: a small site plan in Gauss-Krueger coordinates (metres).

The plan is what a surveyor gets from an older survey: parcel, building, trees, a road and three control
points P1-P3, in the old grid (easting around 2,561,200, northing around 5,634,000). The scripts beside it move
the whole drawing into UTM by picking the control points and typing their UTM coordinates.
Layers: "ALTBESTAND" is locked and "ENTWURF" frozen, so the transformation leaves them where they are;
"HILFSLINIEN" is switched off.
"""
import sys
import ezdxf

doc = ezdxf.new("R2000")
doc.header["$INSUNITS"] = 6  # metres
layers = {
    "GRENZE": 1, "GEBAEUDE": 5, "BAEUME": 3, "STRASSE": 8, "PUNKTE": 2, "TEXT": 7,
    "ALTBESTAND": 9, "ENTWURF": 4, "HILFSLINIEN": 251,
}
for name, color in layers.items():
    doc.layers.add(name, color=color)
doc.layers.get("ALTBESTAND").lock()
doc.layers.get("ENTWURF").freeze()
doc.layers.get("HILFSLINIEN").off()

msp = doc.modelspace()
E0, N0 = 2561200.0, 5634000.0


def at(x, y, z=0.0):
    """Local plan metres to grid coordinates."""
    return (E0 + x, N0 + y, z)


parcel = [(10.0, 10.0), (90.0, 12.0), (88.0, 70.0), (12.0, 68.0)]
msp.add_lwpolyline([at(x, y)[:2] for x, y in parcel], close=True, dxfattribs={"layer": "GRENZE"})
msp.add_lwpolyline([at(30.0, 25.0)[:2], at(55.0, 25.0)[:2], at(55.0, 45.0)[:2], at(30.0, 45.0)[:2]], close=True,
                   dxfattribs={"layer": "GEBAEUDE"})
msp.add_text("Wohnhaus Nr. 12", dxfattribs={"layer": "TEXT", "height": 1.5, "insert": at(32.0, 35.0)})
for x, y in [(20.0, 55.0), (70.0, 60.0), (75.0, 20.0)]:
    msp.add_circle(at(x, y), 2.5, dxfattribs={"layer": "BAEUME"})
msp.add_line(at(0.0, 0.0), at(100.0, 3.0), dxfattribs={"layer": "STRASSE"})
msp.add_arc(at(100.0, 13.0), 10.0, 270.0, 0.0, dxfattribs={"layer": "STRASSE"})
heights = [251.20, 252.85, 254.10]
for i, ((x, y), z) in enumerate(zip(parcel[:3], heights), start=1):
    msp.add_point(at(x, y, z), dxfattribs={"layer": "PUNKTE"})
    msp.add_text(f"P{i}", dxfattribs={"layer": "PUNKTE", "height": 1.0, "insert": at(x + 1.0, y + 1.0, z)})
msp.add_lwpolyline([at(5.0, 75.0)[:2], at(40.0, 80.0)[:2]], dxfattribs={"layer": "ALTBESTAND"})
msp.add_text("Altbestand (gesperrt)", dxfattribs={"layer": "ALTBESTAND", "height": 1.0, "insert": at(5.0, 77.0)})
msp.add_lwpolyline([at(60.0, 30.0)[:2], at(80.0, 30.0)[:2], at(80.0, 40.0)[:2]], dxfattribs={"layer": "ENTWURF"})
msp.add_line(at(10.0, 10.0), at(88.0, 70.0), dxfattribs={"layer": "HILFSLINIEN"})
doc.saveas(sys.argv[1] if len(sys.argv) > 1 else "site-plan.dxf")
