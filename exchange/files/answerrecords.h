// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answers.h"
#include "platform/ado/recordset.h"

#include <map>
#include <set>
#include <tuple>

/// The stored answers of some respondents on some dates to Score or to Descriptive questions: read by one
/// select, and written together at the end of the transaction. They throw Failure.
class AnswerRecords {
public:
    AnswerRecords(bool scores, const std::set<QString>& respondentids, const std::set<QDate>& dates);

    /// Moves to the stored answer; false when there is none.
    bool find(const AnswerKeys& keys) { return find(keyOf(keys)); }
    /// Moves to the stored answer, or begins a new one, and sets its keys. False for a new one.
    bool begin(const AnswerKeys& keys);
    /// The answer that was found or begun.
    ado::Recordset& answer() { return records; }
    /// Replaces the stored answer in full, or adds one. Returns what it was before; nothing for a new one.
    std::optional<AnswerState> replace(const AnswerKeys& keys, int weightage, const QVariant& content);

private:
    using Key = std::tuple<int, int, QDate>; // respondent, question
    static Key keyOf(const AnswerKeys& keys);
    void read();
    bool find(const Key& key);
    void begin(const Key& key, const AnswerKeys& keys, bool isStored);

    bool isScore;
    QString select;
    ado::Recordset records;
    std::map<Key, std::size_t> places;
    std::set<Key> begun; ///< since they were read
};
