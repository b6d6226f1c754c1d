#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Renames the first sheet of an .xlsx file in place by openpyxl, and copies it for a third argument.

renamesheets.py FILE NAME [copy]
"""
import sys

import openpyxl

book = openpyxl.load_workbook(sys.argv[1])
sheet = book.worksheets[0]
sheet.title = sys.argv[2]
if len(sys.argv) > 3:
    book.copy_worksheet(sheet)
book.save(sys.argv[1])
