"""Writes with Debian's ezdxf a small drawing (doors and chairs on a plan), whole or with its
structure damaged as other programs' files are seen damaged.

Usage: damaged_drawing.py OUT.dxf intact|stray-endsec|outside-sections|missing-eof
Prints the line where the damage is: the stray ENDSEC, the first record outside a section, the
line after the last.
"""
import sys

import ezdxf


def drawing_text():
    doc = ezdxf.new("R2000")
    for name in ("DOOR", "CHAIR"):
        block = doc.blocks.new(name)
        block.add_line((0, 0), (1, 0))
    space = doc.modelspace()
    space.add_line((0, 0), (10, 0))
    for x in range(3):
        space.add_blockref("DOOR", (x, 0))
    for x in range(2):
        space.add_blockref("CHAIR", (x, 5))
    stream = __import__("io").StringIO()
    doc.write(stream)
    return stream.getvalue()


ENTITIES = "  0\nSECTION\n  2\nENTITIES\n"


def damaged(text, kind):
    """The damaged text and the offset where the damage is."""
    if kind == "intact":
        return text, len(text)
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
    raise SystemExit("unknown damage " + kind)


if __name__ == "__main__":
    text, at = damaged(drawing_text(), sys.argv[2])
    with open(sys.argv[1], "w", newline="") as out:
        out.write(text)
    print(text.count("\n", 0, at) + 1)
