// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Opens a survey file, given by its full path, in the desktop's spreadsheet program, protected as it is.
/// Throws Failure.
void viewWorkbook(const QString& path);
