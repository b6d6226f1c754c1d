// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <vector>

namespace excel::biff {

/// One record of a workbook stream: a number that says what it is, and its bytes.
struct Record {
    quint16 id = 0;
    QByteArray body;
};
using Records = std::vector<Record>;

constexpr qsizetype maxRecordBody = 8224; ///< longer content goes on in Continue records
constexpr size_t maxRecords = 2'500'000;  ///< so that the cells a table holds at most can be saved

namespace id {
constexpr quint16 Formula = 0x0006;
constexpr quint16 Formula3 = 0x0206; ///< numbers of older versions, which some programs still write; the
constexpr quint16 Formula4 = 0x0406; ///< result stands where it stands in Formula
constexpr quint16 Eof = 0x000A;
constexpr quint16 Protect = 0x0012;
constexpr quint16 Password = 0x0013;
constexpr quint16 DateMode = 0x0022;
constexpr quint16 FilePass = 0x002F;
constexpr quint16 Font = 0x0031;
constexpr quint16 Continue = 0x003C;
constexpr quint16 DefaultColumnWidth = 0x0055;
constexpr quint16 ObjectProtect = 0x0063;
constexpr quint16 ColumnInfo = 0x007D;
constexpr quint16 BoundSheet = 0x0085;
constexpr quint16 StandardWidth = 0x0099;
constexpr quint16 PageSetup = 0x00A1;
constexpr quint16 MultiRk = 0x00BD;
constexpr quint16 MultiBlank = 0x00BE;
constexpr quint16 RichString = 0x00D6;
constexpr quint16 DbCell = 0x00D7;
constexpr quint16 ScenarioProtect = 0x00DD;
constexpr quint16 Xf = 0x00E0;
constexpr quint16 MergedCells = 0x00E5;
constexpr quint16 SharedStrings = 0x00FC;
constexpr quint16 LabelSst = 0x00FD;
constexpr quint16 ExtendedSst = 0x00FF;
constexpr quint16 RecalculationId = 0x01C1;
constexpr quint16 Dimensions = 0x0200;
constexpr quint16 Blank = 0x0201;
constexpr quint16 Number = 0x0203;
constexpr quint16 Label = 0x0204;
constexpr quint16 BoolError = 0x0205;
constexpr quint16 String = 0x0207;
constexpr quint16 Row = 0x0208;
constexpr quint16 Index = 0x020B;
constexpr quint16 Array = 0x0221;
constexpr quint16 DefaultRowHeight = 0x0225;
constexpr quint16 Table = 0x0236;
constexpr quint16 Rk = 0x027E;
constexpr quint16 Format = 0x041E;
constexpr quint16 SharedFormula = 0x04BC;
constexpr quint16 Bof = 0x0809;
constexpr quint16 BookExtension = 0x0863;
constexpr quint16 SheetProtection = 0x0867;
constexpr quint16 XfCrc = 0x087C;
constexpr quint16 Theme = 0x0896;
constexpr quint16 HeaderFooter = 0x089C;
} // namespace id

constexpr bool isFormula(quint16 recordId) {
    return recordId == id::Formula || recordId == id::Formula3 || recordId == id::Formula4;
}

/// Charts stand as whole substreams, from Bof to Eof, among a sheet's records. These two look only at the
/// sheet's own records; `depth` is 0 when `records` begin with the sheet's Bof, 1 when they begin behind it.
int lastOf(const Records& records, quint16 id, int depth = 0); ///< position, or -1
void eraseOwn(Records& records, bool (*unwanted)(const Record&), int depth = 0);

void appendRecord(QByteArray& stream, const Record& record);

} // namespace excel::biff
