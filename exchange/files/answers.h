// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <optional>

namespace ado {
class Recordset;
}

/// Identifies an answer. The ids are digits.
struct AnswerKeys {
    QString questionid = {};
    QString respondentid;
    QDate surveydate;
    QString surveyid;
};

/// What a stored answer holds. A Null field is an invalid value.
struct AnswerState {
    QVariant surveyid;
    QVariant weightage;
    QVariant content; ///< the score, or the words
    bool operator==(const AnswerState&) const = default;
};

// They throw Failure.

/// Whether the question asks for a score; nothing for one that is not in the catalogue.
std::optional<bool> toGetQuestionType(const QString& questionid);

/// The select of the stored answer to a Score or to a Descriptive question.
QString selectAnswer(const AnswerKeys& keys, bool isScore);
/// The state of the answer that the recordset stands on.
AnswerState answerState(ado::Recordset& answer, bool isScore);

/// Both replace the stored answer in full, or add one. They return what it was before; nothing for a new one.
std::optional<AnswerState> toWriteObjectiveAnswer(const AnswerKeys& keys, int weightage, int score);
/// Without words the stored ones are cleared.
std::optional<AnswerState> toWriteDescriptiveAnswer(const AnswerKeys& keys, int weightage,
                                                    const std::optional<QString>& words);
