// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QStringList>

#include <map>
#include <vector>

// What the work tables of the Satisfaction Index hold. These throw Failure.

/// A point of a parameter's line.
struct LinePoint {
    QDate date;
    float index;
};

/// The numbers of the dates in surveydateorder.
std::map<QDate, int> dateOrder();
/// The points of each parameter in order of their dates from linetable, without those of no index.
std::vector<std::vector<LinePoint>> linesOf(const QStringList& parameters);
