"""Comparisons of one entity transformed by the host with ezdxf's transformation of it: the attributes ezdxf
knows, the vertices, paths and attributes of the common types, and what the host transforms beyond ezdxf.
Used by compare_drawing.py; every difference is collected in `problems`."""
import math

import ezdxf
from ezdxf.math import OCS, Matrix44, OCSTransform, Vec2, Vec3

TOL = 1e-9
ANGLES = {"rotation", "start_angle", "end_angle", "text_rotation", "angle", "oblique", "pattern_angle",
          "horizontal_direction"}
DIRECTIONS = {"extrusion", "text_direction", "unit_vector", "normal_vector", "horizontal_direction"}
# Values ezdxf leaves alone but a CAD host scales with the drawing; checked separately below.
SCALED = {"LEADER": {"text_height", "text_width", "leader_offset_annotation_placement",
                     "leader_offset_block_ref"},
          "DIMENSION": {"actual_measurement", "leader_length"},
          "MTEXT": {"rect_width", "rect_height", "defined_height", "rotation", "text_direction"},
          "HATCH": {"pattern_angle", "pattern_scale"},
          "INSERT": {"row_spacing", "column_spacing"}}

problems = []


def close(a, b, tol=TOL):
    return abs(a - b) <= tol * max(1.0, abs(a), abs(b))


def close_angle(a, b):
    d = (a - b) % 360.0
    return min(d, 360.0 - d) <= TOL * max(1.0, abs(a), abs(b))


def check(where, name, want, got, angle=False, direction=False):
    if isinstance(want, (Vec3, Vec2, tuple, list)) and not isinstance(want, str):
        want, got = Vec3(want), Vec3(got)
        if direction:
            want, got = want.normalize(), got.normalize()
        for axis in "xyz":
            if not close(getattr(want, axis), getattr(got, axis)):
                problems.append(f"{where} {name}: want {want} got {got}")
                return
    elif isinstance(want, float) or isinstance(got, float):
        ok = close_angle(want, got) if angle else close(want, got)
        if not ok:
            problems.append(f"{where} {name}: want {want!r} got {got!r}")
    elif isinstance(want, int):
        if want != got:
            problems.append(f"{where} {name}: want {want} got {got}")


def check_attribs(where, want, got, skip=()):
    for name, value in want.dxf.all_existing_dxf_attribs().items():
        if name in skip or isinstance(value, str):
            continue
        other = got.dxf.get(name)
        if other is None:
            other = got.dxf.get_default(name)
        if other is None:
            if name == "align_point":  # ezdxf adds it; a left-aligned text does without
                continue
            problems.append(f"{where} {name}: missing, want {value}")
            continue
        check(where, name, value, other, angle=name in ANGLES and not isinstance(value, Vec3),
              direction=name in DIRECTIONS)


def check_points(where, name, want, got):
    want, got = list(want), list(got)
    if len(want) != len(got):
        problems.append(f"{where} {name}: {len(want)} points wanted, {len(got)} found")
        return
    for i, (a, b) in enumerate(zip(want, got)):
        a, b = tuple(a), tuple(b)
        if len(a) <= 3:
            check(where, f"{name}[{i}]", a, b)
            continue
        for k, (u, v) in enumerate(zip(a, b)):  # x, y, start width, end width, bulge
            check(where, f"{name}[{i}][{k}]", float(u), float(v))


def check_edges(where, want, got):
    for i, (pa, pb) in enumerate(zip(want.paths, got.paths)):
        w = f"{where} path {i}"
        if hasattr(pa, "vertices"):
            check_points(w, "vertices", pa.vertices, pb.vertices)
            continue
        for k, (ea, eb) in enumerate(zip(pa.edges, pb.edges)):
            for attr in ("start", "end", "center", "radius", "major_axis", "ratio", "start_angle", "end_angle",
                         "ccw", "start_tangent", "end_tangent"):
                if hasattr(ea, attr) and getattr(ea, attr) is not None:
                    check(f"{w} edge {k}", attr, getattr(ea, attr), getattr(eb, attr),
                          angle=attr.endswith("_angle"))
            for attr in ("control_points", "fit_points"):
                if hasattr(ea, attr):
                    check_points(f"{w} edge {k}", attr, getattr(ea, attr), getattr(eb, attr))


def check_host_extras(where, src, got, m, scale):
    """What the host transforms beyond ezdxf: pattern, seeds, annotation sizes, measurements."""
    kind = src.dxftype()
    if kind == "HATCH":
        ocs = OCSTransform(src.dxf.extrusion, m)
        elevation = src.dxf.elevation.z
        check_points(where, "seeds", [ocs.transform_2d_vertex(s, elevation) for s in src.seeds], got.seeds)
        if src.pattern and src.dxf.solid_fill == 0:
            check(where, "pattern_angle", ocs.transform_deg_angle(src.dxf.pattern_angle), got.dxf.pattern_angle,
                  angle=True)
            check(where, "pattern_scale", src.dxf.pattern_scale * scale, got.dxf.pattern_scale)
            for i, (a, b) in enumerate(zip(src.pattern.lines, got.pattern.lines)):
                check(where, f"pattern line {i} angle", ocs.transform_deg_angle(a.angle), b.angle, angle=True)
                check(where, f"pattern line {i} base", ocs.transform_2d_vertex(a.base_point, elevation),
                      b.base_point)
                check(where, f"pattern line {i} offset", ocs.transform_direction(Vec3(a.offset)).vec2, b.offset)
                check_points(where, f"pattern line {i} dashes", [(d * scale, 0) for d in a.dash_length_items],
                             [(d, 0) for d in b.dash_length_items])
        if src.gradient:
            check(where, "gradient angle", math.degrees(ocs.transform_angle(src.gradient.rotation * math.pi / 180)),
                  got.gradient.rotation, angle=True)
    elif kind == "LEADER":
        for name in ("text_height", "text_width"):
            if src.dxf.hasattr(name):
                check(where, name, src.dxf.get(name) * scale, got.dxf.get(name))
        check(where, "annotation offset", m.transform_direction(src.dxf.leader_offset_annotation_placement),
              got.dxf.leader_offset_annotation_placement)
    elif kind == "DIMENSION" and src.dxf.hasattr("actual_measurement") and src.dimtype & 0x0F not in (2, 5):
        # An angle stays what it was; a length grows with the drawing.
        check(where, "actual_measurement", src.dxf.actual_measurement * scale, got.dxf.actual_measurement)
    elif kind == "MTEXT":
        # Without direction and rotation a text runs along the world x axis laid into its plane; ezdxf takes
        # world x as it stands, even where it leaves a tilted plane.
        if src.dxf.hasattr("text_direction") or src.dxf.hasattr("rotation"):
            direction = src.get_text_direction()
        else:
            normal = Vec3(src.dxf.extrusion).normalize()
            direction = Vec3(1, 0, 0) - normal * normal.x
            if direction.magnitude < 1 / 64:
                direction = OCS(normal).to_wcs(Vec3(1, 0, 0))
        check(where, "text_direction", m.transform_direction(direction), got.get_text_direction(),
              direction=True)


def compare(want, got, src, where, m, scale):
    kind = want.dxftype()
    skip = SCALED.get(kind, set())
    check_attribs(where, want, got, skip)
    if kind == "LWPOLYLINE":
        check_points(where, "points", want.get_points("xyseb"), got.get_points("xyseb"))
    elif kind == "POLYLINE":
        for i, (a, b) in enumerate(zip(want.vertices, got.vertices)):
            loc_a, loc_b = Vec3(a.dxf.location), Vec3(b.dxf.location)
            if want.is_2d_polyline:  # a 2D vertex's z is the polyline's elevation
                loc_a, loc_b = loc_a.replace(z=0), loc_b.replace(z=0)
            check(f"{where} vertex {i}", "location", loc_a, loc_b)
            check_attribs(f"{where} vertex {i}", a, b, skip={"location"})
    elif kind == "SPLINE":
        check_points(where, "control_points", want.control_points, got.control_points)
        check_points(where, "fit_points", want.fit_points, got.fit_points)
    elif kind == "LEADER":
        check_points(where, "vertices", want.vertices, got.vertices)
    elif kind == "INSERT":
        for i, (a, b) in enumerate(zip(want.attribs, got.attribs)):
            check_attribs(f"{where} attrib {i}", a, b)
    elif kind == "HATCH":
        check_edges(where, want.paths, got.paths)
    check_host_extras(where, src, got, m, scale)
    if want.has_xdata("VIRA"):
        for i, (a, b) in enumerate(zip(want.get_xdata("VIRA"), got.get_xdata("VIRA"))):
            check(where, f"xdata {a.code}", a.value, b.value)
