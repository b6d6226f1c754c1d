// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/bookfile.h"
#include "platform/excel/editor.h"
#include "platform/excel/refusal.h"
#include "platform/failure/failure.h"

// Opens untrusted content as a workbook, reads and edits it, and returns the saved file; empty if it is
// refused. Anything wrong with the content must lead to a refusal.
inline QByteArray exerciseWorkbook(const QByteArray& content) {
    using namespace excel::biff;
    try {
        BookFile file(QStringLiteral("mutant.xls"), content);
        for (int i = 0; i < file.book().sheetCount(); ++i) {
            if (!file.book().isWorksheet(i))
                continue;
            Editor editor(file.book(), i);
            for (const auto& [place, cell] : file.book().sheet(i).cells.cells())
                editor.value(place).text();
            file.book().sheet(i).unprotect();
            editor.clear({{13, 0}, {65535, 6}});
            editor.clear({{3, 2}, {5, 2}});
            editor.setValue({20, 1}, QStringLiteral("text \u20AC"));
            editor.setValue({20, 2}, QDate(2024, 2, 29));
            editor.changeFormat({20, 1}, [](CellFormat& format) { format.setWrapped(true); });
            editor.setFontColour({20, 1}, 32);
            editor.protect(QStringLiteral("kvtwpa"));
        }
        return file.content();
    } catch (const Failure&) {
    } catch (const Refusal&) {
    }
    return {};
}
