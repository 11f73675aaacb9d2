"""Checks with Debian's ezdxf a drawing the DXF database wrote after the price table was added.

Usage: check_price_table.py ORIGINAL.dxf WRITTEN.dxf EXPECTED.tsv

EXPECTED.tsv lists, one per line and tab-separated, what ezdxf must read back:
  block   NAME                      the table block
  line    X1 Y1 X2 Y2               its lines, in order
  attdef  TAG HALIGN TEXT X Y       its attribute definitions, in order (X Y: the point the text
                                    hangs on: the insertion point when left-justified, else the
                                    alignment point)
  insert  NAME X Y SX SY ROTATION   the reference in model space (rotation in degrees)
  attrib  TAG HALIGN TEXT X Y       its attributes, in order
Texts may hold \\U+XXXX escapes where the file's code page lacks a character; they are compared
after decoding. Prints "ok" and exits 0, or prints what differs and exits 1.
"""
import math
import re
import sys

import ezdxf

TOLERANCE = 1e-9


def decoded(text):
    return re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda m: chr(int(m.group(1), 16)), text)


def close(a, b):
    return math.isclose(a, b, rel_tol=TOLERANCE, abs_tol=TOLERANCE)


def hanging_point(entity):
    if entity.dxf.get("halign", 0) == 0:
        return entity.dxf.insert
    return entity.dxf.align_point


def audit_counts(doc):
    auditor = doc.audit()
    return len(auditor.errors), len(auditor.fixes)


def read_expected(path):
    rows = []
    with open(path, encoding="utf-8") as f:
        for line in f:
            rows.append(line.rstrip("\n").split("\t"))
    return rows


def compare_text_entity(problems, what, entity, row):
    tag, halign, text, x, y = row[1], int(row[2]), row[3], float(row[4]), float(row[5])
    if entity.dxf.tag != tag:
        problems.append("%s: tag %r, expected %r" % (what, entity.dxf.tag, tag))
    if entity.dxf.get("halign", 0) != halign:
        problems.append("%s %s: halign %r, expected %r" % (what, tag, entity.dxf.get("halign", 0), halign))
    if decoded(entity.dxf.text) != text:
        problems.append("%s %s: text %r, expected %r" % (what, tag, decoded(entity.dxf.text), text))
    point = hanging_point(entity)
    if not (close(point[0], x) and close(point[1], y)):
        problems.append("%s %s: at (%r, %r), expected (%r, %r)" % (what, tag, point[0], point[1], x, y))


def check(original_path, written_path, expected_path):
    problems = []
    original = ezdxf.readfile(original_path)
    _, fixes_before = audit_counts(original)
    doc = ezdxf.readfile(written_path)
    if doc.dxfversion != original.dxfversion:
        problems.append("version %s, the original has %s" % (doc.dxfversion, original.dxfversion))

    expected = read_expected(expected_path)
    block_name = next(r[1] for r in expected if r[0] == "block")
    block = doc.blocks.get(block_name)
    if block is None:
        return ["no block %s" % block_name]
    style = doc.styles.get("QTBTABLE")
    if style is None or style.dxf.font != "simpheb.shx":
        problems.append("text style QTBTABLE with font simpheb.shx missing")

    lines = [e for e in block if e.dxftype() == "LINE"]
    attdefs = [e for e in block if e.dxftype() == "ATTDEF"]
    want_lines = [r for r in expected if r[0] == "line"]
    want_attdefs = [r for r in expected if r[0] == "attdef"]
    if len(lines) != len(want_lines):
        problems.append("%d lines in the block, expected %d" % (len(lines), len(want_lines)))
    for line, row in zip(lines, want_lines):
        got = (line.dxf.start[0], line.dxf.start[1], line.dxf.end[0], line.dxf.end[1])
        if not all(close(a, float(b)) for a, b in zip(got, row[1:])):
            problems.append("line %r, expected %r" % (got, row[1:]))
    if len(attdefs) != len(want_attdefs):
        problems.append("%d attdefs in the block, expected %d" % (len(attdefs), len(want_attdefs)))
    for attdef, row in zip(attdefs, want_attdefs):
        compare_text_entity(problems, "attdef", attdef, row)
        if attdef.dxf.get("style", "Standard").upper() != "QTBTABLE":
            problems.append("attdef %s: style %r" % (attdef.dxf.tag, attdef.dxf.get("style")))

    insert_row = next(r for r in expected if r[0] == "insert")
    inserts = [e for e in doc.modelspace() if e.dxftype() == "INSERT" and e.dxf.name == insert_row[1]]
    if len(inserts) != 1:
        return problems + ["%d references of %s in model space, expected 1" % (len(inserts), insert_row[1])]
    insert = inserts[0]
    want = [float(v) for v in insert_row[2:]]
    got = [insert.dxf.insert[0], insert.dxf.insert[1], insert.dxf.get("xscale", 1.0),
           insert.dxf.get("yscale", 1.0), insert.dxf.get("rotation", 0.0)]
    if not all(close(a, b) for a, b in zip(got, want)):
        problems.append("reference %r, expected %r" % (got, want))
    attribs = list(insert.attribs)
    want_attribs = [r for r in expected if r[0] == "attrib"]
    if len(attribs) != len(want_attribs):
        problems.append("%d attribs, expected %d" % (len(attribs), len(want_attribs)))
    for attrib, row in zip(attribs, want_attribs):
        compare_text_entity(problems, "attrib", attrib, row)

    errors, fixes = audit_counts(doc)
    if errors:
        problems.append("ezdxf audit: %d errors" % errors)
    if fixes > fixes_before:
        problems.append("ezdxf audit: %d fixes, the original needs %d" % (fixes, fixes_before))
    return problems


def main(argv):
    problems = check(argv[1], argv[2], argv[3])
    for p in problems:
        print(p)
    if problems:
        return 1
    print("ok")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
