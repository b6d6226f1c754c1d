// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/// The one connection of the program. A form's procedure calls reconnect before it uses it; what has no
/// window is called by such a procedure and throws Failure.
extern std::unique_ptr<ado::Connection> cnnMain;

/// Full path of the database file chosen at start-up.
extern QString strDatabasePath;

/// The connection's text: data source and password.
QString connectionText();

/// The text with every ' replaced by the typographic apostrophe; nothing when it holds none.
std::optional<QString> toFilterApostrophe(const QString& text);

/// The text as it is stored: filtered when it holds an apostrophe, else as it is.
QString toStoredText(const QString& text);

/// Whether a select finds anything; nothing is locked afterwards. Throws Failure.
bool hasRecords(const QString& sql);

/// The custid of the first customer of that name, or 0. The name goes into the statement unfiltered. Throws
/// Failure.
int findCustomer(const QString& customerName);

/// The custids of customers to write for, in the order of the names. Throws Refusal naming those that are
/// not found, and Failure.
std::vector<int> requireCustomers(const QStringList& names);

/// A date for a statement: mm/dd/yyyy, to stand between # marks. Empty for no date, which the store refuses.
QString toSqlDate(const QDate& date);

/// The date of a text dd/mm/yyyy; invalid for any other text.
QDate toDate(const QString& text);

/// Where the database, the survey files, help and report layouts stand: the program's directory, unless set.
QString homeDirectory();
/// Main sets what GAUGEWELL_HOME names, a test a home of its own. Empty: the directory of the program again.
void setHomeDirectory(const QString& path);
