"""Times ezdxf's transformation of every model-space entity, without reading and saving.

usage: ezdxf_transform_only.py IN.dxf M00 M01 ... M33
The matrix is row-major and acts on column vectors (translation in the last column). Prints the wall-clock
and the processor seconds of the best of three passes, each on a freshly read drawing."""
import sys
import time

import ezdxf
from ezdxf.math import Matrix44


def main():
    m = [float(v) for v in sys.argv[2:18]]
    matrix = Matrix44([m[r * 4 + c] for c in range(4) for r in range(4)])
    best_wall = best_cpu = float("inf")
    for _ in range(3):
        entities = list(ezdxf.readfile(sys.argv[1]).modelspace())
        wall, cpu = time.perf_counter(), time.process_time()
        for entity in entities:
            entity.transform(matrix)
        best_wall = min(best_wall, time.perf_counter() - wall)
        best_cpu = min(best_cpu, time.process_time() - cpu)
    print(f"{best_wall:.6f} {best_cpu:.6f}")


if __name__ == "__main__":
    main()
