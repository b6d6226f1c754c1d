// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

#include <vector>

// Tables dispatch and reminder: survey files that were handed to their respondents, and reminders of them.
// There is one row in dispatch for each respondent and survey, so a survey of another date has its own. These
// throw Failure.

/// False in a database of version 1, which has neither these tables nor settings.
bool hasDispatchTables();

/// Notes that a file of the register has been handed over today and is due the store's number of days later.
/// Handed over again, the survey keeps its first two dates and gets the name of that file. Does nothing for a
/// file that the register does not have under these names and date, or without the tables.
void noteHandOver(const SurveyContext& survey, const QString& fileName, const QDate& today);

/// For a questionnaire that is deleted, within its transaction: its survey stays when others have one on that
/// date, and a later questionnaire of the same respondent would take the row for its own.
void deleteDispatch(const QString& surveyid, const QString& respondentid);

/// One reminder for each of these rows of dispatch, in one transaction. Rows that have been deleted meanwhile
/// are left out.
void addReminders(const std::vector<int>& dispatchids, const QDate& day);
