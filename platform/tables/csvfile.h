// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/tablefile.h"

namespace tables {

/// Comma-separated values (RFC 4180) in UTF-8. A text that a spreadsheet would take for a formula gets an
/// apostrophe in front; numbers are never changed.
class CsvFile : public TableFile {
public:
    CsvFile(const QString& path, const QStringList& headings);
    void addRow(const QVariantList& row) override;
};

} // namespace tables
