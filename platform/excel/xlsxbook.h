// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/valuebook.h"
#include "platform/excel/zippackage.h"

namespace excel {

/// Reads a workbook of Excel 2007 or later (.xlsx, .xlsm) into an empty book. A formula has the result that
/// is stored in the file. Throws biff::Refusal, also for a binary workbook (.xlsb) and other documents.
void readXlsx(ZipPackage& package, ValueBook& book);

} // namespace excel
