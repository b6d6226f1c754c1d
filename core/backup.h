// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Copies the database into backup/ beside it, named by date and time, before the first step of this run that
/// deletes or overwrites stored answers; later calls of the same run do nothing. The newest ten copies are
/// kept. Throws ado::Failure, recorded in the connection's errors, when the copy cannot be written: then
/// nothing is deleted.
void toBackupBeforeLoss();

/// As if the program had just started; a test's fresh store.
void toForgetBackup();
