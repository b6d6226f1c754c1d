// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Whether the database of the data source is one of version 1.
bool needsUpgrade();

/// Brings that database to version 2: a checked copy in backup/ first, then all changes in one transaction. A
/// failure is shown and leaves the database as it is, which the program then uses. A database that can only
/// be read is left as it is without a message.
void upgradeStore(const QString& databasePath);
