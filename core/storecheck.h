// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Tells the user when the database that the data source points to is damaged, lacks a table or was made by a
/// newer version, and which copies in backup/ there are. False for a newer one only: working on it could
/// spoil it. With the others the program lives on, as it does with a database that is missing, locked or of
/// another password, which the connection tells. A store without a version is a good one.
[[nodiscard]] bool toCheckStore(const QString& databasePath);
