// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

// The readings in tables reading and readingfile. These throw Failure.

/// Answers that one or more files have added to the store, changed in it, or found there already.
struct AnswerCounts {
    int added = 0;
    int changed = 0;
    int same = 0;
};

struct RecordedReading {
    int readingid = 0;
    QDateTime started; ///< local time
    QString login;
    QDateTime undone; ///< invalid for one that counts
    bool isThinned = false;
    int files = 0;
    AnswerCounts answers;

    bool canBeUndone() const { return !undone.isValid() && !isThinned; }
};

struct RecordedFile {
    QString name;
    QString sha256; ///< empty for one that could not be read
    QString customer;
    QString respondent;
    QDate surveydate;
    AnswerCounts answers;
};

/// Newest first.
std::vector<RecordedReading> findReadings();
/// In the order of reading.
std::vector<RecordedFile> findFilesOf(int readingid);

/// The readings that began before a moment and are not thinned out yet.
int countReadingsBefore(const QDateTime& moment);
/// Removes the answers, before and after, of these readings: they stay in the list and cannot be undone.
void thinOutReadingsBefore(const QDateTime& moment);
