// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace forms {
class Form;
}

/// The one connection of the program. Every procedure calls toReconnect before it uses it.
extern std::unique_ptr<ado::Connection> cnnMain;

/// The name of the organisation that uses the program: the first line of company.txt in the home directory
/// (UTF-8), empty without that file.
extern QString strCompanyName;

/// Full path of the database file chosen at start-up.
extern QString strDatabasePath;

/// A node of the question tree has been let go over the question grid.
extern bool blnNodeDragged;

/// Hand-over between survey selection, the editors and the copy form.
extern bool blnSurveyPasted;
extern bool blnExistingSurvey;

/// Hand-over from the search to the form that shows a hit: the search has opened a form; the Id of the hit,
/// despite the name; which form is to go to the hit when it becomes active; the hit's row in the search's
/// list, from 1.
extern bool blnSearchOpen;
extern QString strSearchKeywords;
extern bool blnSearchToFeedback;
extern bool blnSearchToImprovement;
extern int intSearchIndex;

/// The program: finds its database, connects, shows the splash form and then the main window. Returns the
/// exit code. With the arguments --tell TEXT it only shows the text: why the launcher could not start it.
int Main(int argc, char** argv);

/// The first line of company.txt, or of it the first 255 characters; empty when that is no readable regular
/// file.
QString toReadCompanyName();

/// Points the data source at the database: the file in the home directory, or one the user locates. Writes
/// the path. False when the user gave up, so that the program ends.
[[nodiscard]] bool toCreateDSN(const QString& dataSourceName, QString& databasePath);

/// The connection's text: data source and password.
QString toConnectionText();

/// Makes cnnMain anew and opens it; a failure is shown.
void toOpenConnection();

/// Opens the connection again when it is closed.
void toReconnect();

/// Ends the program: closes and releases the connection and leaves the event loop.
void toEndProgram();

/// What ends the event loop; a test records here.
extern std::function<void()> endSeat;

/// The text with every ' replaced by the typographic apostrophe; nothing when it holds none.
std::optional<QString> toFilterApostrophe(const QString& text);

/// The text as it is stored: filtered when it holds an apostrophe, else as it is.
QString toStoredText(const QString& text);

/// The custid of the first customer of that name, or 0. The name goes into the statement unfiltered. For use
/// within a procedure, whose handler shows the failure: throws ado::Failure.
int findCustomer(const QString& customerName);

/// The custids of customers to write for, in the order of the names. Throws Refusal naming those that are
/// not found, and ado::Failure.
std::vector<int> requireCustomers(const QStringList& names);

/// As findCustomer, for use on its own: a failure is shown and gives 0.
int toGetCustID(const QString& customerName);

/// Places a form in the middle across and, at 0.85 of the height, a little above the middle.
void toCenterForm(forms::Form& form);

/// A date for a statement: mm/dd/yyyy, to stand between # marks. Empty for no date, which the store refuses.
QString toSqlDate(const QDate& date);

/// The date of a text dd/mm/yyyy; invalid for any other text.
QDate toDate(const QString& text);

/// Where the database, the survey files, help and report layouts stand: the program's directory, unless set.
QString homeDirectory();
/// Main sets what GAUGEWELL_HOME names, a test a home of its own. Empty: the directory of the program again.
void setHomeDirectory(const QString& path);
