// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/worksheet.h"

#include "platform/excel/editor.h"
#include "platform/excel/openworkbook.h"
#include "platform/excel/protection.h"
#include "platform/failure/failure.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel {

namespace biff {

OpenWorkbook& SheetHandle::workbook() const {
    return checkedOpen(shared);
}

void SheetHandle::edit(Access access, const std::function<void(Editor&)>& work) const {
    OpenWorkbook& open = workbook();
    Book& book = open.changeable().book();
    try {
        Editor editor(book, index);
        work(editor);
    } catch (const Refusal& refusal) {
        throw Failure(
            u"Sheet \"%1\" of the file \"%2\" %3."_s.arg(book.sheetName(index), open.name, refusal.reason()));
    }
    open.changed = open.changed || access == Access::Write;
}

} // namespace biff

namespace {

/// The place of an address of one cell such as "B3"; {-1, -1} for any other text.
biff::Place placeOf(const QString& address) {
    static const QRegularExpression form(u"^([A-Za-z]{1,2})([1-9][0-9]{0,4})$"_s);
    const QRegularExpressionMatch match = form.match(address);
    if (!match.hasMatch())
        return {-1, -1};
    int column = 0;
    for (const QChar letter : match.captured(1).toUpper())
        column = column * 26 + letter.unicode() - u'A' + 1;
    return {match.captured(2).toInt() - 1, column - 1};
}

bool isInSheet(biff::Place place) {
    return place.row >= 0 && place.row < biff::maxRows && place.column >= 0 &&
           place.column < biff::maxColumns;
}

} // namespace

QString Worksheet::Name() const {
    const OpenWorkbook& open = sheet.workbook();
    return open.values ? open.values->sheets[size_t(sheet.sheet())].name
                       : open.file->book().sheetName(sheet.sheet());
}

excel::Range Worksheet::Cells(int row, int column) const {
    const biff::Place place{row - 1, column - 1};
    if (!isInSheet(place))
        throw Failure(
            u"Row %1, column %2 lies outside sheet \"%3\" of the file \"%4\"."_s.arg(row).arg(column).arg(
                Name(), sheet.workbook().name));
    return {sheet, {place, place}};
}

excel::Range Worksheet::Range(const QString& address) const {
    return Range(address.section(u':', 0, 0), address.section(u':', address.contains(u':') ? 1 : 0));
}

excel::Range Worksheet::Range(const QString& from, const QString& to) const {
    const biff::Place a = placeOf(from);
    const biff::Place b = placeOf(to);
    if (!isInSheet(a) || !isInSheet(b))
        throw Failure(u"\"%1:%2\" are no cells of sheet \"%3\" of the file \"%4\"."_s.arg(
            from, to, Name(), sheet.workbook().name));
    return {sheet,
            {{std::min(a.row, b.row), std::min(a.column, b.column)},
             {std::max(a.row, b.row), std::max(a.column, b.column)}}};
}

bool Worksheet::IsProtected() const {
    const OpenWorkbook& open = sheet.workbook();
    return open.values ? open.values->sheets[size_t(sheet.sheet())].isProtected
                       : open.file->book().sheet(sheet.sheet()).isProtected();
}

void Worksheet::Protect(const QString& password) const {
    if (!sheet.workbook().values)
        sheet.edit(biff::Access::Write, [&](biff::Editor& editor) { editor.protect(password); });
}

void Worksheet::Unprotect(const QString& password) const {
    if (!sheet.workbook().values)
        sheet.edit(biff::Access::Write, [&](biff::Editor& editor) { editor.unprotect(password); });
}

} // namespace excel
