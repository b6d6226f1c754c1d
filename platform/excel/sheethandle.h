// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/area.h"

#include <functional>
#include <memory>

namespace excel {

struct OpenWorkbook;

namespace biff {

class Editor;
enum class Access { Read, Write };

/// The target of worksheet, range and font objects: a sheet of a workbook that may have been closed
/// meanwhile.
class SheetHandle {
public:
    SheetHandle() = default;
    SheetHandle(std::shared_ptr<OpenWorkbook> open, int sheetIndex)
        : shared(std::move(open)), index(sheetIndex) {}

    /// The workbook; throws Failure when it is closed or missing.
    OpenWorkbook& workbook() const;
    int sheet() const { return index; }
    /// Runs work on the sheet's cells; a Refusal becomes a Failure that names file and sheet. Access::Write
    /// marks the workbook as changed.
    void edit(Access access, const std::function<void(Editor&)>& work) const;

private:
    std::shared_ptr<OpenWorkbook> shared;
    int index = 0;
};

} // namespace biff
} // namespace excel
