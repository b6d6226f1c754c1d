// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

// Survey files are known by their bare names; all of them live in the home directory. Failures of the store
// are thrown as Failure.

/// The template of survey files in the home directory.
inline constexpr QStringView templateFile = u"template.xls";

/// Whether two file titles are the same: without regard to blanks around them, and with either apostrophe, of
/// which the register keeps the typographic one and the disk what the user typed.
bool isSameTitle(const QString& one, const QString& other);

/// The condition of a statement on table log for the rows of that file title, with either apostrophe.
QString conditionOfTitle(const QString& fileName);

/// The name under which the register has the survey's file; empty when it was never exported.
QString findLoggedFileName(const QString& customer, const SurveyKey& survey);

/// The program's own name for the survey's file: surveyid, custid and respondentid put together without a
/// separator, so that two surveys can come to the same name, and ".xls". Empty for a survey that has no
/// question.
QString makeSystemFileName(const SurveyKey& survey);

/// Whether the register has the name, for any customer.
bool isFileNameLogged(const QString& fileName);

/// Whether a name is that of a file that the program uses, there or not, and so none for a survey file: the
/// template, the store, the layouts, help, pictures of charts, or any file of the home directory that is no
/// workbook.
bool isProgramsOwnFile(const QString& fileName);
