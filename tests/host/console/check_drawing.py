"""Checks with Debian's ezdxf a drawing the console wrote: no audit error, the table blocks it
should hold, and the references to them in model space.

Usage: check_drawing.py DRAWING BLOCK... -- NAME X Y SCALE [NAME X Y SCALE ...]
Prints "ok" and exits 0, or prints what differs and exits 1.
"""
import math
import sys

import ezdxf


def main(argv):
    split = argv.index("--")
    path, blocks, inserts = argv[1], argv[2:split], argv[split + 1:]
    expected = [(inserts[i], float(inserts[i + 1]), float(inserts[i + 2]), float(inserts[i + 3]))
                for i in range(0, len(inserts), 4)]
    doc = ezdxf.readfile(path)
    problems = []
    auditor = doc.audit()
    if auditor.errors:
        problems.append("audit errors: %s" % [str(e) for e in auditor.errors])
    tables = sorted(b.name for b in doc.blocks if b.name.upper().startswith("QTB"))
    if tables != sorted(blocks):
        problems.append("table blocks %s, expected %s" % (tables, sorted(blocks)))
    found = [(e.dxf.name, e.dxf.insert.x, e.dxf.insert.y, e.dxf.xscale, e.dxf.yscale, e.dxf.rotation)
             for e in doc.modelspace().query("INSERT") if e.dxf.name.upper().startswith("QTB")]
    if len(found) != len(expected):
        problems.append("%d table references, expected %d" % (len(found), len(expected)))
    for got, want in zip(found, expected):
        name, x, y, sx, sy, rotation = got
        ok = (name == want[0] and math.isclose(x, want[1]) and math.isclose(y, want[2])
              and math.isclose(sx, want[3]) and math.isclose(sy, want[3]) and rotation == 0)
        if not ok:
            problems.append("reference %s, expected %s at scale %s" % (got, want[:3], want[3]))
    print("\n".join(problems) if problems else "ok")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
