// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/bookfile.h"
#include "platform/excel/refusal.h"
#include "platform/excel/valuebook.h"

namespace excel {

struct ApplicationState;

/// The state shared by the handles of a workbook.
struct OpenWorkbook {
    std::shared_ptr<ApplicationState> application;
    std::unique_ptr<biff::BookFile> file; ///< null for one that is read only, and once it is closed
    std::unique_ptr<ValueBook> values;    ///< of a workbook that is read only; null once it is closed
    QString name;                         ///< of the file, also when it is closed
    bool changed = false;

    bool isOpen() const { return file || values; }
    QString path() const { return file ? file->path() : values->path; }
    void close() {
        file.reset();
        values.reset();
    }
    /// The workbook that can be changed; throws Failure for one that is read only.
    biff::BookFile& changeable() const;
};

struct ApplicationState {
    std::vector<std::weak_ptr<OpenWorkbook>> workbooks; ///< in the order of opening; the handles own them
    bool visible = false;
};

/// The same object if it is open; throws Failure otherwise.
OpenWorkbook& checkedOpen(const std::shared_ptr<OpenWorkbook>& open);

} // namespace excel
