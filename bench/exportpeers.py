#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures how long other programs take for the same survey file, without their start.

exportpeers.py TEMPLATE SURVEYFILE: a running LibreOffice opens the template, enters the additional cells of the survey
file, protects the sheet and saves. xlwt writes the cells of the survey file to a new workbook, with lock and wrap, and
protects it. Prints the best times in milliseconds. Needs python3-xlrd, python3-xlwt, python3-uno and LibreOffice Calc.
"""
import os
import sys
import tempfile
import time

import xlrd
import xlwt

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "tests"))
import office  # noqa: E402

ROUNDS = 15
PASSWORD = "kvtwpa"


def best(work):
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        work()
        times.append(time.perf_counter() - start)
    return min(times) * 1000


def cells_of(path):
    """The cells with a value: row, column, value, whether locked, whether wrapped."""
    book = xlrd.open_workbook(path, formatting_info=True)
    sheet = book.sheet_by_name("Sheet1")
    found = []
    for row in range(sheet.nrows):
        for column in range(sheet.row_len(row)):
            cell = sheet.cell(row, column)
            if cell.ctype not in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                xf = book.xf_list[cell.xf_index]
                found.append((row, column, cell.value, bool(xf.protection.cell_locked), bool(xf.alignment.text_wrapped)))
    return found


def write_by_xlwt(cells, target):
    book = xlwt.Workbook()
    sheet = book.add_sheet("Sheet1")
    styles = {}
    for row, column, value, locked, wrapped in cells:
        if (locked, wrapped) not in styles:
            styles[locked, wrapped] = xlwt.easyxf(
                "protection: cell_locked %d; align: wrap %d; borders: left thin, right thin, top thin, bottom thin"
                % (locked, wrapped))
        sheet.write(row, column, value, styles[locked, wrapped])
    sheet.protect = True
    book.save(target)


def write_by_libreoffice(desktop, template, cells, target):
    document = desktop.loadComponentFromURL("file://" + template, "_blank", 0, office.properties(Hidden=True))
    sheet = document.Sheets.getByName("Sheet1")
    sheet.unprotect(PASSWORD)
    for row, column, value, _, _ in cells:
        cell = sheet.getCellByPosition(column, row)
        if isinstance(value, float):
            cell.setValue(value)
        else:
            cell.setString(value)
    sheet.protect(PASSWORD)
    document.storeToURL("file://" + target, office.properties(FilterName="MS Excel 97", Overwrite=True))
    document.close(True)


def main(template, survey_file):
    cells = cells_of(survey_file)
    more = [cell for cell in cells if cell not in cells_of(template)]
    with tempfile.TemporaryDirectory() as folder:
        target = os.path.join(folder, "written.xls")
        print("xlwt, %4d cells                     %8.2f" % (len(cells), best(lambda: write_by_xlwt(cells, target))))
        with office.libreoffice() as desktop:
            needed = best(lambda: write_by_libreoffice(desktop, os.path.abspath(template), more, target))
        print("LibreOffice, %4d cells              %8.2f" % (len(more), needed))


if __name__ == "__main__":
    main(*sys.argv[1:])
