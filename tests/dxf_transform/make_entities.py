"""Writes the drawings the transformation tests start from: every entity type the host transforms, in an
R12 drawing and an R2018 drawing, around survey-size coordinates, in plan and in tilted planes."""
import math
import sys

import ezdxf

X0, Y0, Z0 = 2561234.567, 5634012.345, 312.25
TILT = (0.3, -0.4, math.sqrt(1.0 - 0.25))  # a plane leaning out of plan
DOWN = (0.0, 0.0, -1.0)  # a plane seen from below, as mirrored drawings store it


def p(dx, dy, dz=0.0):
    return (X0 + dx, Y0 + dy, Z0 + dz)


def add_block(doc):
    block = doc.blocks.new("MARK")
    block.add_circle((0, 0), 0.5)
    block.add_line((-1, 0), (1, 0))
    block.add_attdef("NR", (0.7, 0.2), dxfattribs={"height": 0.35, "rotation": 10})
    block.add_attdef("H", (0.7, -0.4), dxfattribs={"height": 0.25})


def common(msp, doc):
    msp.add_point(p(1, 2, 3))
    msp.add_point(p(2, 2, 3), dxfattribs={"thickness": 1.5})
    msp.add_line(p(0, 0), p(10.5, 3.25, 1))
    msp.add_line(p(0, 1), p(7, 8, 2), dxfattribs={"thickness": 2.0, "extrusion": (0.1, 0.2, math.sqrt(0.95))})
    msp.add_circle(p(5, 5)[:2], 2.5, dxfattribs={"thickness": 0.75})
    msp.add_circle((1000.5, -20.25, 4.0), 1.25, dxfattribs={"extrusion": TILT})
    msp.add_circle((-X0 + 3, Y0 + 1, -Z0), 1.0, dxfattribs={"extrusion": DOWN})
    msp.add_arc(p(3, 4)[:2], 1.5, 20, 135)
    msp.add_arc(p(3, 7)[:2], 1.5, 300, 60)  # through 0 degrees
    msp.add_arc(p(3, 9)[:2], 1.5, 10, 190)  # a half circle
    msp.add_arc((40.0, 50.0, 7.0), 3.0, 45, 100, dxfattribs={"extrusion": TILT})
    msp.add_3dface([p(0, 0, 0), p(1, 0, 1), p(1, 1, 2), p(0, 1, 3)])
    msp.add_solid([p(0, 0)[:2], p(2, 0)[:2], p(0, 2)[:2], p(2, 2)[:2]], dxfattribs={"thickness": 0.5})
    msp.add_trace([(10, 10), (12, 10), (10, 12)], dxfattribs={"extrusion": TILT, "elevation": 0})
    msp.add_text("P17", dxfattribs={"insert": p(4, 4), "height": 0.35, "rotation": 33.0, "width": 0.8,
                                    "oblique": 12.0})
    text = msp.add_text("MIDDLE", dxfattribs={"height": 0.5, "thickness": 0.1})
    text.set_placement(p(6, 4)[:2], p(9, 5)[:2], align=ezdxf.enums.TextEntityAlignment.ALIGNED)
    msp.add_text("TILTED", dxfattribs={"insert": (3.0, 4.0, 5.0), "height": 0.4, "rotation": 250.0,
                                       "extrusion": TILT})
    ref = msp.add_blockref("MARK", p(20, 30), dxfattribs={"xscale": 2.0, "yscale": 2.0, "zscale": 2.0,
                                                         "rotation": 15.0})
    ref.add_auto_attribs({"NR": "17", "H": "312.25"})
    ref = msp.add_blockref("MARK", (5.0, 6.0, 7.0), dxfattribs={"extrusion": TILT, "rotation": 200.0,
                                                               "xscale": 1.5, "yscale": -1.5})
    ref.add_auto_attribs({"NR": "18", "H": "1.0"})
    pl = msp.add_polyline2d([(0, 0, 0, 0, 0.5), (4, 0, 0.2, 0.4, 0), (4, 3, 0, 0, -1.0), (0, 3, 0, 0, 0)],
                            format="xyseb", close=True,
                            dxfattribs={"elevation": (0, 0, 12.5), "default_start_width": 0.1,
                                        "default_end_width": 0.1})
    pl.dxf.thickness = 0.3
    msp.add_polyline2d([(X0, Y0), (X0 + 5, Y0 + 1), (X0 + 6, Y0 + 4)])
    msp.add_polyline2d([(1, 1), (5, 1), (5, 4)], dxfattribs={"extrusion": TILT, "elevation": (0, 0, 3.0)})
    msp.add_polyline3d([p(0, 0, 0), p(1, 2, 3), p(4, 5, 6)])
    mesh = msp.add_polymesh(size=(2, 3))
    for m in range(2):
        for n in range(3):
            mesh.set_mesh_vertex((m, n), p(m, n, m * n))
    face = msp.add_polyface()
    face.append_face([p(0, 0), p(1, 0), p(1, 1), p(0, 1, 1)])
    face.append_face([p(1, 0), p(2, 0), p(2, 1)])
    dim = msp.add_linear_dim(base=p(0, 5)[:2], p1=p(0, 0)[:2], p2=p(6, 0)[:2], angle=20)
    dim.render()
    dim = msp.add_aligned_dim(p1=p(0, 0)[:2], p2=p(3, 4)[:2], distance=1.5)
    dim.render()
    dim = msp.add_radius_dim(center=p(5, 5)[:2], radius=2.5, angle=45)
    dim.render()
    line = msp.add_line(p(-1, -1), p(-2, -3))
    line.set_xdata("VIRA", [(1000, "marker"), (1011, p(1, 1, 1)), (1012, (1.0, 2.0, 0.5)), (1013, (0.0, 2.0, 0.0)),
                            (1041, 3.5), (1042, 1.25)])


def modern(msp, doc):
    msp.add_lwpolyline([(X0, Y0, 0.1, 0.2, 0.0), (X0 + 3, Y0, 0.0, 0.0, 0.4142), (X0 + 3, Y0 + 4, 0, 0, 0)],
                       format="xyseb", close=True, dxfattribs={"elevation": Z0, "thickness": 0.25})
    msp.add_lwpolyline([(1, 1), (5, 1), (5, 4)], dxfattribs={"const_width": 0.2, "extrusion": TILT,
                                                               "elevation": 2.5})
    msp.add_lwpolyline([(X0, Y0), (X0 + 10, Y0 + 2)])  # straight: survives any matrix
    msp.add_ellipse(p(1, 1), major_axis=(3, 1, 0), ratio=0.4, start_param=0.3, end_param=4.0)
    msp.add_ellipse((2.0, 3.0, 4.0), major_axis=(0.0, 2.0, 0.0), ratio=0.5, dxfattribs={"extrusion": (1, 0, 0)})
    msp.add_spline(fit_points=[p(0, 0), p(1, 2, 1), p(3, 3, 0), p(5, 1, 2)])
    spline = msp.add_open_spline([p(0, 0), p(1, 2), p(3, 3), p(5, 1)], degree=3)
    spline.dxf.start_tangent = (1.0, 0.5, 0.0)
    spline.dxf.end_tangent = (0.0, -1.0, 0.25)
    spline.dxf.extrusion = (0.0, 0.0, 1.0)
    msp.add_mtext("Punkt 17\\PHöhe", dxfattribs={"insert": p(2, 2), "char_height": 0.5, "width": 12.0,
                                               "rotation": 30.0})
    msp.add_mtext("Richtung", dxfattribs={"insert": p(3, 3), "char_height": 0.4,
                                          "text_direction": (0.6, 0.8, 0.0)})
    msp.add_mtext("Schräg", dxfattribs={"insert": (1.0, 2.0, 3.0), "char_height": 0.3, "extrusion": TILT})
    # Seen from below without a direction: it still runs along world x, not turned by half a circle.
    msp.add_mtext("Unten", dxfattribs={"insert": (4.0, 5.0, 6.0), "char_height": 0.3, "extrusion": DOWN})
    msp.add_ray(p(0, 0), (1, 1, 0))
    msp.add_xline(p(2, 0), (0.0, 0.6, 0.8))
    msp.add_leader([p(0, 0), p(2, 2), p(4, 2)], dxfattribs={"text_height": 0.5, "text_width": 3.0,
                                                             "leader_offset_annotation_placement": (0.5, 0.25, 0.0),
                                                             "horizontal_direction": (1.0, 0.0, 0.0)})

    hatch = msp.add_hatch(color=2, dxfattribs={"elevation": (0, 0, Z0)})
    hatch.paths.add_polyline_path([(X0, Y0, 0.0), (X0 + 4, Y0, 0.5), (X0 + 4, Y0 + 3, 0.0)], is_closed=True)
    edges = hatch.paths.add_edge_path()
    edges.add_line((X0, Y0 + 10), (X0 + 4, Y0 + 10))
    edges.add_arc((X0 + 4, Y0 + 12), 2.0, 270, 90, ccw=True)
    edges.add_arc((X0 + 1, Y0 + 14), 3.0, 0, 180, ccw=False)
    edges.add_ellipse((X0 + 2, Y0 + 12), major_axis=(2.0, 1.0), ratio=0.5, start_angle=30, end_angle=200, ccw=True)
    edges.add_spline(control_points=[(X0, Y0 + 12), (X0 + 1, Y0 + 13), (X0 + 2, Y0 + 12), (X0 + 3, Y0 + 13)],
                     knot_values=[0, 0, 0, 0, 1, 1, 1, 1], degree=3,
                     start_tangent=(1.0, 1.0), end_tangent=(1.0, -1.0))
    circle = hatch.paths.add_edge_path()
    circle.add_arc((X0 + 20, Y0 + 20), 1.5, 0, 360, ccw=False)
    hatch.set_pattern_fill("ANSI31", angle=15.0, scale=2.0)
    hatch.set_seed_points([(X0 + 1, Y0 + 1), (X0 + 2, Y0 + 11)])

    tilted = msp.add_hatch(color=3, dxfattribs={"extrusion": TILT, "elevation": (0, 0, 0)})
    tilted.paths.add_polyline_path([(0, 0), (5, 0), (5, 5), (0, 5)], is_closed=True)
    tilted.set_seed_points([(1.0, 1.0)])

    gradient = msp.add_hatch(color=4)
    gradient.paths.add_polyline_path([(X0, Y0), (X0 + 5, Y0), (X0 + 5, Y0 + 5)], is_closed=True)
    gradient.set_gradient((255, 0, 0), (0, 0, 255), rotation=30.0)


def newer(msp, doc):
    """Pictures, multilines, multileaders, meshes, solids and the other types a CAD program moves too."""
    image = doc.add_image_def(filename="survey.png", size_in_pixel=(640, 480))
    msp.add_image(image, insert=p(1, 1), size_in_units=(6.4, 4.8), rotation=20)
    msp.add_wipeout([p(0, 0)[:2], p(3, 0)[:2], p(3, 2)[:2], p(0, 2)[:2]])
    sheet = doc.add_underlay_def("plan.pdf", fmt="pdf", name="1")
    msp.add_underlay(sheet, insert=p(2, 2), scale=(1.5, 1.5, 1.5), rotation=15)
    msp.add_mline([p(0, 0), p(5, 0), p(5, 5)], dxfattribs={"scale_factor": 2.0})
    mesh = msp.add_mesh()
    with mesh.edit_data() as data:
        data.vertices = [p(0, 0, 0), p(2, 0, 0), p(2, 2, 1), p(0, 2, 1)]
        data.faces = [[0, 1, 2, 3]]
    msp.add_shape("BOX", p(7, 7), 2.0, dxfattribs={"rotation": 25.0})
    msp.add_helix(radius=2.0, pitch=0.5, turns=3, dxfattribs={"axis_base_point": p(9, 9)})
    msp.new_entity("TOLERANCE", dxfattribs={"insert": p(4, 1), "content": "{\\Fgdt;j}%%v0.1", "dimstyle": "Standard",
                                            "x_axis_vector": (0.6, 0.8, 0.0)})
    msp.new_entity("LIGHT", dxfattribs={"name": "Spot", "type": 3, "location": p(1, 1, 10), "target": p(3, 2, 0),
                                        "attenuation_start_limits": 1.0, "attenuation_end_limits": 10.0})
    from ezdxf.math import Vec2
    from ezdxf.render import mleader
    builder = msp.add_multileader_mtext("Standard")
    builder.set_content("Punkt 7", char_height=0.5)
    builder.add_leader_line(mleader.ConnectionSide.left, [Vec2(X0 - 4, Y0 - 3)])
    builder.build(insert=Vec2(X0, Y0))
    dim = msp.add_arc_dim_3p(base=p(0, 6)[:2], center=p(0, 0)[:2], p1=p(4, 0)[:2], p2=p(0, 4)[:2])
    dim.render()
    msp.add_mtext_static_columns(["Spalte 1", "Spalte 2"], width=5.0, gutter_width=1.0, height=8.0,
                                 dxfattribs={"insert": p(12, 12), "char_height": 0.5})


def add_solid(msp):
    """An ACIS solid: its SAT text lives in the entity up to R2010."""
    from ezdxf.acis import api as acis
    from ezdxf.render import forms
    solid = msp.add_3dsolid()
    acis.export_dxf(solid, [acis.body_from_mesh(forms.cube().translate(20.5, 30.25, 5.0))])


def main(out_dir):
    for version, name in (("R12", "r12.dxf"), ("R2004", "r2004.dxf"), ("R2018", "r2018.dxf")):
        doc = ezdxf.new(version)
        doc.appids.new("VIRA")
        add_block(doc)
        msp = doc.modelspace()
        common(msp, doc)
        if version != "R12":
            modern(msp, doc)
        if version == "R2018":
            newer(msp, doc)
        if version == "R2004":
            add_solid(msp)
        doc.saveas(f"{out_dir}/{name}")


if __name__ == "__main__":
    main(sys.argv[1])
