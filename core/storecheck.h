// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Whether the program can work with the database that the data source points to. False after the user was
/// told that the file is damaged, was made by a newer version, or lacks a table, and which copies in backup/
/// there are. What else may keep it from being opened (missing, locked, another password) is left to the
/// connection to tell. A store without a version is a good one.
[[nodiscard]] bool toCheckStore(const QString& databasePath);
