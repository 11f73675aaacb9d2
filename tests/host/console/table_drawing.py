"""Edits and looks over, with Debian's ezdxf, drawings that hold price tables.

Usage:
  table_drawing.py edit IN OUT OPERATION...   read IN, edit it, save it as OUT
      add NAME X Y        a reference of the block NAME (any case) at X,Y on layer 0
      delete NAME         the first reference of NAME in model space goes
      move NAME X Y       the first reference of NAME moves to X,Y
      forget              every table's source goes, as in a drawing from before they had one
  table_drawing.py audit FILE [TABLE...]
      no audit error; each TABLE keeps its source (extended data "TARNWICK"), and each of its
      references has one attribute a definition of the block, holding its text
  table_drawing.py same-but-tables BEFORE AFTER
      every object of BEFORE (a drawing with handles and owners) is in AFTER with the same tags,
      but for the price tables' block records, what their blocks hold, their references'
      attributes and $HANDSEED
Prints "ok" and exits 0, or prints what differs and exits 1.
"""
import sys

import ezdxf

APP = "TARNWICK"


def is_table(name):
    return len(name) == 7 and name[:3].upper() == "QTB"


def references(doc, name):
    return [e for e in doc.modelspace().query("INSERT") if e.dxf.name.lower() == name.lower()]


def block_name(doc, name):
    return next(b.name for b in doc.blocks if b.name.lower() == name.lower())


def source_holder(block):
    return block.block_record if block.doc.dxfversion > "AC1009" else block.block


def edit(argv):
    doc = ezdxf.readfile(argv[0])
    ops = argv[2:]
    i = 0
    while i < len(ops):
        op = ops[i]
        if op == "add":
            doc.modelspace().add_blockref(block_name(doc, ops[i + 1]),
                                          (float(ops[i + 2]), float(ops[i + 3])))
            i += 4
        elif op == "delete":
            doc.modelspace().delete_entity(references(doc, ops[i + 1])[0])
            i += 2
        elif op == "move":
            references(doc, ops[i + 1])[0].dxf.insert = (float(ops[i + 2]), float(ops[i + 3]))
            i += 4
        elif op == "forget":
            for block in doc.blocks:
                holder = source_holder(block)
                if holder.has_xdata(APP):
                    holder.discard_xdata(APP)
            i += 1
        else:
            raise SystemExit("unknown operation " + op)
    doc.saveas(argv[1])
    return []


def audit(argv):
    doc = ezdxf.readfile(argv[0])
    problems = ["audit: %s" % e.message for e in doc.audit().errors]
    for name in argv[1:]:
        block = doc.blocks.get(name)
        if not source_holder(block).has_xdata(APP):
            problems.append("%s has no source" % name)
        definitions = [e for e in block if e.dxftype() == "ATTDEF"]
        for reference in references(doc, name):
            got = [(a.dxf.tag, a.dxf.text) for a in reference.attribs]
            want = [(d.dxf.tag, d.dxf.text) for d in definitions]
            if got != want:
                problems.append("%s at %s: attributes %s, definitions %s"
                                % (name, reference.dxf.insert, got[:6], want[:6]))
    return problems


def records(path):
    """Each object's tags by handle, the reference each attribute follows, the header's
    variables by name."""
    with open(path, encoding="utf-8", errors="surrogateescape") as f:
        lines = f.read().split("\n")
    split = []
    for i in range(0, len(lines) - 1, 2):
        code, value = lines[i].strip(), lines[i + 1]
        if code == "0":
            split.append([])
        if split:
            split[-1].append((code, value))
    by_handle, follows, header, reference = {}, {}, {}, None
    for record in split:
        if record[0][1] == "SECTION" and record[1][1] == "HEADER":
            header = {record[k][1]: record[k + 1] for k in range(len(record) - 1)
                      if record[k][0] == "9"}
            continue
        handles = [v for c, v in record if c in ("5", "105")]
        if not handles:
            continue
        by_handle[handles[0]] = record
        if record[0][1] in ("ATTRIB", "SEQEND"):
            follows[handles[0]] = reference
        else:
            reference = handles[0]
    return by_handle, follows, header


def same_but_tables(argv):
    before, follows, header_before = records(argv[0])
    after, _, header_after = records(argv[1])
    owner = {h: dict(r).get("330") for h, r in before.items()}
    tables = {h for h, r in before.items() if r[0][1] in ("BLOCK_RECORD", "BLOCK")
              and is_table(dict(r).get("2", ""))}
    table_refs = {h for h, r in before.items() if r[0][1] == "INSERT"
                  and is_table(dict(r).get("2", ""))}
    problems = []
    for handle, record in before.items():
        if handle in tables or owner.get(handle) in tables or follows.get(handle) in table_refs:
            continue
        if after.get(handle) != record:
            problems.append("%s %s changed" % (record[0][1], handle))
    for name in header_before:
        if name != "$HANDSEED" and header_before[name] != header_after.get(name):
            problems.append("%s changed" % name)
    return problems


def main(argv):
    commands = {"edit": edit, "audit": audit, "same-but-tables": same_but_tables}
    problems = commands[argv[1]](argv[2:])
    print("\n".join(problems) if problems else "ok")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
