// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <optional>

/// Identifies an answer. The ids are digits.
struct AnswerKeys {
    QString questionid = {};
    QString respondentid;
    QDate surveydate;
    QString surveyid;
};

// They throw Failure.

/// Whether the question asks for a score; nothing for one that is not in the catalogue.
std::optional<bool> toGetQuestionType(const QString& questionid);

/// Replaces the stored answer in full, or adds one.
void toWriteObjectiveAnswer(const AnswerKeys& keys, int weightage, int score);
/// Likewise; without words the stored ones are cleared.
void toWriteDescriptiveAnswer(const AnswerKeys& keys, int weightage, const std::optional<QString>& words);
