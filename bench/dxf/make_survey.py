"""Writes the survey drawing the DXF store's benchmarks work on.

usage: make_survey.py OUT.dxf COUNT
COUNT model-space entities in equal parts lines, light-weight polylines, texts and points, with survey-size
coordinates around a Gauss-Krueger site (easting 2,561,234.567, northing 5,634,012.345), reproducibly.

ezdxf writes the drawing's frame (header, tables, blocks, objects); the entities are written here as ezdxf
writes them, tag for tag, because ezdxf itself needs minutes and gigabytes for millions of entities. The
result equals what ezdxf's add_line/add_lwpolyline/add_text/add_point would have saved.
"""
import io
import random
import sys

import ezdxf

E0, N0 = 2561234.567, 5634012.345
LAYERS = (("Grenze", 1), ("Gebaeude", 3), ("Punkte", 5), ("Beschriftung", 7))


def frame(count):
    """The drawing without its entities as ezdxf saves it, the entities' first handle and the model space's
    handle. The entities' handles are kept free: what ezdxf adds while saving comes after them."""
    doc = ezdxf.new("R2000")
    for name, color in LAYERS:
        doc.layers.add(name, color=color)
    owner = doc.modelspace().block_record.dxf.handle
    first_handle = int(doc.entitydb.handles.next(), 16)
    doc.entitydb.handles.reset(f"{first_handle + count:X}")
    text = io.StringIO()
    doc.write(text)
    return text.getvalue(), first_handle, owner


def entities(count, first_handle, owner):
    """Yields the entities' tags in chunks of text; the random numbers are drawn as make_survey always did."""
    rnd = random.Random(20261121)
    coord = lambda: (round(E0 + rnd.uniform(0, 5000), 3), round(N0 + rnd.uniform(0, 5000), 3),
                     round(rnd.uniform(300, 400), 3))
    head = lambda kind, handle, layer: (f"  0\n{kind}\n  5\n{handle:X}\n330\n{owner}\n100\nAcDbEntity\n"
                                        f"  8\n{layer}\n")
    chunk = []
    for i in range(count):
        kind = i % 4
        handle = first_handle + i
        x, y, z = coord()
        if kind == 0:
            x1, y1 = x + round(rnd.uniform(-50, 50), 3), y + round(rnd.uniform(-50, 50), 3)
            chunk.append(f"{head('LINE', handle, 'Grenze')}100\nAcDbLine\n 10\n{x!r}\n 20\n{y!r}\n 30\n{z!r}\n"
                         f" 11\n{x1!r}\n 21\n{y1!r}\n 31\n{z!r}\n")
        elif kind == 1:
            pts = [(x + round(rnd.uniform(-30, 30), 3), y + round(rnd.uniform(-30, 30), 3))
                   for _ in range(rnd.randint(4, 6))]
            vertices = "".join(f" 10\n{px!r}\n 20\n{py!r}\n" for px, py in pts)
            chunk.append(f"{head('LWPOLYLINE', handle, 'Gebaeude')}100\nAcDbPolyline\n 90\n{len(pts)}\n 70\n1\n"
                         f"{vertices}")
        elif kind == 2:
            rotation = round(rnd.uniform(0, 360), 2)
            turned = f" 50\n{rotation!r}\n" if rotation else ""  # ezdxf leaves out a rotation of 0
            chunk.append(f"{head('TEXT', handle, 'Beschriftung')}100\nAcDbText\n 10\n{x!r}\n 20\n{y!r}\n"
                         f" 30\n{z!r}\n 40\n0.5\n  1\nP{i} {z:.2f}\n{turned}100\nAcDbText\n")
        else:
            chunk.append(f"{head('POINT', handle, 'Punkte')}100\nAcDbPoint\n 10\n{x!r}\n 20\n{y!r}\n 30\n{z!r}\n")
        if len(chunk) == 10000:
            yield "".join(chunk)
            chunk = []
    yield "".join(chunk)


def main():
    out, count = sys.argv[1], int(sys.argv[2])
    text, first_handle, owner = frame(count)
    marker = "  2\nENTITIES\n"
    at = text.index(marker) + len(marker)
    with open(out, "w", encoding="cp1252", newline="\n") as f:
        f.write(text[:at])
        for chunk in entities(count, first_handle, owner):
            f.write(chunk)
        f.write(text[at:])


if __name__ == "__main__":
    main()
