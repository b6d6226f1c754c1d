#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes a workbook of Excel 2007 by openpyxl.

writeworkbook.py FILE EPOCH: EPOCH is 1900 or 1904, the year its dates count from. Each sheet is protected.
"""
import datetime
import sys

import openpyxl
from openpyxl.utils.datetime import CALENDAR_MAC_1904

book = openpyxl.Workbook()
if sys.argv[2] == "1904":
    book.epoch = CALENDAR_MAC_1904
sheet = book.active
sheet.title = "Answers"
sheet["A1"] = "two\nlines, \u00e9\u20ac\U0001F600 \"quoted\" <&> it's"
sheet["A2"] = " two  spaces "
sheet["A3"] = "12"
sheet["B1"] = -1234.5
sheet["B2"] = True
sheet["B3"] = "=1/0"
sheet["B4"] = "=\"a\" & \"b\""
sheet["B5"] = "=B1*2"
sheet["C1"] = datetime.date(2024, 2, 29)
sheet["C2"] = datetime.datetime(2023, 12, 31, 23, 59, 59)
sheet["C3"] = datetime.datetime(1999, 1, 2)
sheet["C3"].number_format = "d. mmmm yyyy"
sheet["C4"] = 5
sheet["C4"].number_format = "0 \"days\""
sheet["IV65536"] = 1
sheet.merge_cells("D1:E2")
sheet.protection.set_password("kvtwpa")
sheet.protection.enable()
book.create_sheet("Other")["A1"] = "other"
book.save(sys.argv[1])
