#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the first sheet of a workbook, as read by xlrd, as JSON.

readworkbook.py FILE: {"A1": {...}}. A cell has its value, whether it is locked and wrapped, the colours of
its thin borders (left, right, top, bottom; None for no line), its font colour and the colour that fills it.
"""
import json
import sys

import xlrd
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
        "fill": rgb(book, xf.background.pattern_colour_index) if xf.background.fill_pattern == 1 else None,
        "font": rgb(book, book.font_list[xf.font_index].colour_index),
    }


workbook = xlrd.open_workbook(sys.argv[1], formatting_info=True)
first = workbook.sheet_by_index(0)
print(json.dumps({xlrd.cellname(r, c): describe(workbook, first.cell(r, c))
                  for r in range(first.nrows) for c in range(first.row_len(r))}))
