// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveyreader.h"

#include <QObject>

/// How the reading of survey files went.
struct Reading {
    QStringList bad; ///< titles of the files that were not read to their end, with the cell if one ended it
    QStringList remarks;                ///< remarks on the files that were read
    std::map<QString, QString> reasons; ///< why files were not read to their end, by path
    bool hasWritten = false;            ///< answers have been stored
    bool hasStoreFailed = false;        ///< the store ended the reading
};

// Both copy the database first and show each failure as it occurs.

/// As SurveyReader::read.
Reading readSurveyFile(const ReturnedFile& file, std::optional<bool> statusBefore = {});
/// As SurveyReader::readAll.
Reading readSurveyFiles(const std::vector<ReturnedFile>& files,
                        const std::function<bool(const QString& title, qsizetype left)>& onFile = {});

/// Reads the files that the user has chosen; a file that is open in a spreadsheet program only after a
/// question. A file that cannot be read is reported at once and the next ones are read, unless the store
/// failed. Of several files, those not read to their end are listed afterwards, with remarks on the files
/// that were read. Returns why files were not read to their end, by path.
std::map<QString, QString>
readChosenFiles(const std::vector<ReturnedFile>& chosen,
                const std::function<bool(const QString& title, qsizetype left)>& onFile);

/// Emits which questionnaires have got answers from survey files, after each commit.
class ReadReport : public QObject {
    Q_OBJECT

public:
    static ReadReport& instance();

Q_SIGNALS:
    void answersStored(const SurveyReader::Questionnaires& questionnaires);
};

/// Lists, in one message, the files that were not read to their end and the remarks on the others, the first
/// ones of each if there are many. Shows nothing if both are empty.
void nameAfterReading(const QStringList& bad, const QStringList& remarks);
