// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/period.h"

#include "platform/ado/value.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int monthsOfQuarter = 3;

int quarterOf(const QDate& date) {
    return (date.month() - 1) / monthsOfQuarter + 1;
}

} // namespace

QDate beginOf(Period period, const QDate& date) {
    switch (period) {
    case Period::Month:
        return {date.year(), date.month(), 1};
    case Period::Quarter:
        return {date.year(), (quarterOf(date) - 1) * monthsOfQuarter + 1, 1};
    case Period::Year:
        return {date.year(), 1, 1};
    case Period::Whole:
        return QDate::fromJulianDay(0);
    default:
        return date;
    }
}

QString nameOf(Period period, const QDate& begin) {
    switch (period) {
    case Period::Month:
        return begin.toString(u"MM/yyyy");
    case Period::Quarter:
        return u"Q%1 %2"_s.arg(quarterOf(begin)).arg(begin.year());
    case Period::Year:
        return QString::number(begin.year());
    case Period::Whole:
        return {};
    default:
        return ado::toText(begin);
    }
}
