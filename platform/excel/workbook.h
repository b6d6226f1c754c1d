// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/worksheet.h"

namespace excel {

class Application;
struct ApplicationState;

/// One open file. Changes are in memory until they are saved. A file that can be read only gives the values
/// of its cells; everything that would change it, and all that concerns formats, throws Failure.
class Workbook {
public:
    Workbook() = default; ///< refers to no workbook

    /// The sheet of that name, in any case. Throws Failure when there is none, when it is a chart or macro
    /// sheet, or when its records are damaged.
    Worksheet Worksheets(const QString& name) const;
    /// The names of the worksheets, in their order.
    QStringList SheetNames() const;
    /// The path it was opened from or last saved to.
    QString FullName() const;
    excel::Application Application() const;

    /// Rewrites the file: beside it first, then in its place. Throws Failure and leaves the old file intact
    /// when that fails, when the file is read-only, or when another program changed it since it was opened.
    void Save() const;
    /// The same under another path; the workbook belongs to that file from then on. A file there is replaced.
    void SaveAs(const QString& path) const;
    /// Closes the file. With saveChanges, changes are saved first; a failure to save throws and leaves it
    /// open. Closing twice does nothing.
    void Close(bool saveChanges = false) const;
    /// True while the handle refers to a workbook that is not closed.
    bool isOpen() const;

private:
    friend class Workbooks;
    explicit Workbook(std::shared_ptr<OpenWorkbook> open) : shared(std::move(open)) {}
    OpenWorkbook& open() const;
    std::shared_ptr<OpenWorkbook> shared;
};

} // namespace excel
