// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answers.h"

#include <vector>

/// What a reading did to one answer.
struct AnswerChange {
    int questionid = 0;
    bool isScore = false;
    std::optional<AnswerState> before; ///< nothing: there was no answer
    std::optional<AnswerState> after;  ///< nothing: there is none

    bool isOf(const AnswerChange& other) const {
        return questionid == other.questionid && isScore == other.isScore;
    }
};

/// The changes of a file, in the order of writing, as the JSON text of column answers.
QString toJson(const std::vector<AnswerChange>& changes);
/// Empty for a text that is no such JSON.
std::vector<AnswerChange> changesFromJson(const QString& json);
