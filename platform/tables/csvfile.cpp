// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tables/csvfile.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tables {
namespace {

QString cellOf(const QVariant& value) {
    QString text = shownText(value);
    if (kindOf(value) == Kind::Text && !text.isEmpty() && u"=+-@\t\r"_s.contains(text.front()))
        text.prepend(u'\'');
    const auto needsQuotes = [](QChar c) { return c == u',' || c == u'"' || c == u'\r' || c == u'\n'; };
    return std::any_of(text.cbegin(), text.cend(), needsQuotes) ? inQuotes(text) : text;
}

} // namespace

CsvFile::CsvFile(const QString& path, const QStringList& headings) : TableFile(path) {
    CsvFile::addRow(QVariantList(headings.begin(), headings.end()));
}

void CsvFile::addRow(const QVariantList& row) {
    QStringList cells;
    for (const QVariant& value : row)
        cells << cellOf(value);
    const QString line = cells.join(u',');
    write((line.isEmpty() ? u"\"\""_s : line).toUtf8() + "\r\n"); // an empty line would be no row
}

} // namespace tables
