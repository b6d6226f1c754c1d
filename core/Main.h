// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Finds the database, connects, shows the splash form, then the main window. Returns the exit code. With the
/// arguments --message TEXT it only shows the text; the launcher uses this to report why it could not start
/// the program.
int Main(int argc, char** argv);

/// The first line of company.txt, at most 255 characters; empty if it is not a readable regular file.
QString readCompanyName();

/// Makes a name the content of company.txt. Throws Failure; then the file is as before.
void writeCompanyName(const QString& name);

/// Points the data source at the database in the home directory, or at one that the user picks, and sets
/// databasePath. Returns false if the user cancelled; the program then ends.
[[nodiscard]] bool toCreateDSN(const QString& dataSourceName, QString& databasePath);
