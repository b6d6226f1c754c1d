#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""maketemplate.py FILE: makes the template of survey files, home/template.xls (needs python3-xlwt).

Rows 1 to 13 are laid out here. The program writes A1, B3, B8, B9, the hidden columns H and I, and the questions from
row 14 on; those have the format of the default cell and the default row height, which are set here too. B10 repeats
the survey date of I3. The rows of names have no height of their own, so that they grow with a name that wraps.
The palette must be the standard one: the program uses its colour indexes for the frames of the boxes.
"""
import struct
import sys

import xlwt
from xlwt import BIFFRecords

PASSWORD = "kvtwpa"
BLACK, RED, DARK_BLUE, BLUE, GREY, SHADE, WHITE = 8, 10, 32, 39, 23, 22, 9
TITLE_ROWS = (11, 12)  # counted from 0: the headings, repeated on each printed page
# In characters. Together they fit the width of A4 paper without being shrunk.
WIDTHS = {"A": 14, "B": 43, "C": 7, "D": 11, "E": 10, "F": 11, "G": 1}
ROW_HEIGHT = 25.5  # points, by default: two lines

MARKS = ("A question in a red frame asks for marks. Score: how satisfied you are, from 1 (not at all) to 10 (fully). "
         "Weightage: how much the matter means to you, from 1 (little) to 10 (very much).")
WORDS = "A question in a dark blue frame asks for an answer in words, and for its Weightage."
BOX = "The answer in words goes into the blue box below its question: type over the text that stands there."
INTRODUCTION = ("Please fill in the framed white boxes below the headings, save the file and send it back by e-mail. "
                "Leave a box empty where you have no opinion. All other cells, such as the shaded ones, are locked.")
SURVEY_DATE = '"Survey Date : "dd/mm/yyyy;;'  # nothing while there is no date


class Name(BIFFRecords.BiffRecord):
    """A built-in name of the first sheet for a range of rows."""
    _REC_ID = 0x0018
    PRINT_TITLES = 0x07

    def __init__(self, code, first_row, last_row):
        builtin, sheet, area3d, last_column = 0x0020, 1, 0x3B, 255
        area = struct.pack("<BHHHHH", area3d, 0, first_row, last_row, 0, last_column)
        self._rec_data = struct.pack("<HBBHHH4BBB", builtin, 0, 1, len(area), 0, sheet, 0, 0, 0, 0, 0, code) + area


class TemplateWorkbook(xlwt.Workbook):
    def _Workbook__all_links_rec(self):  # xlwt writes no built-in names
        return (BIFFRecords.InternalReferenceSupBookRecord(1).get() +
                BIFFRecords.ExternSheetRecord([(0, 0, 0)]).get() +
                Name(Name.PRINT_TITLES, *TITLE_ROWS).get())


def style(size=10, bold=False, italic=False, colour=BLACK, fill=None, border=None, across="left", wrap=False,
          number_format=None):
    result = xlwt.XFStyle()
    result.font.name = "Arial"
    result.font.height = int(size * 20)
    result.font.bold = bold
    result.font.italic = italic
    result.font.colour_index = colour
    result.alignment.horz = {"left": xlwt.Alignment.HORZ_LEFT, "center": xlwt.Alignment.HORZ_CENTER}[across]
    result.alignment.vert = xlwt.Alignment.VERT_CENTER
    result.alignment.wrap = wrap
    if fill is not None:
        result.pattern.pattern = xlwt.Pattern.SOLID_PATTERN
        result.pattern.pattern_fore_colour = fill
    if number_format is not None:
        result.num_format_str = number_format
    if border is not None:
        for side in ("left", "right", "top", "bottom"):
            setattr(result.borders, side, xlwt.Borders.THIN)
            setattr(result.borders, side + "_colour", border)
    return result


def set_height(sheet, row, points):
    sheet.row(row - 1).height_mismatch = True
    sheet.row(row - 1).height = int(points * 20)


def draw_head(sheet):
    """Organisation, title and names are written by the program; only their format is set here."""
    sheet.write_merge(0, 0, 0, 5, "", style(14, bold=True, colour=WHITE, fill=DARK_BLUE, wrap=True))
    sheet.write(2, 1, "", style(20, bold=True, colour=DARK_BLUE))
    sheet.write_merge(3, 3, 1, 5, INTRODUCTION, style(10, wrap=True))
    for row, colour, sample, text in ((5, RED, "Question", MARKS), (6, DARK_BLUE, "Question", WORDS),
                                      (7, BLUE, "Answer in words", BOX)):
        sheet.write(row - 1, 0, sample, style(9, border=colour, across="center", fill=None if colour == BLUE else SHADE,
                                              colour=DARK_BLUE if colour == BLUE else BLACK))
        sheet.write_merge(row - 1, row - 1, 1, 5, text, style(9, wrap=True))
    for row in (8, 9):
        sheet.write(row - 1, 1, "", style(11, bold=True, wrap=True))
    sheet.write(9, 1, xlwt.Formula("I3"), style(11, bold=True, number_format=SURVEY_DATE))
    for row, points in ((1, 40), (2, 6), (3, 33), (4, 39), (5, 28.5), (6, 20), (7, 20), (11, 6), (12, 30), (13, 15)):
        set_height(sheet, row, points)


def draw_headings(sheet):
    headings = ("Parameter", "Question", "Score", "Weightage", "Last\nScore", "Last\nWeightage")
    notes = ("", "", "1 to 10", "1 to 10", "given before", "given before")
    for column, (heading, note) in enumerate(zip(headings, notes)):
        across = "left" if column < 2 else "center"
        sheet.write(11, column, heading, style(10, bold=True, colour=WHITE, fill=DARK_BLUE, across=across, wrap=True))
        sheet.write(12, column, note, style(8, italic=True, colour=GREY, across=across))


def set_up_page(sheet):
    sheet.paper_size_code = 9  # A4
    sheet.portrait = True
    sheet.fit_num_pages = 1
    sheet.fit_width_to_pages = 1
    sheet.fit_height_to_pages = 0  # as many pages as needed
    sheet.print_centered_horz = True
    sheet.left_margin = sheet.right_margin = 0.4  # inches
    sheet.top_margin = 0.6
    sheet.bottom_margin = 0.7
    sheet.header_str = b""
    sheet.footer_str = b"&C&8Page &P of &N"


def main(path):
    book = TemplateWorkbook(encoding="utf-8")
    book.default_style.alignment.vert = xlwt.Alignment.VERT_CENTER
    sheet = book.add_sheet("Sheet1")
    for letter, characters in WIDTHS.items():
        sheet.col(ord(letter) - ord("A")).width = characters * 256
    for hidden in (7, 8):  # H and I: the keys that identify the file
        sheet.col(hidden).hidden = True
    sheet.row_default_height = int(ROW_HEIGHT * 20)
    sheet.show_grid = False
    draw_head(sheet)
    draw_headings(sheet)
    set_up_page(sheet)
    sheet.protect = True
    sheet.password = PASSWORD
    book.save(path)


if __name__ == "__main__":
    main(sys.argv[1])
