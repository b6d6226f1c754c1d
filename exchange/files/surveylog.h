// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

#include <QDate>

#include <vector>

// Table log, the register of survey files. Failures of the store are thrown as Failure.

/// The survey's file counts as not read in.
void resetLogStatus(const SurveyKey& survey);

/// Enters the survey's file in the register, or writes its row anew; whether it has been read in stays.
void writeLogRow(const SurveyContext& survey, const SurveyKey& key, const QString& fileName);

/// The file counts as read in, when the register has it.
void setLogStatus(const QString& fileName);

/// Deletes the rows of that file title.
void toDeleteLogRow(const QString& fileName);

/// A row of the register: whose the file of a name is. What the row does not say is empty.
struct LogRow {
    QString custname;
    QString respname;
    QString respid;
    QString surveyid;
    QDate sdate;
};

/// The rows of that file title; several when surveys share a name.
std::vector<LogRow> findLogRows(const QString& fileName);
