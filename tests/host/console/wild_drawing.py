"""Writes with Debian's ezdxf the drawings of other programs that the console must read right: a
small plan whole or with its structure damaged, arrays, references in layouts.

Usage: wild_drawing.py OUT.dxf KIND
KIND: intact, stray-endsec, outside-sections, missing-eof (the plan, whole or damaged; prints the
line of the damage: the stray ENDSEC, the first record outside a section, the line after the
last); arrays (a 5 x 5 array of CHAIR, one CHAIR, two TABLE_SET each holding a 2 x 3 array of
CHAIR); layouts (two DOOR in model space; four DIMENSIONS and a DOOR in Layout1, a DOOR in
"Sheet 2").
"""
import io
import sys

import ezdxf


def new_drawing(*blocks):
    doc = ezdxf.new("R2000")
    for name in blocks:
        doc.blocks.new(name).add_line((0, 0), (1, 0))
    return doc


def plan():
    doc = new_drawing("DOOR", "CHAIR")
    space = doc.modelspace()
    space.add_line((0, 0), (10, 0))
    for x in range(3):
        space.add_blockref("DOOR", (x, 0))
    for x in range(2):
        space.add_blockref("CHAIR", (x, 5))
    return doc


def arrays():
    doc = new_drawing("CHAIR")
    table_set = doc.blocks.new("TABLE_SET")
    table_set.add_line((0, 0), (3, 0))
    table_set.add_blockref("CHAIR", (0, 1)).grid(size=(2, 3), spacing=(1, 1))
    space = doc.modelspace()
    space.add_blockref("CHAIR", (0, 0)).grid(size=(5, 5), spacing=(1, 1))
    space.add_blockref("CHAIR", (10, 0))
    space.add_blockref("TABLE_SET", (20, 0))
    space.add_blockref("TABLE_SET", (30, 0))
    return doc


def layouts():
    doc = new_drawing("DOOR", "DIMENSIONS")
    doc.modelspace().add_blockref("DOOR", (0, 0))
    doc.modelspace().add_blockref("DOOR", (5, 0))
    sheet = doc.layout("Layout1")
    for x in range(4):
        sheet.add_blockref("DIMENSIONS", (x, 0))
    sheet.add_blockref("DOOR", (0, 5))
    doc.layouts.new("Sheet 2").add_blockref("DOOR", (0, 0))
    return doc


def text_of(doc):
    stream = io.StringIO()
    doc.write(stream)
    return stream.getvalue()


ENTITIES = "  0\nSECTION\n  2\nENTITIES\n"


def damaged(text, kind):
    """The damaged text and the offset where the damage is."""
    head = text.index(ENTITIES) + len(ENTITIES)
    if kind == "stray-endsec":
        # After the first entity of ENTITIES.
        second = text.index("  0\n", head + 1)
        return text[:second] + "  0\nENDSEC\n" + text[second:], second
    if kind == "outside-sections":
        return text[:head - len(ENTITIES)] + text[head:], head - len(ENTITIES)
    if kind == "missing-eof":
        end = text.rindex("  0\nEOF\n")
        return text[:end], end
    return text, len(text)


def main(path, kind):
    if kind == "arrays":
        text, at = text_of(arrays()), 0
    elif kind == "layouts":
        text, at = text_of(layouts()), 0
    elif kind in ("intact", "stray-endsec", "outside-sections", "missing-eof"):
        text, at = damaged(text_of(plan()), kind)
    else:
        raise SystemExit("unknown kind " + kind)
    with open(path, "w", newline="") as out:
        out.write(text)
    print(text.count("\n", 0, at) + 1)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
