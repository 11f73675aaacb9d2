"""Checks with Debian's ezdxf a drawing the desktop host saved: no audit error, every entity of the
original still there, and the block references that were added.

Usage: check_saved.py SAVED ORIGINAL [NAME X Y SCALE ...]
Prints "ok" and exits 0, or prints what differs and exits 1.
"""
import math
import sys

import ezdxf


def main(argv):
    saved_path, original_path, added = argv[1], argv[2], argv[3:]
    expected = [(added[i], float(added[i + 1]), float(added[i + 2]), float(added[i + 3]))
                for i in range(0, len(added), 4)]
    saved = ezdxf.readfile(saved_path)
    original = ezdxf.readfile(original_path)
    problems = []
    auditor = saved.audit()
    if auditor.has_errors:
        problems.append("audit errors: %s" % [str(e) for e in auditor.errors])
    saved_handles = {e.dxf.handle for e in saved.modelspace()}
    original_handles = [e.dxf.handle for e in original.modelspace()]
    missing = [h for h in original_handles if h not in saved_handles]
    if missing:
        problems.append("entities missing: %s" % missing)
    new = [e for e in saved.modelspace() if e.dxf.handle not in set(original_handles)]
    found = [(e.dxf.name, e.dxf.insert.x, e.dxf.insert.y, e.dxf.xscale, e.dxf.yscale)
             for e in new if e.dxftype() == "INSERT"]
    if len(found) != len(expected):
        problems.append("added references %s, expected %s" % (found, expected))
    for got, want in zip(found, expected):
        name, x, y, sx, sy = got
        if not (name == want[0] and math.isclose(x, want[1], abs_tol=1e-9)
                and math.isclose(y, want[2], abs_tol=1e-9) and math.isclose(sx, want[3])
                and math.isclose(sy, want[3])):
            problems.append("reference %s, expected %s" % (got, want))
    print("\n".join(problems) if problems else "ok")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
