// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Whether a survey file may be read, written over or deleted. The user is asked if a spreadsheet
/// program has it open, which the lock file beside it shows: a killed program also leaves one behind.
bool mayUseFile(const QString& path);
