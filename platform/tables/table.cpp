// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tables/table.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tables {
namespace {

const QString dateFormat = u"dd/MM/yyyy"_s;

QDate toDate(const QString& text) {
    return text.size() == dateFormat.size() ? QDate::fromString(text, dateFormat) : QDate();
}

bool isNumber(const QString& text) {
    static const QRegularExpression plain(u"^-?(0|[1-9]\\d*)(\\.\\d+)?$"_s,
                                          QRegularExpression::DontCaptureOption);
    constexpr qsizetype sureDigits = 15; // of a double
    return text.size() <= sureDigits && plain.match(text).hasMatch();
}

/// Whether all texts of a column pass; nothing else is in it, and at least one text.
template <class Test> bool isEvery(const Table& table, qsizetype column, Test passes) {
    bool any = false;
    for (const QVariantList& row : table.rows) {
        const QVariant value = row.value(column);
        const QString text = value.toString();
        if (kindOf(value) == Kind::Nothing || text.isEmpty())
            continue;
        if (kindOf(value) != Kind::Text || !passes(text))
            return false;
        any = true;
    }
    return any;
}

template <class Convert> void change(Table& table, qsizetype column, Convert converted) {
    for (QVariantList& row : table.rows) {
        if (column < row.size())
            row[column] = row[column].toString().isEmpty() ? QVariant() : converted(row[column].toString());
    }
}

QString tabbedCell(const QVariant& value) {
    const QString text = shownText(value);
    const bool quoted =
        text.contains(u'\t') || text.contains(u'\n') || text.contains(u'\r') || text.contains(u'"');
    return quoted ? inQuotes(text) : text;
}

} // namespace

Kind kindOf(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return Kind::Nothing;
    case QMetaType::Bool:
        return Kind::YesNo;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return value.toDate().isValid() ? Kind::Date : Kind::Nothing;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return std::isfinite(value.toDouble()) ? Kind::Number : Kind::Nothing;
    default:
        return Kind::Text;
    }
}

QString shownText(const QVariant& value) {
    switch (kindOf(value)) {
    case Kind::Nothing:
        return {};
    case Kind::YesNo:
        return value.toBool() ? u"Yes"_s : u"No"_s;
    case Kind::Date:
        return value.toDate().toString(dateFormat);
    case Kind::Number:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case Kind::Text:
        break;
    }
    return value.toString();
}

void recogniseColumns(Table& table) {
    for (qsizetype column = 0; column < table.headings.size(); ++column) {
        if (isEvery(table, column, isNumber))
            change(table, column, [](const QString& text) { return QVariant(text.toDouble()); });
        else if (isEvery(table, column, [](const QString& text) { return toDate(text).isValid(); }))
            change(table, column, [](const QString& text) { return QVariant(toDate(text)); });
    }
}

QString tabSeparated(const Table& table) {
    QStringList lines;
    const auto add = [&](const auto& row) {
        QStringList cells;
        for (const auto& value : row)
            cells << tabbedCell(value);
        lines << cells.join(u'\t');
    };
    const auto isEmpty = [](const QString& text) { return text.isEmpty(); };
    if (!std::all_of(table.headings.begin(), table.headings.end(), isEmpty))
        add(table.headings);
    for (const QVariantList& row : table.rows)
        add(row);
    return lines.join(u'\n');
}

QString inQuotes(const QString& text) {
    return u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

} // namespace tables
