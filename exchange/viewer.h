// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/application.h"

/// A spreadsheet application that has no workbook yet and shows nothing. When it is made visible it hands its
/// files to the desktop's program, and throws excel::Error when there is none.
excel::Application toGetExcel();

/// Opens a survey file, given by its full path, in front of the user, protected as it is. Throws
/// excel::Error.
void toViewWorkbook(const QString& path);
