// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/performancematrix.h"

#include <QDate>
#include <QString>

#include <vector>

/// A parameter of a survey date and the answers to its questions.
struct MatrixGroup {
    QString parameter;
    std::vector<RatedAnswer> answers;
};

/// Reads a customer's answers of a date in one pass; parameters are in order of their first answer. Throws
/// Failure.
std::vector<MatrixGroup> readMatrixGroups(const QString& customer, const QDate& date);
