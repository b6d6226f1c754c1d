// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/viewer.h"

#include "exchange/files/cellmap.h"
#include "platform/excel/application.h"

void viewWorkbook(const QString& path) {
    const excel::Workbook wkbExcel = excel::Application().Workbooks().Open(path);
    wkbExcel.Application().setVisible(true);
    // Macros that run on opening are left to the desktop's program.
    const excel::Worksheet wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
}
