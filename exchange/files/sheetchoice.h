// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/workbook.h"

/// The sheet of a survey file that has the answers: the one of the usual name, else, since a spreadsheet
/// program may have renamed it, the only one with a value in each key cell of the head. Throws Failure for a
/// file without such a sheet.
excel::Worksheet surveySheetOf(const excel::Workbook& workbook);
