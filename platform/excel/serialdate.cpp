// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/serialdate.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr qint64 secondsPerDay = 86400;
constexpr double firstInvalidSerial = 2958466; // 1 January 10000
constexpr int phantomDay = 60;                 // 29 February 1900

QDate epoch1900(qint64 day) {
    return day < phantomDay ? QDate(1899, 12, 31) : QDate(1899, 12, 30);
}

} // namespace

Value fromSerial(double serial, bool from1904) {
    const double first = from1904 ? 0 : 1;
    if (!(serial >= first) || serial >= firstInvalidSerial)
        return serial;
    // Rounding to whole seconds first keeps 23:59:60 from arising.
    const qint64 seconds = std::llround(serial * double(secondsPerDay));
    const qint64 day = seconds / secondsPerDay;
    const QTime time = QTime(0, 0).addSecs(int(seconds % secondsPerDay));
    if (from1904)
        return Value(QDate(1904, 1, 1).addDays(day), time);
    if (day == phantomDay)
        return serial;
    return Value(epoch1900(day).addDays(day), time);
}

std::optional<double> toSerial(QDate date, QTime time, bool from1904) {
    const QDate first = from1904 ? QDate(1904, 1, 1) : QDate(1900, 3, 1);
    if (!date.isValid() || date < first || date.year() > 9999)
        return std::nullopt;
    const qint64 day = (from1904 ? first : QDate(1899, 12, 30)).daysTo(date);
    const qint64 seconds = time.isValid() ? QTime(0, 0).secsTo(time) : 0;
    return double(day) + double(seconds) / double(secondsPerDay);
}

bool isDateCode(QStringView code) {
    // Quoted text, escaped, padding and repeated characters, and brackets other than elapsed time.
    static const QRegularExpression noise(uR"("[^"]*"?|[\\_*].|\[(?!(?:h|hh|m|mm|s|ss)\])[^\]]*\]?)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression dateLetter(u"[ymdhs]|am/pm"_s, QRegularExpression::CaseInsensitiveOption);
    const auto ofDate = [](QChar c) { return QStringView(u"ymdhsYMDHS").contains(c); };
    if (std::none_of(code.begin(), code.end(), ofDate))
        return false; // shortcut for most codes; called for each cell read
    const QString shape = code.toString().remove(noise).section(u';', 0, 0);
    return shape.contains(dateLetter);
}

bool isBuiltInDate(int numberFormat) {
    const auto within = [=](int first, int last) { return numberFormat >= first && numberFormat <= last; };
    return within(14, 22) || within(27, 36) || within(45, 47) || within(50, 58);
}

} // namespace excel::biff
