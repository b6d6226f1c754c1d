// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/report.h"

class QPrinter;

namespace crystal {

/// Writes the report as a PDF. An existing file is replaced only when the new one is complete. Throws
/// Failure with the PDF's name when it cannot be written.
void savePdf(const Report& report, const QString& path);

/// Prints the pages that the printer is set to, each fitted to its paper. Throws Failure when the printer
/// refuses them.
void print(const Report& report, QPrinter& printer);

} // namespace crystal
