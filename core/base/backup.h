// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/storecopy.h"

#include <QStringList>

/// Copies the database, also that of a server, into a file in the folder backup/ of the home directory. Call
/// before deleting or overwriting stored data; only the first call of a run makes a copy. The file name has
/// the date, the time and a running number; the ten highest numbers are kept. A store without customers and
/// parameters is not copied. Throws Failure, also recorded in the connection's errors, if the copy cannot be
/// written or is damaged; the caller must then not delete anything.
void backUpBeforeLoss();

/// Copies the store into a file of that path, which is replaced only when the copy is complete. `step` is
/// called for each thousand rows of a server's store, and a few times a second for a file, with no name;
/// false when it has cancelled. Throws Failure, also recorded in the connection's errors.
bool copyStoreTo(ado::Connection& store, const QString& path, const CopyStep& step = {});

/// Copies a database in any case; otherwise likewise. False, without a copy, when the step has cancelled.
bool copyStore(ado::Connection& store, const QString& databasePath, const CopyStep& step = {});

/// Full paths of the backup copies of a database, newest first.
QStringList listBackups(const QString& databasePath);

/// For tests: lets the next backUpBeforeLoss make a copy again.
void forgetBackup();
