// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/range.h"

namespace excel {

/// A sheet of cells in a workbook.
class Worksheet {
public:
    Worksheet() = default; ///< refers to no sheet

    /// The name as the workbook has it.
    QString Name() const;
    /// Rows of a sheet of this format: 65536.
    int RowCount() const { return biff::maxRows; }

    /// The cell in that row and column, counted from 1 (rows to 65536, columns to 256); Failure beyond.
    excel::Range Cells(int row, int column) const;
    /// The cells of an address such as "B3" or "A14:G65536", in any case; Failure for any other text.
    excel::Range Range(const QString& address) const;
    excel::Range Range(const QString& from, const QString& to) const;

    /// Protection: locked cells keep their contents, and all cells their formats. Passwords are up to 15
    /// ASCII characters and may be empty; case counts. The file stores a 16-bit hash of the password: it
    /// prevents mistakes, not attacks. In a file that can be read only, Protect and Unprotect do nothing and
    /// check no password.
    bool IsProtected() const;
    /// Failure when the sheet is protected with another password; nothing happens when it is with this one.
    void Protect(const QString& password) const;
    /// Failure for a wrong password, the sheet stays protected; nothing happens when it is not protected.
    void Unprotect(const QString& password) const;

private:
    friend class Workbook;
    explicit Worksheet(biff::SheetHandle handle) : sheet(std::move(handle)) {}
    biff::SheetHandle sheet;
};

} // namespace excel
