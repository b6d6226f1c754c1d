// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QStringList>

#include <functional>
#include <vector>

namespace tables {
class TableFile;
}

/// The answers of these customers, none: of all, on survey dates from the first to the last, both included.
struct ExportChoice {
    std::vector<int> custids;
    QDate first;
    QDate last;
};

/// Customer, respondent, designation, survey date, parameter, question, kind, weightage, score, answer.
QStringList exportHeadings();

/// Called at each customer and after each thousand answers; false ends the export.
using ExportStep = std::function<bool(const QString& customer, bool isNext)>;

/// Adds a row for each stored answer to a question of its kind, by customer, survey date, respondent and the
/// order of the questionnaire; after these the answers to questions that have left it. A mark of 0, which
/// stands for none, is empty. Memory is that of one respondent's answers of one date. Returns the number of
/// rows, -1 when `step` has ended it. Throws Failure.
int exportAnswers(const ExportChoice& choice, tables::TableFile& file, const ExportStep& step);
