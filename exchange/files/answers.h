// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <optional>

/// Whose answer to which question. The ids are digits.
struct AnswerKeys {
    QString questionid = {};
    QString respondentid;
    QDate surveydate;
    QString surveyid;
};

// They throw Failure.

/// Whether the question asks for a score; nothing for one that the catalogue does not have.
std::optional<bool> toGetQuestionType(const QString& questionid);

/// Replaces the stored answer in full, or adds one.
void toWriteObjectiveAnswer(const AnswerKeys& keys, int weightage, int score);
/// Likewise; nothing in place of the words clears those that are stored.
void toWriteDescriptiveAnswer(const AnswerKeys& keys, int weightage, const std::optional<QString>& words);
