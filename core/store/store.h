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

/// The program's only connection. `guarded` opens it before it runs a form's procedure. Code without a window
/// expects an open connection and throws Failure.
extern std::unique_ptr<ado::Connection> cnnMain;

/// Full path of the database file chosen at start-up.
extern QString strDatabasePath;

/// The password of a store in a file.
QString storePassword();

/// The connection string: data source and password, or those of the server that storechoice.h tells.
QString connectionText();

/// Replaces every ' by the typographic apostrophe; nullopt if there is none.
std::optional<QString> toFilterApostrophe(const QString& text);

/// The text as it is stored: every ' is replaced by the typographic apostrophe.
QString toStoredText(const QString& text);

/// Whether a select returns any rows. Holds no lock afterwards. Throws Failure.
bool hasRecords(const QString& sql);

/// The custid of the first customer with that name; 0 if there is none. The name is not escaped. Throws
/// Failure.
int findCustomer(const QString& customerName);

/// The custids of the named customers, in the same order. Throws Refusal with the names that are not found,
/// and Failure.
std::vector<int> requireCustomers(const QStringList& names);

/// A date for use between # marks in a statement: mm/dd/yyyy. Empty for an invalid date; such a statement
/// fails.
QString toSqlDate(const QDate& date);

/// Parses dd/mm/yyyy; any other text returns an invalid date.
QDate toDate(const QString& text);

/// The directory of the database, survey files, help and report layouts. Default: the program's directory.
QString homeDirectory();
/// Set by Main from GAUGEWELL_HOME, and by tests. An empty path restores the default.
void setHomeDirectory(const QString& path);
