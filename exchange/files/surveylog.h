// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answers.h"
#include "platform/ado/recordset.h"
#include "survey/questionnaires/surveykey.h"

#include <QDate>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

// Table log, the register of survey files. These throw Failure.

/// Marks the survey's file as not read in.
void resetLogStatus(const SurveyKey& survey);

/// Adds or rewrites the register row of the survey's file; its read-in mark is not changed.
void writeLogRow(const SurveyContext& survey, const SurveyKey& key, const QString& fileName);

/// Marks the file as read in, if it is registered. Returns the mark before; nothing for another file.
std::optional<bool> setLogStatus(const QString& fileName);

/// Deletes the rows of that file title.
void toDeleteLogRow(const QString& fileName);

/// A row of the register: the survey that a file belongs to. Null fields are empty.
struct LogRow {
    QString custname;
    QString respname;
    QString respid;
    QString surveyid;
    QDate sdate;
};

/// The rows of that file title; several when surveys share a name.
std::vector<LogRow> findLogRows(const QString& fileName);

/// What a file says of itself that differs from the register's rows of its title, each with the cell. Two
/// surveys can have files of one name; none if the file belongs to one of them, or is not registered.
QStringList differencesFrom(const std::vector<LogRow>& registered, const AnswerKeys& keys);

/// The register's rows of several files, read by one select.
class RegisterRows {
public:
    explicit RegisterRows(const QStringList& titles);

    /// As findRegisteredTitle.
    QString registeredTitle(const QString& title) const;
    /// Marks the file as read in or not, if it is registered. Returns the mark before; nothing for another
    /// file.
    std::optional<bool> mark(const QString& fileName, bool isReadIn = true);
    /// The file's mark; false for one that is not registered.
    bool isMarked(const QString& fileName);
    /// As findLogRows.
    std::vector<LogRow> rowsOf(const QString& fileName);

private:
    bool read(const QStringList& asked);

    ado::Recordset rows;
    std::map<QString, std::vector<std::size_t>> places; ///< of the rows, by their file names
    bool isRead;                                        ///< else each file is looked up by itself
};
