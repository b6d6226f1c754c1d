// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

/// What the surveys of several customers are put together by, since their dates differ.
enum class Period { SurveyDate, Month, Quarter, Year, Whole };

/// The first day of the period that has the date; the date itself for SurveyDate, the same day for all dates
/// of Whole.
QDate beginOf(Period period, const QDate& date);

/// "31/03/2025", "03/2025", "Q1 2025" or "2025"; empty for Whole.
QString nameOf(Period period, const QDate& begin);
