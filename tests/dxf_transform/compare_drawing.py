"""Checks a drawing transformed by the host against an independent transformation of the source drawing.

Usage: compare_drawing.py SOURCE.dxf RESULT.dxf STATUS.txt M00 M01 ... M33
The matrix is row-major for column vectors (translation in the last column); ezdxf wants the transpose.
STATUS.txt holds one "TYPE STATUS" line per model-space entity. Every entity the host transformed (Ok) must
agree with ezdxf's transformation of it, or, where ezdxf leaves a value alone or gets it wrong, with the value
derived here; entities of a dimension's or table's block must agree with the block's entities transformed alike. An Ok
entity that no check covers is a difference too. Exit status 0: agreement, 1: differences, 2: ezdxf cannot
read the source (the caller skips the file)."""
import math
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import compare_with_ezdxf as base  # noqa: E402
import ezdxf  # noqa: E402
from ezdxf.math import OCS, Matrix44, OCSTransform, Vec3  # noqa: E402

check, check_attribs, problems = base.check, base.check_attribs, base.problems

# Values ezdxf does not transform or transforms wrongly; the derivations below check them instead.
DERIVED = {"ARC_DIMENSION": {"start_angle", "end_angle", "actual_measurement"},
           "LARGE_RADIAL_DIMENSION": {"jog_point", "actual_measurement"},
           "MLINE": {"scale_factor", "extrusion"},
           "LIGHT": {"attenuation_start_limits", "attenuation_end_limits"},
           "HELIX": {"axis_vector", "turn_height", "handedness"},
           "TOLERANCE": {"x_axis_vector"}}
# Types ezdxf cannot transform; their values are derived here in full.
OWN = {"PDFUNDERLAY", "DWFUNDERLAY", "DGNUNDERLAY", "OLE2FRAME", "SHAPE", "3DSOLID", "REGION", "BODY",
       "PLANESURFACE", "ACAD_TABLE", "3DLINE"}


def file_tags(path):
    """The file's tags as (code, text), binary DXF included."""
    data = open(path, "rb").read()
    if data.startswith(b"AutoCAD Binary DXF"):
        from ezdxf.lldxf.tagger import binary_tags_loader
        return [(t.code, str(t.value)) for t in binary_tags_loader(data)]
    lines = data.decode("latin-1").replace("\r\n", "\n").split("\n")
    tags = []
    for i in range(0, len(lines) - 1, 2):
        if not lines[i].strip().lstrip("-").isdigit():
            break  # what follows the drawing (an end-of-file mark of old systems)
        tags.append((int(lines[i]), lines[i + 1]))
    return tags


def raw_entities(path):
    """handle -> the entity's tags as the file has them, [(code, text)]; ezdxf does not keep every type."""
    out, current = {}, None
    for code, value in file_tags(path):
        if code == 0:
            current = []
        elif current is not None:
            current.append((code, value))
            if code == 5 and len(current) == 1:
                out[value.strip()] = current
    return out


def after(tags, marker):
    for i, (code, value) in enumerate(tags):
        if code == 100 and value.strip() == marker:
            return tags[i + 1:]
    return []


def first_point(tags, code):
    for i, (c, v) in enumerate(tags):
        if c == code:
            z = float(tags[i + 2][1]) if i + 2 < len(tags) and tags[i + 2][0] == code + 20 else 0.0
            return Vec3(float(v), float(tags[i + 1][1]), z)
    return None


def sizes(tags):
    """Row heights, column widths, margins and text heights of a table, cell values left out."""
    out, in_value = [], False
    for code, value in tags:
        if code in (301, 304):
            in_value = code == 301
        elif not in_value and code in (40, 41, 140, 141, 142):
            out.append((code, float(value)))
    return out


def sat_records(lines):
    """The records of SAT text as token lists (a record ends with "#"), sequence numbers left out."""
    version = int(lines[0].split()[0])
    body = []
    for line in lines[1 if version < 200 else 3:]:
        if line.startswith(("End-of-", "Begin-of-")):
            break
        body.append(line)
    records = [r.split() for r in " ".join(body).split("#") if r.strip()]
    return version, [r[1:] if r[0].startswith("-") and r[0][1:].isdigit() else r for r in records]


def placements(entity):
    """Each body's placement in the ACIS data, (3x3 matrix for row vectors, translation, scale), and every
    other record as it stands. Read here, not by ezdxf 0.18, whose reader expects the header lines of ACIS
    2.0 and later in every version."""
    version, records = sat_records(entity.sat)
    skip = 3 if version >= 700 else 2  # name, attribute pointer, history number
    out = []
    for record in records:
        if record[0] != "body":
            continue
        target = int(record[-1][1:])
        if target < 0:
            out.append(((1, 0, 0, 0, 1, 0, 0, 0, 1), (0, 0, 0), 1.0))
        else:
            numbers = [float(v) for v in records[target][skip:skip + 13]]
            out.append((numbers[:9], numbers[9:12], numbers[12]))
    shapes = [r for r in records if r[0] not in ("body", "transform")]
    return out, shapes


def placed(placement, q):
    a, t, s = placement
    return Vec3(*(s * sum(q[i] * a[i * 3 + j] for i in range(3)) + t[j] for j in range(3)))


def raw_tags(entity):
    """The entity's own tags as ezdxf read them: [(code, value)]."""
    from ezdxf.lldxf.tagwriter import TagCollector
    collector = TagCollector(dxfversion=entity.doc.dxfversion)
    entity.export_dxf(collector)
    return [(t.code, t.value) for t in collector.tags]


def embedded_object(entity):
    tags = raw_tags(entity)
    for i, (code, value) in enumerate(tags):
        if code == 101:
            out = []
            for c, v in tags[i + 1:]:
                if c == 101 or c >= 1000:
                    break
                out.append((c, v))
            return out
    return None


def derive(where, kind, src, got, m, scale):
    """The host's values that ezdxf does not give."""
    if kind in ("PDFUNDERLAY", "DWFUNDERLAY", "DGNUNDERLAY"):
        ocs = OCSTransform(src.dxf.extrusion, m)
        check(where, "insert", m.transform(src.dxf.insert), got.dxf.insert)
        for name in ("scale_x", "scale_y", "scale_z"):
            check(where, name, src.dxf.get(name, 1.0) * scale, got.dxf.get(name, 1.0))
        check(where, "rotation", ocs.transform_deg_angle(src.dxf.get("rotation", 0.0)), got.dxf.get("rotation", 0.0),
              angle=True)
        check(where, "extrusion", ocs.new_extrusion, got.dxf.extrusion, direction=True)
        check_points(where, "boundary", src.boundary_path, got.boundary_path)
    elif kind == "SHAPE":
        # ezdxf 0.18 cannot transform a shape (it asks for an attribute the entity does not have).
        ocs = OCSTransform(src.dxf.extrusion, m)
        rotation = src.dxf.get("rotation", 0.0)
        check(where, "insert", m.transform(src.dxf.insert), got.dxf.insert)
        check(where, "rotation", ocs.transform_deg_angle(rotation), got.dxf.get("rotation", 0.0), angle=True)
        check(where, "size", src.dxf.size * scale, got.dxf.size)
        check(where, "extrusion", ocs.new_extrusion, got.dxf.extrusion, direction=True)
    elif kind in ("3DSOLID", "REGION", "BODY", "PLANESURFACE"):
        # Every body keeps its shape records and lands where the matrix takes it.
        (want, want_shapes), (have, have_shapes) = placements(src), placements(got)
        if sat_records(src.sat)[0] >= 200:
            from ezdxf.acis.sat import parse_sat
            parse_sat(got.sat)  # ezdxf's own reader takes the result
        if len(want) != len(have) or want_shapes != have_shapes:
            problems.append(f"{where} ACIS records changed beyond the bodies' placements")
            return
        for i, (a, b) in enumerate(zip(want, have)):
            for q in ((0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1), (123.5, -45.25, 6.0)):
                check(where, f"body {i} at {q}", m.transform(placed(a, q)), placed(b, q))
    elif kind == "3DLINE":
        # The line in space of R10 and older, which ezdxf keeps as tags: start (10) and end (11).
        for code in (10, 11):
            want_p, got_p = (next(Vec3(t.value) for t in e.xtags.noclass if t.code == code) for e in (src, got))
            check(where, f"point {code}", m.transform(want_p), got_p)
    elif kind == "OLE2FRAME":
        # Upper left (10) and lower right corner (11).
        a, b = RAW[0][src.dxf.handle], RAW[1][got.dxf.handle]
        for code in (10, 11):
            check(where, f"corner {code}", m.transform(first_point(a, code)), first_point(b, code))
    elif kind == "ACAD_TABLE":
        # ezdxf 0.18 does not know tables: placement, direction and sizes from the file's own tags.
        a, b = RAW[0][src.dxf.handle], RAW[1][got.dxf.handle]
        ra, rb = after(a, "AcDbBlockReference"), after(b, "AcDbBlockReference")
        check(where, "insert", m.transform(first_point(ra, 10)), first_point(rb, 10))
        ta, tb = after(a, "AcDbTable"), after(b, "AcDbTable")
        check(where, "direction", m.transform_direction(first_point(ta, 11) or Vec3(1, 0, 0)), first_point(tb, 11),
              direction=True)
        want_sizes, got_sizes = sizes(ta), sizes(tb)
        if [c for c, _ in want_sizes] != [c for c, _ in got_sizes]:
            problems.append(f"{where} table sizes reshaped")
        for (code, va), (_, vb) in zip(want_sizes, got_sizes):
            check(where, f"size {code}", va * scale, vb)
    elif kind == "ARC_DIMENSION":
        # The arc's end angles turn with the plane (ezdxf keeps them); the arc length grows.
        ocs = OCSTransform(src.dxf.extrusion, m)
        for name in ("start_angle", "end_angle"):
            want = math.degrees(ocs.transform_angle(src.dxf.get(name)))
            check(where, name, want, math.degrees(got.dxf.get(name)), angle=True)
            # Where the writer kept each angle at its arc end, the host keeps it there.
            if at_its_point(src, name) is not None and base.close_angle(at_its_point(src, name),
                                                                         math.degrees(src.dxf.get(name))):
                check(where, name + " at its point", at_its_point(got, name), math.degrees(got.dxf.get(name)),
                      angle=True)
        if src.dxf.hasattr("actual_measurement"):
            check(where, "actual_measurement", src.dxf.actual_measurement * scale, got.dxf.actual_measurement)
    elif kind == "LARGE_RADIAL_DIMENSION":
        # ezdxf misspells the jog point's name and leaves it where it was.
        check(where, "jog_point", m.transform(src.dxf.jog_point), got.dxf.jog_point)
        if src.dxf.hasattr("actual_measurement"):
            check(where, "actual_measurement", src.dxf.actual_measurement * scale, got.dxf.actual_measurement)
    elif kind == "MLINE":
        # ezdxf keeps the scale once a rotation makes the turned (s, s, s) vector uneven.
        check(where, "scale_factor", src.dxf.scale_factor * scale, got.dxf.scale_factor)
        for i, (a, b) in enumerate(zip(src.vertices, got.vertices)):
            for k, (pa, pb) in enumerate(zip(a.line_params, b.line_params)):
                check_points(f"{where} vertex {i} element {k}", "params", [(v * scale, 0) for v in pa],
                             [(v, 0) for v in pb])
    elif kind == "LIGHT":
        beam = Vec3(src.dxf.target) - Vec3(src.dxf.location)
        stretch = m.transform_direction(beam.normalize() if beam.magnitude else Vec3(1, 0, 0)).magnitude
        for name in ("attenuation_start_limits", "attenuation_end_limits"):
            if src.dxf.hasattr(name):
                check(where, name, src.dxf.get(name) * stretch, got.dxf.get(name))
    elif kind == "HELIX":
        # ezdxf lets the axis grow, keeps the height of a turn and the hand of the turns even where a mirror
        # turns its (mirrored) control points the other way round.
        check(where, "handedness", src.dxf.handedness ^ int(mirrors(m)), got.dxf.handedness)
        check(where, "axis_vector", m.transform_direction(src.dxf.axis_vector).normalize(), got.dxf.axis_vector)
        check(where, "turn_height", src.dxf.turn_height * scale, got.dxf.turn_height)
    elif kind == "TOLERANCE":
        check(where, "x_axis_vector", m.transform_direction(src.dxf.x_axis_vector), got.dxf.x_axis_vector,
              direction=True)
    elif kind == "MTEXT":
        want, have = embedded_object(src), embedded_object(got)
        if want is None:
            return
        want, have = grouped(want), grouped(have or [])
        if len(want) != len(have) or [c for c, _ in want] != [c for c, _ in have]:
            problems.append(f"{where} embedded object lost or reshaped")
            return
        for (c, v), (_, h) in zip(want, have):
            if c == 10:  # the direction the text runs in
                check(where, "embedded direction", m.transform_direction(v).normalize(), h)
                check(where, "embedded direction as the text's", got.get_text_direction(), h, direction=True)
            elif c == 11:  # the insertion point
                check(where, "embedded insert", m.transform(v), h)
                check(where, "embedded insert as the text's", got.dxf.insert, h)
            elif 40 <= c <= 46:  # widths, heights, column sizes
                check(where, f"embedded {c}", float(v) * scale, float(h))


def grouped(tags):
    """Tags with the x, y and z of a point joined into one Vec3."""
    out, i = [], 0
    while i < len(tags):
        code, value = tags[i]
        if code in (10, 11) and i + 2 < len(tags):
            out.append((code, Vec3(value, tags[i + 1][1], tags[i + 2][1])))
            i += 3
        else:
            out.append((code, value))
            i += 1
    return out


def at_its_point(dim, name):
    """The angle of an arc dimension's end point about its centre, in degrees in the dimension's plane."""
    if not (dim.dxf.hasattr("defpoint4") and dim.dxf.hasattr(name)):
        return None
    end = dim.dxf.defpoint2 if name == "start_angle" else dim.dxf.defpoint3
    along = OCS(dim.dxf.extrusion).from_wcs(end - dim.dxf.defpoint4)
    return math.degrees(math.atan2(along.y, along.x))


def mirrors(m):
    return Vec3(m.get_row(0)[:3]).cross(Vec3(m.get_row(1)[:3])).dot(Vec3(m.get_row(2)[:3])) < 0


def middle(ellipse):
    start, end = ellipse.dxf.start_param, ellipse.dxf.end_param
    if end <= start:
        end += math.tau
    return list(ellipse.vertices([(start + end) / 2]))[0]


def check_points(where, name, want, got):
    base.check_points(where, name, want, got)


def compare_multileader(where, src, want, got, scale):
    a, b = want.context, got.context
    for name in ("scale", "base_point", "char_height", "arrow_head_size", "landing_gap_size", "plane_origin",
                 "plane_x_axis", "plane_y_axis"):
        check(where, name, getattr(a, name), getattr(b, name))
    if a.mtext is not None:
        for name in ("insert", "text_direction", "width", "defined_height"):
            check(where, "mtext " + name, getattr(a.mtext, name), getattr(b.mtext, name))
        check(where, "mtext extrusion", a.mtext.extrusion, b.mtext.extrusion, direction=True)
    if a.block is not None:
        for name in ("insert", "scale"):
            check(where, "block " + name, getattr(a.block, name), getattr(b.block, name))
        check(where, "block rotation", math.degrees(a.block.rotation), math.degrees(b.block.rotation), angle=True)
    for i, (la, lb) in enumerate(zip(a.leaders, b.leaders)):
        check(where, f"leader {i} last point", la.last_leader_point, lb.last_leader_point)
        check(where, f"leader {i} dogleg", la.dogleg_vector, lb.dogleg_vector, direction=True)
        check(where, f"leader {i} dogleg length", la.dogleg_length, lb.dogleg_length)
        for k, (pa, pb) in enumerate(zip(la.lines, lb.lines)):
            check_points(f"{where} leader {i} line {k}", "vertices", pa.vertices, pb.vertices)
    # ezdxf overwrites the multileader's own arrow size with the context's; the two differ where the
    # multileader overrides its style, and each grows with the drawing. Sizes the entity leaves to its
    # style stay left to it.
    for name in ("dogleg_length", "arrow_head_size"):
        if src.dxf.hasattr(name):
            check(where, name, src.dxf.get(name) * scale, got.dxf.get(name))
        elif got.dxf.hasattr(name):
            problems.append(f"{where} {name}: the style's value was written into the entity")


RAW = [{}, {}]  # source and result as the files have them


def compare_block(where, fresh_doc, got_doc, name, m, scale, src_doc):
    """The entities of a dimension's block, each transformed on its own (ezdxf moves a dimension's block only
    when the dimension has no clone insertion point; the block is drawn in world coordinates either way)."""
    src_block, fresh_block, got_block = (d.blocks.get(name) for d in (src_doc, fresh_doc, got_doc))
    if src_block is None:
        return  # a dimension without its drawing: nothing to move along
    if got_block is None:
        problems.append(f"{where} block {name} lost")
        return
    src_all, want_all, got_all = list(src_block), list(fresh_block), list(got_block)
    if len(src_all) != len(got_all):
        problems.append(f"{where} block {name}: {len(src_all)} entities became {len(got_all)}")
        return
    for k, (src, want, got) in enumerate(zip(src_all, want_all, got_all)):
        compare_entity(f"{where} block {name} #{k}", src, want, got, m, scale)


def compare_entity(where, src, want, got, m, scale):
    kind = src.dxftype()
    if kind in OWN:
        derive(where, kind, src, got, m, scale)
        return True
    if kind in ("LINE", "POINT") and src.dxf.hasattr("thickness") and src.dxf.thickness == 0:
        # ezdxf divides by the length of a zero thickness; none stays none.
        want.dxf.discard("thickness")
        check(where, "thickness", 0.0, got.dxf.get("thickness", 0.0))
    zero_doglegs = []
    if kind == "MULTILEADER":
        # ezdxf divides by the length of a zero dogleg; the host keeps a zero dogleg vector zero and turns
        # the direction of a dogleg of zero length.
        for leader in want.context.leaders:
            if Vec3(leader.dogleg_vector).magnitude == 0:
                zero_doglegs.append((leader, "dogleg_vector", Vec3()))
                leader.dogleg_vector = Vec3(1, 0, 0)
            if leader.dogleg_length == 0:
                zero_doglegs.append((leader, "dogleg_length", 0.0))
                leader.dogleg_length = 1.0
    try:
        want.transform(m)
    except (NotImplementedError, ezdxf.math.NonUniformScalingError, ezdxf.math.InsertTransformationError) as e:
        problems.append(f"{where}: transformed by the host but not checked ({type(e).__name__})")
        return False
    for leader, name, value in zero_doglegs:
        setattr(leader, name, value)
    if kind == "ELLIPSE" and src.dxf.ratio > 1.0:
        # A ratio above 1 (the minor axis longer than the major one) is kept as the file has it; ezdxf swaps
        # the axes. The same curve either way: compare its ends and the middle of its span.
        for name, want_p, got_p in (("start", want.start_point, got.start_point), ("end", want.end_point, got.end_point),
                                    ("middle", middle(want), middle(got))):
            check(where, name, want_p, got_p)
        return True
    if kind == "MULTILEADER":
        compare_multileader(where, src, want, got, scale)
        return True
    skip = base.SCALED.get(kind, set()) | DERIVED.get(kind, set())
    base.check_attribs(where, want, got, skip)
    if kind in ("LWPOLYLINE", "POLYLINE", "SPLINE", "LEADER", "INSERT", "HATCH"):
        base.compare(want, got, src, where, m, scale)
    elif kind == "MESH":
        check_points(where, "vertices", want.vertices, got.vertices)
    elif kind == "MLINE":
        # ezdxf recomputes the miters from the style's left side and keeps the normal, which under a mirror
        # puts the elements on the wrong side of the line; the host mirrors miters and plane, so every
        # element point (vertex + parameter * miter) lands on the mirror image of its old place.
        for i, (s0, a, b) in enumerate(zip(src.vertices, want.vertices, got.vertices)):
            check(f"{where} vertex {i}", "location", a.location, b.location)
            check(f"{where} vertex {i}", "line direction", a.line_direction, b.line_direction, direction=True)
            check(f"{where} vertex {i}", "miter direction", m.transform_direction(s0.miter_direction), b.miter_direction,
                  direction=True)
        ocs = OCSTransform(src.dxf.extrusion, m)
        check(where, "extrusion", ocs.new_extrusion, got.dxf.extrusion, direction=True)
    elif kind == "HELIX":
        check_points(where, "control_points", want.control_points, got.control_points)
    else:
        base.check_host_extras(where, src, got, m, scale)
    derive(where, kind, src, got, m, scale)
    return True


def main():
    source, result, status_file, *values = sys.argv[1:]
    values = [float(v) for v in values]
    m = Matrix44([values[r * 4 + c] for c in range(4) for r in range(4)])
    scale = m.transform_direction(Vec3(1, 0, 0)).magnitude
    statuses = [line.split() for line in open(status_file).read().splitlines() if line.strip()]
    try:
        src_doc, want_doc, fresh_doc = ezdxf.readfile(source), ezdxf.readfile(source), ezdxf.readfile(source)
    except Exception as e:  # ezdxf's own limits: the caller reports and skips the file
        print(f"ezdxf cannot read {source}: {type(e).__name__}: {e}")
        return 2
    got_doc = ezdxf.readfile(result)
    RAW[0], RAW[1] = raw_entities(source), raw_entities(result)
    src_all, want_all, got_all = (list(d.modelspace()) for d in (src_doc, want_doc, got_doc))
    if not (len(src_all) == len(got_all) == len(statuses)):
        print(f"entity counts differ: source {len(src_all)}, result {len(got_all)}, statuses {len(statuses)}")
        return 1
    compared, left = 0, {}
    for i, (src, want, got, (kind, status)) in enumerate(zip(src_all, want_all, got_all, statuses)):
        where = f"#{i} {src.dxftype()} {src.dxf.get('handle', '')}"
        if kind != src.dxftype():
            problems.append(f"{where}: the host saw {kind}")
            continue
        if status != "Ok":
            left[(kind, status)] = left.get((kind, status), 0) + 1
            continue
        if compare_entity(where, src, want, got, m, scale):
            compared += 1
        name = src.dxf.get("geometry", "") if kind.endswith("DIMENSION") else ""
        if name.startswith("*"):
            compare_block(where, fresh_doc, got_doc, name, m, scale, src_doc)
        elif kind == "ACAD_TABLE":
            # The table's block lies in the table's own coordinates: it grows, the table places it.
            name = dict(after(RAW[0][src.dxf.handle], "AcDbBlockReference")).get(2, "").strip()
            if name.startswith("*"):
                compare_block(where, fresh_doc, got_doc, name, Matrix44.scale(scale), scale, src_doc)
    for p in problems:
        print(p)
    for (kind, status), n in sorted(left.items()):
        print(f"left behind: {n} {kind} ({status})")
    print(f"{compared} entities compared, {len(problems)} differences")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
