"""Checks with Debian's ezdxf a drawing in which the calculation command placed its price table:
no audit error, every entity of the original still there, one table reference added at the picked
corner, as wide as the rubber band was dragged, and holding the bill of materials of the original's
block references (less the ones left out of the selection) priced from the list: a row for each
line of the list, counted or not, and one at price 0 for each block the list does not price.

Usage: check_table.py SAVED ORIGINAL PRICES X Y WIDTH [LEFT_OUT ...]
Prints "ok" and exits 0, or prints what differs and exits 1.
"""
import collections
import math
import re
import sys

import ezdxf


def read_prices(path):
    prices = {}
    with open(path, encoding="utf-8") as prices_file:
        for line in prices_file:
            if not line.endswith("\n"):
                continue
            name, price, _ = line.rstrip("\n").split("|", 2)
            prices[name.lower()] = float(price)
    return prices


def expected_rows(original, prices, left_out):
    """Every row of the list, counted or not, then the blocks the list does not price at 0."""
    counts = collections.Counter(
        e.dxf.name.lower() for e in original.modelspace()
        if e.dxftype() == "INSERT" and e.dxf.name not in left_out)
    names = set(prices) | set(counts)
    return {name: (counts[name], "%.2f" % prices.get(name, 0.0)) for name in names}


def table_rows(reference):
    values = {a.dxf.tag: a.dxf.text for a in reference.attribs}
    rows = {}
    for tag, name in values.items():
        number = re.fullmatch(r"BLOCKNAME(\d+)", tag)
        if number and name != "Summary:":
            rows[name] = (int(values["QUANTITY" + number.group(1)]),
                          values["PRICE" + number.group(1)])
    return rows, values


def block_width(saved, name):
    xs = [x for e in saved.blocks[name] if e.dxftype() == "LINE"
          for x in (e.dxf.start.x, e.dxf.end.x)]
    return max(xs) - min(xs)


def check_reference(saved, reference, x, y, width, problems):
    name = reference.dxf.name
    if not re.fullmatch(r"QTB\d{4}", name):
        problems.append("added reference to %s, expected a table block" % name)
        return
    insert = reference.dxf.insert
    if not (math.isclose(insert.x, x, abs_tol=1e-9) and math.isclose(insert.y, y, abs_tol=1e-9)):
        problems.append("table at %s, expected (%s, %s)" % (insert, x, y))
    if reference.dxf.xscale != reference.dxf.yscale or reference.dxf.rotation != 0:
        problems.append("table scaled %s by %s, turned %s" % (
            reference.dxf.xscale, reference.dxf.yscale, reference.dxf.rotation))
    shown = block_width(saved, name) * reference.dxf.xscale
    if not math.isclose(shown, width, rel_tol=1e-9):
        problems.append("table %s wide, expected %s" % (shown, width))


def main(argv):
    saved_path, original_path, prices_path = argv[1:4]
    x, y, width = (float(v) for v in argv[4:7])
    left_out = set(argv[7:])
    saved = ezdxf.readfile(saved_path)
    original = ezdxf.readfile(original_path)
    problems = []
    auditor = saved.audit()
    if auditor.has_errors:
        problems.append("audit errors: %s" % [str(e) for e in auditor.errors])
    saved_handles = {e.dxf.handle for e in saved.modelspace()}
    original_handles = {e.dxf.handle for e in original.modelspace()}
    missing = sorted(original_handles - saved_handles)
    if missing:
        problems.append("entities missing: %s" % missing)
    added = [e for e in saved.modelspace() if e.dxf.handle not in original_handles]
    if len(added) != 1 or added[0].dxftype() != "INSERT":
        problems.append("added %s, expected one table reference" % [e.dxftype() for e in added])
    else:
        check_reference(saved, added[0], x, y, width, problems)
        rows, values = table_rows(added[0])
        wanted = expected_rows(original, read_prices(prices_path), left_out)
        if rows != wanted:
            problems.append("table rows %s, expected %s" % (sorted(rows.items()),
                                                            sorted(wanted.items())))
        total = sum(count * float(price) for count, price in wanted.values())
        if "%.2f" % total not in values.values():
            problems.append("no grand total %.2f in %s" % (total, values))
    print("\n".join(problems) if problems else "ok")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
