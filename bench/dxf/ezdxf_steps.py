"""The three steps of the DXF store's benchmark done with ezdxf: read, transform model space, save.

usage: ezdxf_steps.py IN.dxf OUT.dxf M00 M01 ... M33
The matrix is row-major and acts on column vectors (translation in the last column). Prints the seconds the
three steps took, without the interpreter's start.
"""
import sys
import time

import ezdxf
from ezdxf.math import Matrix44


def main():
    src, dst = sys.argv[1], sys.argv[2]
    m = [float(v) for v in sys.argv[3:19]]
    matrix = Matrix44([m[0], m[4], m[8], m[12], m[1], m[5], m[9], m[13],
                       m[2], m[6], m[10], m[14], m[3], m[7], m[11], m[15]])
    start = time.perf_counter()
    doc = ezdxf.readfile(src)
    for entity in doc.modelspace():
        entity.transform(matrix)
    doc.saveas(dst)
    print(f"{time.perf_counter() - start:.6f}")


if __name__ == "__main__":
    main()
