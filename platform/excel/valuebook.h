// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/area.h"
#include "platform/excel/value.h"

#include <map>
#include <memory>
#include <vector>

namespace excel {

/// The values of one sheet.
struct ValueSheet {
    QString name;
    bool isWorksheet = true; ///< false for a chart, macro or dialog sheet
    bool isProtected = false;
    std::map<biff::Place, Value> cells = {}; ///< those that are not blank
};

/// The values of a workbook that is read only.
class ValueBook {
public:
    static constexpr int maxCells = 1'000'000; ///< that are not blank, in all sheets

    /// Position of the sheet of that name (in any case), or -1.
    int findSheet(QStringView name) const;
    /// Keeps a value that is not blank; one outside the rows and columns of a sheet is left out. Throws
    /// biff::Refusal when the workbook has too many cells.
    void put(ValueSheet& sheet, biff::Place place, const Value& value);
    Value value(int sheet, biff::Place place) const;

    QString path;
    std::vector<ValueSheet> sheets;

private:
    int cellCount = 0;
};

/// The error value of a name such as "#DIV/0!"; #VALUE! for an unknown one.
Value errorNamed(QStringView name);

/// The moment of a text such as 2024-02-29 or 2024-02-29T23:59:59.5, rounded to seconds; nothing for any
/// other text.
std::optional<Value> momentOf(const QString& text);

/// Reads a workbook that is a zip file of XML parts (.xlsx, .xlsm, .ods), given by the content that the file
/// of that path has. Throws Failure.
std::unique_ptr<ValueBook> readPackage(const QString& path, const QByteArray& content);

} // namespace excel
