// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/value.h"

/// Dates are stored as numbers of days, the time of day as the fraction. A workbook counts from 1900 or from
/// 1904; the 1900 count includes the nonexistent 29 February 1900 as its day 60.
namespace excel::biff {

/// The date of a serial number, or the plain number when it is none: below day 1 of the 1900 count
/// (a time of day only), its day 60, a negative number, or one after the year 9999.
Value fromSerial(double serial, bool from1904);

/// The serial number of a date, or nothing for a date outside the workbook's count (before 1 March 1900 or
/// 1904, or after 9999).
std::optional<double> toSerial(QDate date, QTime time, bool from1904);

/// Whether a number format's code shows a date or a time of day.
bool isDateCode(QStringView code);
/// The same for a number format that workbooks do not list, by its number.
bool isBuiltInDate(int numberFormat);

} // namespace excel::biff
