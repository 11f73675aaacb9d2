"""Prints what a spreadsheet holds, as openpyxl (Debian's python3-openpyxl) reads it: the sheet's
title, the frozen cell, each column's width, then one line a row with each cell as
`type:value:format` (`s` text, `n` number, `f` formula), and for a formula its cached value.

Usage: read_xlsx.py FILE.xlsx
"""
import sys

import openpyxl


def cell_text(cell, cached):
    if cell.value is None:
        return ""
    if cell.data_type == "f":
        return "f:%s=%s:%s" % (cell.value, cached.value, cell.number_format)
    if cell.data_type == "n":
        return "n:%r:%s" % (cell.value, cell.number_format)
    return "s:%s" % cell.value


def main(path):
    book = openpyxl.load_workbook(path)
    values = openpyxl.load_workbook(path, data_only=True)
    sheet = book.active
    cached = values.active
    print("sheet %s, frozen at %s" % (sheet.title, sheet.freeze_panes))
    print("widths " + " ".join("%s=%g" % (key, sheet.column_dimensions[key].width)
                               for key in sorted(sheet.column_dimensions)))
    for row, cached_row in zip(sheet.iter_rows(), cached.iter_rows()):
        print("|".join(cell_text(c, k) for c, k in zip(row, cached_row)))
    heading = sheet["A1"]
    print("heading bold %s" % heading.font.b)


if __name__ == "__main__":
    main(sys.argv[1])
