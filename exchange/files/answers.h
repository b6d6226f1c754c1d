// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <map>
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

/// Whether each question of the catalogue asks for a score, by its id.
std::map<QString, bool> readQuestionTypes();

/// The state of the answer that the recordset stands on.
AnswerState answerState(ado::Recordset& answer, bool isScore);
