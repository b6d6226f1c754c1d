// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answerhistory.h"

#include <QDateTime>

/// Whether readings are recorded in the store: it has the tables of version 2. Throws Failure.
bool hasReadingTables();

/// Who reads, and since when.
struct ReadingRun {
    QDateTime started; ///< local time
    QString login;     ///< the user's name on the computer
};

/// Records a run of reading survey files in tables reading and readingfile, within the transactions of the
/// reader. A store of version 1 gets no record. All but the constructor throw Failure.
class ReadingRecord {
public:
    explicit ReadingRecord(ReadingRun newRun) : run(std::move(newRun)) {}

    /// A file whose reading begins. registered: its name in the register, empty for none; statusBefore: of
    /// the register's row.
    void beginFile(const QString& title, const QString& registered, std::optional<bool> statusBefore);
    void setHash(const QString& hash) { file.hash = hash; } ///< of the file's content, as contentHash
    void add(const AnswerKeys& keys, AnswerChange change);
    /// Writes the file's row.
    void endFile();

    // The end of the reader's transaction.
    void keep() { isNew = false; }
    void drop();

private:
    struct File {
        QString title;
        QString registered;
        std::optional<bool> statusBefore;
        QString hash; ///< empty while the content was not read
        std::optional<AnswerKeys> keys;
        std::vector<AnswerChange> changes;
    };

    void requireRun();

    ReadingRun run;
    std::optional<bool> isRecorded; ///< by this store
    QVariant readingid;             ///< of the run; invalid before its first file
    bool isNew = false;             ///< the run's row is part of the open transaction
    File file;
};
