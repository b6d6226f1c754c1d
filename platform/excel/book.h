// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/formats.h"
#include "platform/excel/sharedstrings.h"
#include "platform/excel/sheet.h"

#include <memory>

namespace excel::biff {

/// The workbook stream: global records and one substream a sheet. Everything unedited is kept as read; only
/// the offsets of the sheets are rewritten and the indexes of offsets dropped.
class Book {
public:
    explicit Book(const QByteArray& stream); ///< Refusal when it is no readable BIFF8 workbook
    QByteArray stream();

    /// Position of the sheet of that name (in any case), or -1.
    int findSheet(QStringView name) const;
    int sheetCount() const { return int(sheets.size()); }
    bool isWorksheet(int sheet) const { return sheets[size_t(sheet)].worksheet; }
    QString sheetName(int sheet) const { return sheets[size_t(sheet)].name; }
    /// A worksheet, parsed at the first call; Refusal for a chart, a macro sheet or a damaged one.
    Sheet& sheet(int sheet);

    SharedStrings& strings() { return *texts; }
    Formats& formats() { return *formatLists; }
    bool from1904() const { return countsFrom1904; }
    /// Marks stored formula results as stale: other programs then recalculate when they open the file.
    void valuesChanged() { resultsStale = true; }

private:
    struct Substream {
        quint32 offset; ///< in the stream that was read
        quint16 type;
        Records records; ///< from Bof to Eof
    };
    struct SheetEntry {
        QString name;
        size_t substream; ///< the sheets are in the order of the BoundSheet records
        bool worksheet;
        std::unique_ptr<Sheet> taken;
    };
    void cut(const QByteArray& stream);
    void readSheets();
    Records globals() const;

    std::vector<Substream> substreams;
    std::vector<SheetEntry> sheets;
    std::unique_ptr<SharedStrings> texts;
    std::unique_ptr<Formats> formatLists;
    bool countsFrom1904 = false;
    bool resultsStale = false;
};

} // namespace excel::biff
