#!/usr/bin/python3
"""Compares a drawing before and after a whole-drawing transformation.

usage: check_drawing.py BEFORE.dxf AFTER.dxf m00 m01 ... m33

Every model-space entity of BEFORE is found in AFTER by its handle. Entities on frozen, switched-off or
locked layers must be unchanged; every other entity must have its defining points mapped by the 4x4
matrix (row-major). Prints "mapped N kept M" and exits 0, or prints each mismatch and exits 1.
"""
import sys

import ezdxf
from ezdxf.math import Vec3

TOLERANCE = 1e-6


def defining_points(entity):
    kind = entity.dxftype()
    if kind == "LINE":
        return [Vec3(entity.dxf.start), Vec3(entity.dxf.end)]
    if kind == "POINT":
        return [Vec3(entity.dxf.location)]
    if kind in ("CIRCLE", "ARC"):
        return [entity.ocs().to_wcs(entity.dxf.center)]
    if kind == "TEXT":
        return [entity.ocs().to_wcs(entity.dxf.insert)]
    if kind == "LWPOLYLINE":
        ocs = entity.ocs()
        z = entity.dxf.elevation
        return [ocs.to_wcs(Vec3(x, y, z)) for x, y in entity.get_points("xy")]
    raise SystemExit(f"no check for {kind} {entity.dxf.handle}")


def apply(m, p):
    return Vec3(m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3],
                m[4] * p.x + m[5] * p.y + m[6] * p.z + m[7],
                m[8] * p.x + m[9] * p.y + m[10] * p.z + m[11])


def main():
    before, after = ezdxf.readfile(sys.argv[1]), ezdxf.readfile(sys.argv[2])
    m = [float(v) for v in sys.argv[3:19]]
    hidden = {layer.dxf.name.upper() for layer in before.layers
              if layer.is_frozen() or layer.is_off() or layer.is_locked()}
    moved = {e.dxf.handle: e for e in after.modelspace()}
    failures, mapped, kept = [], 0, 0
    for entity in before.modelspace():
        other = moved.get(entity.dxf.handle)
        if other is None:
            failures.append(f"{entity.dxf.handle} missing")
            continue
        keep = entity.dxf.layer.upper() in hidden
        expected = defining_points(entity) if keep else [apply(m, p) for p in defining_points(entity)]
        actual = defining_points(other)
        if len(expected) != len(actual) or any(not a.isclose(b, abs_tol=TOLERANCE) for a, b in zip(expected, actual)):
            failures.append(f"{entity.dxftype()} {entity.dxf.handle} on {entity.dxf.layer}: "
                            f"expected {expected}, got {actual}")
        kept += keep
        mapped += not keep
    for line in failures:
        print(line)
    print(f"mapped {mapped} kept {kept}")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
