// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The program: finds its database, connects, shows the splash form and then the main window. Returns the
/// exit code. With the arguments --tell TEXT it only shows the text: why the launcher could not start it.
int Main(int argc, char** argv);

/// The first line of company.txt, or of it the first 255 characters; empty when that is no readable regular
/// file.
QString readCompanyName();

/// Points the data source at the database: the file in the home directory, or one the user locates. Writes
/// the path. False when the user gave up, so that the program ends.
[[nodiscard]] bool toCreateDSN(const QString& dataSourceName, QString& databasePath);
