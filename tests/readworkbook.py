#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the first sheet of a workbook, as read by xlrd, as JSON.

readworkbook.py FILE: {"cells": {"A1": {...}}, "protection": {...}, "heights": {...}}. A cell has its value, whether it
is locked and wrapped, the colours of its thin borders (left, right, top, bottom; None for no line), its font colour and
its number format. The protection is read from the sheet's records: {record number: value}.
"""
import json
import struct
import sys

import xlrd
from xlrd.compdoc import CompDoc
from xlrd.xldate import xldate_as_datetime


def rgb(book, index):
    colour = book.colour_map.get(index)
    return "%02X%02X%02X" % colour if colour else "automatic"


def describe(book, cell):
    xf = book.xf_list[cell.xf_index]
    value = cell.value
    if cell.ctype == xlrd.XL_CELL_DATE:
        value = xldate_as_datetime(value, book.datemode).isoformat(" ")
    border = xf.border
    edges = [(getattr(border, side + "_line_style"), getattr(border, side + "_colour_index"))
             for side in ("left", "right", "top", "bottom")]
    return {
        "type": cell.ctype,
        "value": value,
        "locked": bool(xf.protection.cell_locked),
        "wrapped": bool(xf.alignment.text_wrapped),
        "borders": [rgb(book, colour) if style == 1 else None for style, colour in edges],
        "font": rgb(book, book.font_list[xf.font_index].colour_index),
        "format": book.format_map[xf.format_key].format_str,
    }


def protection(content):
    stream, base, length = CompDoc(content).locate_named_stream("Workbook")
    stream = stream[base:base + length]
    found, position, depth, bofs = {}, 0, 0, 0
    while position < len(stream) and (depth > 0 or bofs < 2):
        number, size = struct.unpack_from("<HH", stream, position)
        depth += (number == 0x0809) - (number == 0x000A)
        bofs += number == 0x0809
        if bofs == 2 and depth == 1 and number in (0x12, 0xDD, 0x63, 0x13):
            found["%02X" % number] = "%04X" % struct.unpack_from("<H", stream, position + 4)
        position += 4 + size
    return found


def main(path):
    with open(path, "rb") as file:
        content = file.read()
    book = xlrd.open_workbook(file_contents=content, formatting_info=True)
    sheet = book.sheet_by_index(0)
    cells = {xlrd.cellname(r, c): describe(book, sheet.cell(r, c))
             for r in range(sheet.nrows) for c in range(sheet.row_len(r))}
    print(json.dumps({"cells": cells, "protection": protection(content),
                      "heights": {row: info.height for row, info in sheet.rowinfo_map.items()}}))


if __name__ == "__main__":
    main(sys.argv[1])
