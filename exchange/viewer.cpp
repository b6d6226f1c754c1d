// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/viewer.h"

#include "exchange/cellmap.h"
#include "platform/desktop/opener.h"
#include "platform/excel/error.h"

using namespace Qt::StringLiterals;

namespace {

void toHandToDesktop(const QString& path) {
    constexpr int smallestSuccess = 33;
    if (desktop::openFile(path) < smallestSuccess)
        throw excel::Error(u"No program was found that opens \"%1\"."_s.arg(path));
}

} // namespace

excel::Application toGetExcel() {
    excel::Application::setFileShower(toHandToDesktop);
    return {};
}

void toViewWorkbook(const QString& path) {
    const excel::Application appExcel = toGetExcel();
    const excel::Workbook wkbExcel = appExcel.Workbooks().Open(path);
    wkbExcel.Application().setVisible(true);
    // The desktop's program runs what the workbook is to run when it opens.
    const excel::Worksheet wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
}
