"""Writes the round-trip corpus: one drawing per DXF version with every entity type the store must carry.

usage: make_corpus.py OUTDIR
Each drawing has layers that are frozen, off and locked, a block with attribute definitions, inserts with
attributes, extended data, and non-ASCII text including characters outside the Windows-1252 code page.
"""
import math
import sys

import ezdxf
from ezdxf.math import Vec3

VERSIONS = ["R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"]
# Survey-size coordinates: a Gauss-Krueger site.
E0, N0 = 2561234.567, 5634012.345
TEXT = "Grenzstein Nr. 7 Straße ½° Ω Ж"  # Ω and Ж lie outside ANSI_1252


def try_add(what, fn):
    try:
        fn()
    except (ezdxf.DXFVersionError, ezdxf.DXFTypeError, AttributeError, TypeError):
        pass


def build(version):
    doc = ezdxf.new(version, setup=True)
    doc.layers.add("FROZEN", color=3).freeze()
    doc.layers.add("OFF", color=4).off()
    doc.layers.add("LOCKED", color=5).lock()
    doc.layers.add("Vermessung_Äpfel", color=1)
    doc.appids.add("VIRA_TEST")

    blk = doc.blocks.new("GRENZSTEIN")
    blk.add_circle((0, 0), 0.25)
    blk.add_line((-0.5, 0), (0.5, 0))
    blk.add_attdef("NR", (0.3, 0.3), dxfattribs={"height": 0.2})
    blk.add_attdef("HOEHE", (0.3, -0.3), dxfattribs={"height": 0.2})

    msp = doc.modelspace()
    p = lambda dx, dy, z=0.0: (E0 + dx, N0 + dy, z)
    msp.add_point(p(0, 0, 312.25), dxfattribs={"layer": "Vermessung_Äpfel"})
    line = msp.add_line(p(1, 1), p(11.5, 3.25, 2.0), dxfattribs={"layer": "LOCKED"})
    line.set_xdata("VIRA_TEST", [(1000, "Messung " + TEXT), (1040, 1.25), (1010, p(5, 5, 1))])
    msp.add_line(p(2, 2), p(4, 4), dxfattribs={"layer": "FROZEN"})
    msp.add_line(p(3, 2), p(5, 4), dxfattribs={"layer": "OFF"})
    msp.add_circle(p(20, 5), 2.5)
    msp.add_arc(p(25, 5), 3.0, 15.0, 120.0)
    msp.add_solid([p(30, 0), p(32, 0), p(30, 2), p(32, 2)])
    msp.add_trace([p(33, 0), p(35, 0), p(33, 2), p(35, 2)])
    msp.add_3dface([p(40, 0, 1), p(42, 0, 2), p(42, 2, 3), p(40, 2, 4)])
    msp.add_text(TEXT, dxfattribs={"height": 0.5, "rotation": 30.0, "insert": p(50, 5)})
    msp.add_polyline2d([p(60, 0), p(61, 1), p(62, 0)], dxfattribs={"closed": True})
    msp.add_polyline3d([p(70, 0, 1), p(71, 1, 2), p(72, 0, 3)])
    try_add("polyface", lambda: msp.add_polyface().append_face([p(80, 0), p(81, 0), p(81, 1)]))
    ins = msp.add_blockref("GRENZSTEIN", p(90, 5), dxfattribs={"rotation": 45.0})
    ins.add_auto_attribs({"NR": "7", "HOEHE": "312.25 m " + TEXT})
    msp.add_blockref("GRENZSTEIN", p(95, 5))
    try_add("lwpolyline", lambda: msp.add_lwpolyline(
        [(E0 + 100, N0, 0, 0, 0.5), (E0 + 102, N0 + 1), (E0 + 104, N0)], format="xyseb",
        dxfattribs={"elevation": 3.5}))
    try_add("ellipse", lambda: msp.add_ellipse(p(110, 5), major_axis=(4, 1, 0), ratio=0.5))
    try_add("spline", lambda: msp.add_spline([p(120, 0), p(121, 2), p(123, 1), p(125, 3)]))
    try_add("mtext", lambda: msp.add_mtext("Zeile 1\\P" + TEXT, dxfattribs={"insert": p(130, 5),
                                                                           "char_height": 0.4}))
    try_add("ray", lambda: msp.add_ray(p(140, 0), (1, 1, 0)))
    try_add("xline", lambda: msp.add_xline(p(145, 0), (0, 1, 0)))

    def hatch():
        h = msp.add_hatch(color=2)
        h.paths.add_polyline_path([(E0 + 150, N0), (E0 + 152, N0), (E0 + 152, N0 + 2)], is_closed=True)
    try_add("hatch", hatch)

    def dimension():
        d = msp.add_linear_dim(base=p(160, 3), p1=p(160, 0), p2=p(165, 0))
        d.render()
    try_add("dimension", dimension)
    try_add("leader", lambda: msp.add_leader([p(170, 0), p(171, 1), p(173, 1)]))

    # Paper space keeps its own entities.
    doc.layout("Layout1").add_line((0, 0), (10, 10))
    doc.header["$CLAYER"] = "Vermessung_Äpfel"
    return doc


def main():
    out = sys.argv[1]
    for version in VERSIONS:
        doc = build(version)
        doc.saveas(f"{out}/corpus_{version}.dxf")


if __name__ == "__main__":
    main()
