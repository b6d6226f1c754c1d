// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// Copies the database into backup/ beside it, named by date, time and a running number, before the first
/// step of this run that deletes or overwrites stored answers; later calls of the same run do nothing. The
/// newest ten copies by number are kept, whatever the clock says. A store without customers and parameters is
/// not copied. Throws Failure, recorded in the
/// connection's errors, when the copy cannot be written or is damaged: then nothing is deleted.
void backUpBeforeLoss();

/// Full paths of the copies of that database, the newest first.
QStringList listBackups(const QString& databasePath);

/// As if the program had just started; a test's fresh store.
void forgetBackup();
