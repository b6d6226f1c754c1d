// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveyreader.h"

#include <QObject>

/// How the reading of survey files went.
struct Reading {
    QStringList bad; ///< titles of the files that were not read to their end, with the cell if one ended it
    QStringList remarks;         ///< what is worth a look in the files that were read
    bool hasWritten = false;     ///< answers have been stored
    bool hasStoreFailed = false; ///< the store ended the reading
};

// Both copy the database first, and show each failure when it comes.

Reading readSurveyFile(const QString& path);
/// As SurveyReader::readAll.
Reading readSurveyFiles(const QStringList& paths,
                        const std::function<void(const QString& title, qsizetype left)>& onFile = {});

/// Reports what the readings of the program have stored, once it is committed.
class ReadReport : public QObject {
    Q_OBJECT

public:
    static ReadReport& instance();

Q_SIGNALS:
    void answersStored(const SurveyReader::Questionnaires& questionnaires);
};

/// Names, in one message, the files that were not read to their end and what is worth a look in the others,
/// the first ones of each when they are many. Shows nothing when there is nothing to name.
void nameAfterReading(const QStringList& bad, const QStringList& remarks);
