// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answerhistory.h"

#include <QStringList>

#include <map>
#include <set>

/// What undoing a reading does to the store. An answer that the reading made is taken out, one that it
/// overwrote gets back what it was. An answer that has been changed since, or that a later reading has
/// written too, stays as it is; undoing that later reading then goes back to the state before this one.
struct ReadingUndo {
    struct Key {
        int respondentid = 0;
        QDate surveydate;
        int questionid = 0;
        bool isScore = false;
        auto operator<=>(const Key& other) const {
            return std::tuple(respondentid, surveydate.toJulianDay(), questionid, isScore) <=>
                   std::tuple(other.respondentid, other.surveydate.toJulianDay(), other.questionid,
                              other.isScore);
        }
    };
    struct LaterFile { ///< of a reading that stays
        std::vector<AnswerChange> changes;
        bool isTouched = false; ///< its states before are those before the undone reading now
    };

    int readingid = 0;
    std::map<Key, std::optional<AnswerState>> changed; ///< answers to be written; nothing: to be taken out
    std::map<Key, QString> kept;                       ///< answers that stay, with the file that had them
    std::map<int, LaterFile> later;                    ///< by readingfileid
    QStringList toBeReadAgain;                         ///< registered names whose mark "read in" is taken
    std::map<int, bool> statusBefore;                  ///< handed on to files of readings that stay

    int removedCount() const;
    int restoredCount() const { return int(changed.size()) - removedCount(); }
};

// They throw Failure; Refusal for a reading that is undone already or thinned out.

/// Reads the store only.
ReadingUndo planUndo(int readingid);
/// Plans anew and carries it out, as one transaction; `now` is the local time.
ReadingUndo undoReading(int readingid, const QDateTime& now);

/// The answer in words, such as "Ann, 05/03/2024, On time?"; numbers for names that are no longer there.
QString nameOf(const ReadingUndo::Key& answer);
