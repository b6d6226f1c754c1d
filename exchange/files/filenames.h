// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

// Survey files are identified by their bare names; all are in one folder. The look-ups throw Failure.

/// The template of survey files in the home directory.
inline constexpr QStringView templateFile = u"template.xls";

/// Whether two file titles are the same, ignoring blanks around them and the kind of apostrophe: the register
/// has the typographic one, the disk the one that was typed.
bool isSameTitle(const QString& one, const QString& other);

/// What an open dialog for returned survey files offers after its own filter, which is one of whole pairs.
inline constexpr QStringView returnedFilter =
    u"|Survey Files (*.xls *.xlsx *.xlsm *.ods)|*.xls *.xlsx *.xlsm *.ods";

/// Whether a file is the registered one, as it was handed out or saved in another format: "A.xlsx", "A.xlsm"
/// and "A.ods" are returned for "A.xls" and "A".
bool isReturnOf(const QString& title, const QString& registered);

/// The condition of a statement on table log for the rows of that file title, with either apostrophe.
QString conditionOfTitle(const QString& fileName);

/// The registered name of the survey's file; empty if it was never exported.
QString findLoggedFileName(const QString& customer, const SurveyKey& survey);

/// The generated name of the survey's file: surveyid, custid and respondentid without a separator, so that
/// two surveys can get the same name, and ".xls". Empty for a survey without questions.
QString makeSystemFileName(const SurveyKey& survey);

/// The titles under which a file that is returned in another format may have been handed out; none for other
/// files.
QStringList titlesHandedOut(const QString& title);

/// The title under which the register has a returned file; the file's own if it has none. Looks for another
/// format only when the register does not have the file's own title.
QString findRegisteredTitle(const QString& title);

/// Whether the register has the name, for any customer.
bool isFileNameLogged(const QString& fileName);

/// Whether a name is reserved and so not allowed for a survey file, whether the file exists or not: the
/// template, the store, the layouts, help, chart pictures, and any file of the folder that is no
/// workbook.
bool isProgramsOwnFile(const QString& fileName);
