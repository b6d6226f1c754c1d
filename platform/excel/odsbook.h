// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/valuebook.h"
#include "platform/excel/zippackage.h"

namespace excel {

/// Reads an OpenDocument spreadsheet (.ods) into an empty book. A formula has the result that is stored in
/// the file. Throws biff::Refusal, also for an encrypted file and other documents.
void readOds(ZipPackage& package, ValueBook& book);

} // namespace excel
