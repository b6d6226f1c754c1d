// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Whether a survey file may be read, written over or deleted. For one that a spreadsheet program has open,
/// by the lock file that such programs put beside it, the user is asked: a lock file also stays behind when
/// the program was killed. True without a question for any other file.
bool mayUseFile(const QString& path);
