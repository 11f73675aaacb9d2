#!/usr/bin/env python3
"""Writes examples/floorplan.dxf: a small office floor plan (AutoCAD 2000 DXF, metres) whose furniture,
doors and windows are block references, for the README's first command. Run it again only to change
the sample; its output is committed."""

import os


class Writer:
    """Tags as an ASCII DXF writes them: the group code right-aligned in three columns, then the value."""

    def __init__(self):
        self.lines = []
        self.next_handle = 0x20

    def tag(self, code, value):
        self.lines.append("%3d" % code)
        if isinstance(value, float):
            text = ("%.6f" % value).rstrip("0")
            value = text + "0" if text.endswith(".") else text
        self.lines.append(str(value))

    def tags(self, *pairs):
        for code, value in pairs:
            self.tag(code, value)

    def handle(self):
        h = "%X" % self.next_handle
        self.next_handle += 1
        return h

    def text(self):
        return "\n".join(self.lines) + "\n"


# Block definitions: name -> list of ("LINE", x1, y1, x2, y2) / ("CIRCLE", x, y, r) / ("ARC", x, y, r, a0, a1).
def rectangle(x0, y0, x1, y1):
    return [("LINE", x0, y0, x1, y0), ("LINE", x1, y0, x1, y1),
            ("LINE", x1, y1, x0, y1), ("LINE", x0, y1, x0, y0)]


BLOCKS = {
    "DOOR": [("LINE", 0.0, 0.0, 0.0, 0.9), ("ARC", 0.0, 0.0, 0.9, 0.0, 90.0)],
    "WINDOW": rectangle(0.0, -0.1, 1.2, 0.1) + [("LINE", 0.0, 0.0, 1.2, 0.0)],
    "DESK": rectangle(0.0, 0.0, 1.6, 0.8),
    "CHAIR": [("CIRCLE", 0.0, 0.0, 0.25), ("LINE", -0.25, 0.3, 0.25, 0.3)],
    "CABINET": rectangle(0.0, 0.0, 1.0, 0.45) + [("LINE", 0.0, 0.0, 1.0, 0.45)],
    "PLANT": [("CIRCLE", 0.0, 0.0, 0.3), ("CIRCLE", 0.1, 0.05, 0.1), ("CIRCLE", -0.08, -0.06, 0.1)],
    "MEETING_TABLE": rectangle(0.0, 0.0, 3.0, 1.2),
    "NORTH_ARROW": [("CIRCLE", 0.0, 0.0, 0.5), ("LINE", 0.0, -0.5, 0.0, 0.7),
                    ("LINE", -0.2, 0.3, 0.0, 0.7), ("LINE", 0.2, 0.3, 0.0, 0.7)],
}

WALLS = rectangle(0.0, 0.0, 20.0, 12.0) + [("LINE", 12.0, 0.0, 12.0, 12.0), ("LINE", 12.0, 6.0, 20.0, 6.0)]

LABELS = [(4.5, 10.8, "OPEN OFFICE"), (14.5, 10.8, "MEETING"), (14.5, 4.8, "MANAGER")]


def references():
    """(block, layer, x, y, rotation in degrees) of every reference in the plan."""
    refs = [("DOOR", "DOORS", 5.0, 0.0, 0.0), ("DOOR", "DOORS", 12.0, 7.5, 90.0),
            ("DOOR", "DOORS", 12.0, 1.5, 90.0), ("DOOR", "DOORS", 0.0, 9.0, 270.0)]
    for x in (1.5, 8.0, 10.0):
        refs.append(("WINDOW", "WINDOWS", x, 0.0, 0.0))
    for x in (1.5, 4.5, 8.5):
        refs.append(("WINDOW", "WINDOWS", x, 12.0, 0.0))
    for y in (2.0, 8.0):
        refs.append(("WINDOW", "WINDOWS", 20.0, y, 90.0))
        refs.append(("WINDOW", "WINDOWS", 0.0, y - 1.5, 90.0))
    for row_y in (3.0, 6.5):
        for x in (1.5, 4.5, 7.5):
            refs.append(("DESK", "FURNITURE", x, row_y, 0.0))
            refs.append(("CHAIR", "FURNITURE", x + 0.8, row_y - 0.5, 180.0))
    refs.append(("DESK", "FURNITURE", 16.0, 2.5, 0.0))
    refs.append(("CHAIR", "FURNITURE", 16.8, 3.8, 0.0))
    refs.append(("MEETING_TABLE", "FURNITURE", 14.5, 8.4, 0.0))
    for x in (15.0, 16.0, 17.0):
        refs.append(("CHAIR", "FURNITURE", x, 8.0, 180.0))
        refs.append(("CHAIR", "FURNITURE", x, 10.0, 0.0))
    for x in (1.0, 2.2, 3.4, 4.6):
        refs.append(("CABINET", "FURNITURE", x, 11.3, 0.0))
    for y in (0.3, 1.4):
        refs.append(("CABINET", "FURNITURE", 19.75, y, 90.0))
    for x, y in ((11.4, 11.4), (11.4, 0.6), (0.6, 5.2), (19.4, 11.4)):
        refs.append(("PLANT", "FURNITURE", x, y, 0.0))
    refs.append(("NORTH_ARROW", "ANNOTATION", 22.0, 11.0, 0.0))
    return refs


def write_entity(w, owner, layer, shape):
    kind = shape[0]
    w.tags((0, kind), (5, w.handle()), (330, owner), (100, "AcDbEntity"), (8, layer))
    if kind == "LINE":
        _, x1, y1, x2, y2 = shape
        w.tags((100, "AcDbLine"), (10, x1), (20, y1), (30, 0.0), (11, x2), (21, y2), (31, 0.0))
    elif kind == "CIRCLE":
        _, x, y, r = shape
        w.tags((100, "AcDbCircle"), (10, x), (20, y), (30, 0.0), (40, r))
    else:
        _, x, y, r, a0, a1 = shape
        w.tags((100, "AcDbCircle"), (10, x), (20, y), (30, 0.0), (40, r),
               (100, "AcDbArc"), (50, a0), (51, a1))


def table(w, name, entries, subclass_tags=()):
    handle = w.handle()
    w.tags((0, "TABLE"), (2, name), (5, handle), (330, "0"), (100, "AcDbSymbolTable"),
           (70, len(entries)), *subclass_tags)
    for entry in entries:
        entry(handle)
    w.tag(0, "ENDTAB")


def main():
    w = Writer()
    layers = [("0", 7), ("WALLS", 8), ("DOORS", 3), ("WINDOWS", 5), ("FURNITURE", 2),
              ("TEXT", 7), ("ANNOTATION", 1)]
    record = {name: w.handle() for name in ["*Model_Space", "*Paper_Space", *BLOCKS]}
    root, groups, layouts, model_layout, paper_layout = (w.handle() for _ in range(5))
    body = Writer()
    body.next_handle = w.next_handle

    # Tables, blocks, entities and objects are written first so that $HANDSEED is known.
    body.tags((0, "SECTION"), (2, "CLASSES"), (0, "ENDSEC"), (0, "SECTION"), (2, "TABLES"))

    def vport(owner):
        body.tags((0, "VPORT"), (5, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                  (100, "AcDbViewportTableRecord"), (2, "*Active"), (70, 0), (10, 0.0), (20, 0.0),
                  (11, 1.0), (21, 1.0), (12, 11.0), (22, 6.0), (40, 14.0), (41, 1.6))
    table(body, "VPORT", [vport])

    def ltype(name, description):
        def write(owner):
            body.tags((0, "LTYPE"), (5, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                      (100, "AcDbLinetypeTableRecord"), (2, name), (70, 0), (3, description),
                      (72, 65), (73, 0), (40, 0.0))
        return write
    table(body, "LTYPE", [ltype("ByBlock", ""), ltype("ByLayer", ""), ltype("Continuous", "Solid line")])

    def layer(name, colour):
        def write(owner):
            body.tags((0, "LAYER"), (5, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                      (100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, colour), (6, "Continuous"))
        return write
    table(body, "LAYER", [layer(n, c) for n, c in layers])

    def standard_style(owner):
        body.tags((0, "STYLE"), (5, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                  (100, "AcDbTextStyleTableRecord"), (2, "Standard"), (70, 0), (40, 0.0), (41, 1.0),
                  (50, 0.0), (71, 0), (42, 0.25), (3, "txt"), (4, ""))
    table(body, "STYLE", [standard_style])
    table(body, "VIEW", [])
    table(body, "UCS", [])

    def appid(owner):
        body.tags((0, "APPID"), (5, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                  (100, "AcDbRegAppTableRecord"), (2, "ACAD"), (70, 0))
    table(body, "APPID", [appid])

    def dimstyle(owner):
        body.tags((0, "DIMSTYLE"), (105, body.handle()), (330, owner), (100, "AcDbSymbolTableRecord"),
                  (100, "AcDbDimStyleTableRecord"), (2, "Standard"), (70, 0))
    table(body, "DIMSTYLE", [dimstyle], subclass_tags=((100, "AcDbDimStyleTable"),))

    def block_record(name):
        def write(owner):
            layout = {"*Model_Space": model_layout, "*Paper_Space": paper_layout}.get(name, "0")
            body.tags((0, "BLOCK_RECORD"), (5, record[name]), (330, owner),
                      (100, "AcDbSymbolTableRecord"), (100, "AcDbBlockTableRecord"), (2, name),
                      (340, layout))
        return write
    table(body, "BLOCK_RECORD", [block_record(name) for name in record])
    body.tags((0, "ENDSEC"), (0, "SECTION"), (2, "BLOCKS"))

    for name in record:
        paper = [(67, 1)] if name == "*Paper_Space" else []
        body.tags((0, "BLOCK"), (5, body.handle()), (330, record[name]), (100, "AcDbEntity"), *paper,
                  (8, "0"), (100, "AcDbBlockBegin"), (2, name), (70, 0), (10, 0.0), (20, 0.0),
                  (30, 0.0), (3, name), (1, ""))
        for shape in BLOCKS.get(name, []):
            write_entity(body, record[name], "0", shape)
        body.tags((0, "ENDBLK"), (5, body.handle()), (330, record[name]), (100, "AcDbEntity"), *paper,
                  (8, "0"), (100, "AcDbBlockEnd"))
    body.tags((0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES"))

    model = record["*Model_Space"]
    for shape in WALLS:
        write_entity(body, model, "WALLS", shape)
    for x, y, text in LABELS:
        body.tags((0, "TEXT"), (5, body.handle()), (330, model), (100, "AcDbEntity"), (8, "TEXT"),
                  (100, "AcDbText"), (10, x), (20, y), (30, 0.0), (40, 0.35), (1, text),
                  (7, "Standard"), (100, "AcDbText"))
    for name, layer_name, x, y, angle in references():
        body.tags((0, "INSERT"), (5, body.handle()), (330, model), (100, "AcDbEntity"),
                  (8, layer_name), (100, "AcDbBlockReference"), (2, name), (10, x), (20, y),
                  (30, 0.0), (50, angle))
    body.tags((0, "ENDSEC"), (0, "SECTION"), (2, "OBJECTS"))

    body.tags((0, "DICTIONARY"), (5, root), (330, "0"), (100, "AcDbDictionary"), (281, 1),
              (3, "ACAD_GROUP"), (350, groups), (3, "ACAD_LAYOUT"), (350, layouts))
    body.tags((0, "DICTIONARY"), (5, groups), (330, root), (100, "AcDbDictionary"), (281, 1))
    body.tags((0, "DICTIONARY"), (5, layouts), (330, root), (100, "AcDbDictionary"), (281, 1),
              (3, "Layout1"), (350, paper_layout), (3, "Model"), (350, model_layout))
    for handle, name, order, owner in ((model_layout, "Model", 0, model),
                                       (paper_layout, "Layout1", 1, record["*Paper_Space"])):
        body.tags((0, "LAYOUT"), (5, handle), (330, layouts), (100, "AcDbPlotSettings"), (1, ""),
                  (2, "none_device"), (4, ""), (6, ""), (40, 0.0), (41, 0.0), (42, 0.0), (43, 0.0),
                  (44, 0.0), (45, 0.0), (46, 0.0), (47, 0.0), (48, 0.0), (49, 0.0), (140, 0.0),
                  (141, 0.0), (142, 1.0), (143, 1.0), (70, 688), (72, 0), (73, 0), (74, 5), (7, ""),
                  (75, 16), (147, 1.0), (148, 0.0), (149, 0.0), (100, "AcDbLayout"), (1, name),
                  (70, 1), (71, order), (10, 0.0), (20, 0.0), (11, 12.0), (21, 9.0), (12, 0.0),
                  (22, 0.0), (32, 0.0), (14, 0.0), (24, 0.0), (34, 0.0), (15, 0.0), (25, 0.0),
                  (35, 0.0), (146, 0.0), (13, 0.0), (23, 0.0), (33, 0.0), (16, 1.0), (26, 0.0),
                  (36, 0.0), (17, 0.0), (27, 1.0), (37, 0.0), (76, 0), (330, owner))
    body.tags((0, "ENDSEC"), (0, "EOF"))

    w.tags((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (9, "$DWGCODEPAGE"),
           (3, "ANSI_1252"), (9, "$INSBASE"), (10, 0.0), (20, 0.0), (30, 0.0), (9, "$EXTMIN"),
           (10, -0.5), (20, -0.5), (30, 0.0), (9, "$EXTMAX"), (10, 23.0), (20, 12.5), (30, 0.0),
           (9, "$INSUNITS"), (70, 6), (9, "$MEASUREMENT"), (70, 1), (9, "$ATTREQ"), (70, 1),
           (9, "$SNAPMODE"), (70, 0), (9, "$OSMODE"), (70, 4133), (9, "$HANDSEED"),
           (5, "%X" % body.next_handle), (0, "ENDSEC"))
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "floorplan.dxf"), "w", newline="\r\n") as out:
        out.write(w.text() + body.text())


if __name__ == "__main__":
    main()
