"""The independent reader's view of a drawing the store wrote, for the DXF store's tests.

  check_drawing.py audit FILE
      Reads FILE with ezdxf and audits it; prints the audit errors, exits 1 when there are any.
  check_drawing.py compare ORIGINAL TRANSFORMED M00 M01 ... M33
      Transforms every model-space entity of ORIGINAL with ezdxf (matrix row-major, acting on column
      vectors, translation in the last column) and compares the points of each entity with those of the same
      entity in TRANSFORMED. Prints the differences, exits 1 when there are any.
  check_drawing.py describe FILE
      Prints the header's $HANDSEED and $CLAYER, one line per layer (name|frozen|off|locked|color|linetype),
      one line per model-space entity (type|handle|layer|owner) and the paper-space entity count.
"""
import sys

import ezdxf
from ezdxf.math import Matrix44, Vec3

TOLERANCE = 1e-6
# Attributes that only give a direction: one reader may keep them scaled, another unit length.
DIRECTIONS = ("text_direction", "horizontal_direction", "unit_vector", "normal_vector")


def audit(path):
    doc = ezdxf.readfile(path)
    auditor = doc.audit()
    for error in auditor.errors:
        print("audit error:", error.message)
    return 1 if auditor.has_errors else 0


def points(entity):
    """The entity's world or object coordinate points, by name."""
    out = {}
    for name, value in entity.dxfattribs().items():
        if isinstance(value, Vec3) and name not in ("extrusion",):
            out[name] = value.normalize() if name in DIRECTIONS and value.magnitude > 0 else value
    t = entity.dxftype()
    if t == "LWPOLYLINE":
        for i, (x, y, *_rest) in enumerate(entity.get_points()):
            out[f"vertex{i}"] = Vec3(x, y)
    elif t == "POLYLINE":
        for i, v in enumerate(entity.vertices):
            out[f"vertex{i}"] = v.dxf.location
    elif t == "SPLINE":
        for i, v in enumerate(entity.control_points):
            out[f"control{i}"] = Vec3(v)
    elif t == "INSERT":
        for i, a in enumerate(entity.attribs):
            out[f"attrib{i}"] = a.dxf.insert
    elif t == "LEADER":
        for i, v in enumerate(entity.vertices):
            out[f"vertex{i}"] = Vec3(v)
    return out


def compare(original, transformed, values):
    m = [float(v) for v in values]
    # ezdxf's matrices act on row vectors: the transpose of ours.
    matrix = Matrix44([m[0], m[4], m[8], m[12], m[1], m[5], m[9], m[13],
                       m[2], m[6], m[10], m[14], m[3], m[7], m[11], m[15]])
    expected_doc = ezdxf.readfile(original)
    actual_doc = ezdxf.readfile(transformed)
    expected = list(expected_doc.modelspace())
    actual = list(actual_doc.modelspace())
    problems = 0
    if len(expected) != len(actual):
        print(f"model space holds {len(actual)} entities, expected {len(expected)}")
        return 1
    for e, a in zip(expected, actual):
        try:
            e.transform(matrix)
        except NotImplementedError:
            continue
        pe, pa = points(e), points(a)
        for name, value in pe.items():
            if name not in pa:
                continue
            if not value.isclose(pa[name], abs_tol=TOLERANCE):
                print(f"{e.dxftype()} {e.dxf.handle} {name}: expected {value}, found {pa[name]}")
                problems += 1
    return 1 if problems else 0


def describe(path):
    doc = ezdxf.readfile(path)
    print("handseed", doc.header.get("$HANDSEED", ""))
    print("clayer", doc.header.get("$CLAYER", ""))
    for layer in doc.layers:
        print("layer", "|".join(str(v) for v in (layer.dxf.name, int(layer.is_frozen()), int(layer.is_off()),
                                                 int(layer.is_locked()), layer.color, layer.dxf.linetype)))
    for e in doc.modelspace():
        print("entity", "|".join((e.dxftype(), e.dxf.get("handle", ""), e.dxf.get("layer", ""),
                                  e.dxf.get("owner", ""))))
    print("paperspace", len(doc.layout("Layout1")) if "Layout1" in doc.layouts else 0)
    return 0


def main():
    command = sys.argv[1]
    if command == "audit":
        return audit(sys.argv[2])
    if command == "compare":
        return compare(sys.argv[2], sys.argv[3], sys.argv[4:20])
    if command == "describe":
        return describe(sys.argv[2])
    print("unknown command", command)
    return 2


if __name__ == "__main__":
    sys.exit(main())
