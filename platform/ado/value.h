// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

namespace ado {

/// The type of a column's values, by its declared type: TEXT, INTEGER (32 bits), SMALLINT (16 bits), SINGLE,
/// DOUBLE or DECIMAL, DATE, YESNO. An expression has no declared type; its values are those that the store
/// returns.
enum class ColumnType { Undeclared, Text, Integer, SmallInt, Single, Double, Date, YesNo };

/// The type declared in a schema, with or without lengths; null and unknown names are Undeclared.
ColumnType columnType(const char* declared);

/// A Null field.
inline const QVariant Null{};

/// The pattern of dates as text, regardless of the machine's regional settings.
inline constexpr QStringView dateTextFormat = u"dd/MM/yyyy";

/// The text of a field's value: Null is the empty text, a date dd/mm/yyyy, a yes/no "True" or "False",
/// a number its shortest digits with a point.
QString toText(const QVariant& value);

/// The whole number of a value or text, between smallest and largest: fractions round to nearest with ties to
/// even. Throws Failure::typeMismatch ("Type mismatch") for what is not a number, Failure::overflow
/// ("Overflow") for what does not fit.
qlonglong toWhole(const QVariant& value, qlonglong smallest = INT16_MIN, qlonglong largest = INT16_MAX);
/// Whether toWhole returns a number.
bool isWhole(const QVariant& value, qlonglong smallest, qlonglong largest);

/// The date of an ISO text yyyy-mm-dd; invalid for any other text.
QDate fromIso(QStringView text);
QDate fromIso(QLatin1StringView text);

/// The ISO text of a date, as the store keeps it; empty for a year before 1 or after 9999.
QString toIso(QDate date);

/// Rounds to a whole number, to nearest with ties to even.
double roundHalfEven(double value);

/// A stored value converted for the program: QString, qlonglong, float, double, QDate or bool; invalid for
/// Null.
QVariant fromStore(ColumnType type, const QVariant& stored);

/// A program's value converted for the store. Throws Failure as toWhole does, also for a text that is not a
/// date or yes/no.
QVariant toStore(ColumnType type, const QVariant& value);

} // namespace ado
