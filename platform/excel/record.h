// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <vector>

namespace excel::biff {

/// One record of a workbook stream: its type number and its bytes.
struct Record {
    quint16 id = 0;
    QByteArray body;
};
using Records = std::vector<Record>;

constexpr qsizetype maxRecordBody = 8224; ///< longer content is continued in Continue records
constexpr size_t maxRecords = 2'500'000;  ///< enough for the largest cell table

namespace id {
enum : quint16 {
    Formula = 0x0006,
    Formula3 = 0x0206, ///< of older versions, still written by some programs;
    Formula4 = 0x0406, ///< the result is at the same offset as in Formula
    Eof = 0x000A,
    Protect = 0x0012,
    Password = 0x0013,
    DateMode = 0x0022,
    FilePass = 0x002F,
    Font = 0x0031,
    Continue = 0x003C,
    DefaultColumnWidth = 0x0055,
    ObjectProtect = 0x0063,
    ColumnInfo = 0x007D,
    BoundSheet = 0x0085,
    StandardWidth = 0x0099,
    PageSetup = 0x00A1,
    MultiRk = 0x00BD,
    MultiBlank = 0x00BE,
    RichString = 0x00D6,
    DbCell = 0x00D7,
    ScenarioProtect = 0x00DD,
    Xf = 0x00E0,
    MergedCells = 0x00E5,
    SharedStrings = 0x00FC,
    LabelSst = 0x00FD,
    ExtendedSst = 0x00FF,
    RecalculationId = 0x01C1,
    Dimensions = 0x0200,
    Blank = 0x0201,
    Number = 0x0203,
    Label = 0x0204,
    BoolError = 0x0205,
    String = 0x0207,
    Row = 0x0208,
    Index = 0x020B,
    Array = 0x0221,
    DefaultRowHeight = 0x0225,
    Table = 0x0236,
    Rk = 0x027E,
    Format = 0x041E,
    SharedFormula = 0x04BC,
    Bof = 0x0809,
    BookExtension = 0x0863,
    SheetProtection = 0x0867,
    XfCrc = 0x087C,
    Theme = 0x0896,
    HeaderFooter = 0x089C,
};
} // namespace id

constexpr bool isFormula(quint16 recordId) {
    return recordId == id::Formula || recordId == id::Formula3 || recordId == id::Formula4;
}

/// Charts are whole substreams, from Bof to Eof, among a sheet's records. These two functions see only the
/// sheet's own records; `depth` is 0 when `records` begin with the sheet's Bof, 1 when they begin after it.
int lastOf(const Records& records, quint16 id, int depth = 0); ///< position, or -1
void eraseOwn(Records& records, bool (*unwanted)(const Record&), int depth = 0);

void appendRecord(QByteArray& stream, const Record& record);

} // namespace excel::biff
