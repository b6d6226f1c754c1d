// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tables/xlsxfile.h"

#include <QDate>
#include <QFile>

#include <xlsxwriter.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tables {
namespace {

constexpr qsizetype longestText = 32767; // UTF-16 units in a cell
const QDate dayZero(1899, 12, 30);
const QDate firstDay(1900, 3, 1); // before it the format counts a 29 February 1900

lxw_workbook* newBook(const QString& file) {
    lxw_workbook_options options{};
    options.constant_memory = 1;
    options.use_zip64 = 0;
    return workbook_new_opt(QFile::encodeName(file).constData(), &options);
}

/// Without the characters that XML cannot hold; the library writes the other control characters in a form of
/// their own.
QByteArray xmlText(QString text) {
    text.removeIf([](QChar c) { return c.isNull() || c >= u'\ufffe'; });
    return text.toUtf8();
}

qsizetype longestLine(const QString& text) {
    if (!text.contains(u'\n'))
        return text.size();
    qsizetype longest = 0;
    for (const QStringView line : QStringView(text).split(u'\n'))
        longest = std::max(longest, line.size());
    return longest;
}

} // namespace

XlsxFile::XlsxFile(const QString& path, const QStringList& headings)
    : TableFile(path), book(newBook(folder.filePath(u"table.xlsx"_s))),
      sheet(workbook_add_worksheet(book, "Table")), bold(workbook_add_format(book)),
      wrapped(workbook_add_format(book)), number(workbook_add_format(book)), date(workbook_add_format(book)),
      widths(static_cast<std::size_t>(headings.size())) {
    for (lxw_format* format : {wrapped, number, date})
        format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
    format_set_text_wrap(wrapped);
    format_set_num_format(date, "dd/mm/yyyy");
    format_set_bold(bold);
    worksheet_freeze_panes(sheet, 1, 0);
    for (int column = 0; column < headings.size(); ++column)
        addText(column, headings[column], bold);
    ++row;
}

XlsxFile::~XlsxFile() {
    closeBook(); // ends its temporary files as well
}

void XlsxFile::addRow(const QVariantList& values) {
    if (row >= LXW_ROW_MAX)
        fail(u"a workbook holds %1 rows; save the table as .csv"_s.arg(LXW_ROW_MAX));
    widths.resize(std::max(widths.size(), static_cast<std::size_t>(values.size())));
    for (int column = 0; column < values.size(); ++column)
        addCell(column, values[column]);
    ++row;
}

void XlsxFile::addCell(int column, const QVariant& value) {
    const auto place = static_cast<lxw_col_t>(column);
    qsizetype& width = widths[static_cast<std::size_t>(column)];
    switch (kindOf(value)) {
    case Kind::Nothing:
        return;
    case Kind::YesNo:
        worksheet_write_boolean(sheet, row, place, value.toBool() ? 1 : 0, number);
        return;
    case Kind::Number:
        worksheet_write_number(sheet, row, place, value.toDouble(), number);
        break;
    case Kind::Date:
        addDate(column, value.toDate());
        return;
    case Kind::Text:
        addText(column, value.toString(), wrapped);
        return;
    }
    width = std::max(width, shownText(value).size());
}

void XlsxFile::addDate(int column, const QDate& day) {
    constexpr qsizetype digits = 10;
    if (day < firstDay) {
        addText(column, shownText(day), wrapped);
        return;
    }
    worksheet_write_number(sheet, row, static_cast<lxw_col_t>(column),
                           static_cast<double>(dayZero.daysTo(day)), date);
    qsizetype& width = widths[static_cast<std::size_t>(column)];
    width = std::max(width, digits);
}

void XlsxFile::addText(int column, const QString& text, lxw_format* textFormat) {
    if (text.size() > longestText)
        fail(u"a cell of a workbook holds %1 characters, row %2 has a longer text; save the table as .csv"_s
                 .arg(longestText)
                 .arg(row));
    if (text.isEmpty())
        return;
    worksheet_write_string(sheet, row, static_cast<lxw_col_t>(column), xmlText(text).constData(), textFormat);
    qsizetype& width = widths[static_cast<std::size_t>(column)];
    width = std::max(width, longestLine(text));
}

void XlsxFile::complete() {
    constexpr qsizetype narrowest = 6;
    constexpr qsizetype widest = 60;
    constexpr qsizetype filterMark = 3;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const auto column = static_cast<lxw_col_t>(i);
        const qsizetype characters = std::clamp(widths[i], narrowest, widest) + filterMark;
        worksheet_set_column(sheet, column, column, static_cast<double>(characters), nullptr);
    }
    if (!widths.empty())
        worksheet_autofilter(sheet, 0, 0, row - 1, static_cast<lxw_col_t>(widths.size() - 1));
    if (const int error = closeBook(); error != LXW_NO_ERROR)
        fail(QString::fromUtf8(lxw_strerror(static_cast<lxw_error>(error))));
    QFile written(folder.filePath(u"table.xlsx"_s));
    if (!written.open(QIODevice::ReadOnly))
        fail(written.errorString());
    constexpr qint64 piece = 1 << 20;
    while (!written.atEnd())
        write(written.read(piece));
}

int XlsxFile::closeBook() {
    lxw_workbook* open = std::exchange(book, nullptr);
    return open ? workbook_close(open) : LXW_NO_ERROR;
}

} // namespace tables
