"""The independent reader's view of a corpus drawing and of what the store saved from it.

  check_corpus.py ORIGINAL SAVED LAYER
      Reads SAVED with ezdxf: it must read, hold the layer LAYER, and, where ezdxf also reads ORIGINAL,
      hold as many model-space entities as ORIGINAL. Prints what is wrong and exits 1, else exits 0.
      ORIGINAL may be "-" for a drawing that only the store's recovery opens: then SAVED must still read.
  check_corpus.py opens FILE
      Exits 0 when ezdxf opens FILE, as it stands or through its own recovery, else 1.
"""
import sys

import ezdxf


def read(path):
    try:
        return ezdxf.readfile(path), None
    except Exception as error:  # ezdxf raises many kinds; any of them means "does not read"
        return None, f"{type(error).__name__}: {error}"


def opens(path):
    if read(path)[0] is not None:
        return 0
    try:
        from ezdxf import recover
        recover.readfile(path)
        return 0
    except Exception as error:
        print(f"ezdxf does not open it either: {type(error).__name__}: {error}")
        return 1


def main():
    if sys.argv[1] == "opens":
        return opens(sys.argv[2])
    original_path, saved_path, layer = sys.argv[1:4]
    original, why = (None, "recovered") if original_path == "-" else read(original_path)
    saved, saved_why = read(saved_path)
    if saved is None:
        if original is None and original_path != "-":
            print(f"ezdxf reads neither the original ({why}) nor the saved drawing ({saved_why})")
            return 0
        print(f"ezdxf cannot read the saved drawing: {saved_why}")
        return 1
    problems = 0
    if layer not in saved.layers:
        print(f"the saved drawing lacks the layer {layer}")
        problems += 1
    if original is not None:
        before, after = len(original.modelspace()), len(saved.modelspace())
        if before != after:
            print(f"model space held {before} entities, the saved drawing {after}")
            problems += 1
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
