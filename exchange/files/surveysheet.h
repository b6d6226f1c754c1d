// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/cellmap.h"
#include "platform/excel/worksheet.h"

/// Writes a survey into an unprotected sheet made from the template: the head, then the questions of the
/// survey's respondent that reportlinktable holds, parameter by parameter in the order of their names. Throws
/// Failure.
void fillSurveySheet(const excel::Worksheet& sheet, const cellmap::Head& head);
