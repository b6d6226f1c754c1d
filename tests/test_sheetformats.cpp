// SPDX-License-Identifier: GPL-3.0-or-later
// Workbooks of newer Excel and OpenDocument files, read through the objects for Excel 97-2003 workbooks.
#include "tests/packagefiles.h"

using excel::Value, excel::Worksheet;

namespace {
using Cells = std::vector<std::pair<const char*, Value>>; // address and value

void expectCells(const Worksheet& sheet, const Cells& cells) {
    for (const auto& [address, value] : cells) {
        const Value read = sheet.Range(QString::fromLatin1(address)).Value();
        EXPECT_TRUE(read == value) << address << ": " << read.text() << ", not " << value.text();
    }
}

const Value leapDay = QDate(2024, 2, 29);

/// Whether LibreOffice keeps the value: it counts the first two months of 1900 otherwise, and computes the
/// formulas E9 and F9 of the examples, which have no result in the file.
bool isKept(int row, int column, const Value& value) {
    return !(row == 9 && (column == 5 || column == 6)) &&
           !(value.date().isValid() && value.date() < QDate(1900, 3, 1));
}

/// The value as LibreOffice writes it: an entered TRUE of a workbook becomes a formula with a number.
Value asConverted(const Value& value) {
    return value.truth() ? Value(*value.truth() ? 1 : 0) : value;
}
} // namespace

struct SheetFormats : PackageFiles {};

// What LibreOffice makes of a workbook has the same value in every cell.
TEST_F(SheetFormats, conversionsReadAsTheWorkbookTheyCameFrom) {
    QStringList files;
    for (const QString& sample : sampleNames + QStringList{u"formulas_and_merges.xls"_s})
        files << copyOf(sample);
    for (const QString& type : {u"xlsx"_s, u"ods"_s})
        convertByOffice(type, files, folder.path());
    int compared = 0;
    for (const QString& file : files) {
        const excel::Workbook book = application.Workbooks().Open(file);
        for (const QString& type : {u"xlsx"_s, u"ods"_s}) {
            SCOPED_TRACE(file + u' ' + type);
            const excel::Workbook other =
                application.Workbooks().Open(file.chopped(3) + type); // beside the workbook
            ASSERT_EQ(other.SheetNames(), book.SheetNames());
            for (const QString& name : book.SheetNames()) {
                const Worksheet sheet = book.Worksheets(name);
                const Worksheet same = other.Worksheets(name.toUpper());
                EXPECT_EQ(same.IsProtected(), sheet.IsProtected());
                for (int row = 1; row <= 100; ++row)
                    for (int column = 1; column <= 20; ++column) {
                        const Value value = sheet.Cells(row, column).Value();
                        if (!isKept(row, column, value))
                            continue;
                        compared += value.isBlank() ? 0 : 1;
                        EXPECT_TRUE(asConverted(same.Cells(row, column).Value()) == asConverted(value))
                            << row << ',' << column << ' ' << value.text() << ", read "
                            << same.Cells(row, column).Value().text();
                    }
            }
        }
    }
    EXPECT_GT(compared, 150);
}

TEST_F(SheetFormats, textsNumbersAndDatesOfXlsxParts) {
    const QByteArray strings = "<si><t>plain</t></si><si><r><rPr><b/></rPr><t>ri</t></r><r><t>ch </t></r>"
                               "<rPh sb='0'><t>guide</t></rPh></si><si><t>a_x000D_&#10;_x00e9_ _x1 </t></si>";
    const QByteArray rows =
        "<row><c t='s'><v>0</v></c><c t='s'><v>1</v></c><c t='s'><v>2</v></c><c/><c s='9'><v>7</v></c></row>"
        "<row r='3'><c r='B3' t='inlineStr'><is><r><t>in</t></r><t>line</t><rPh><t>x</t></rPh></is></c>"
        "<c t='str'><f>A1</f><v> words</v></c><c t='b'><v>0</v></c><c t='e'><v>#N/A</v></c>"
        "<c t='d'><v>2024-02-29T23:59:59.6</v></c></row>"
        "<row r='4'><c s='1'><v>45351</v></c><c s='2'><v>45351</v></c><c s='3'><v>45351.5</v></c>"
        "<c s='4'><v>0.5</v></c><c s='5'><v>2</v></c><c r='XFD4'><v>1</v></c></row>"
        "<row r='65536'><c r='IV65536'><v>8</v></c></row><row r='65537'><c r='A65537'><v>1</v></c></row>";
    const Cells cells{{"A1", u"plain"_s},
                      {"B1", u"rich "_s},
                      {"C1", u"a\r\n\u00E9 _x1 "_s},
                      {"E1", 7},
                      {"B3", u"inline"_s},
                      {"C3", u" words"_s},
                      {"D3", Value::boolean(false)},
                      {"E3", Value::error(0x2A)},
                      {"F3", QDate(2024, 3, 1)},
                      {"IV65536", 8}};
    const Worksheet sheet = answersOf(xlsxParts(rows, strings));
    expectCells(sheet, cells);
    expectCells(sheet, {{"A4", leapDay},
                        {"B4", 45351},
                        {"C4", Value(QDate(2024, 2, 29), QTime(12, 0))},
                        {"D4", 0.5},
                        {"E4", QDate(1900, 1, 2)}});
    expectCells(answersOf(xlsxParts(rows, strings, "<workbookPr date1904='1'/>")),
                {{"A4", QDate(2028, 3, 1)}, {"B4", 45351}, {"E4", QDate(1904, 1, 3)}});
}

TEST_F(SheetFormats, textsNumbersAndRepetitionsOfOdsParts) {
    const QByteArray rows =
        "<table:shapes><table:table-row><table:table-cell office:value-type='float' office:value='9'/>"
        "</table:table-row></table:shapes><table:table-header-rows><table:table-row>"
        "<table:table-cell office:value-type='string'><office:annotation><text:p>note</text:p>"
        "</office:annotation><text:p>\n  a<text:span>b<text:a>c</text:a></text:span> \n  d<text:s "
        "text:c='2'/>e"
        "<text:tab/><text:line-break/>f</text:p><text:p> g  &amp;</text:p></table:table-cell>"
        "<table:table-cell office:value-type='string' office:string-value='kept'><text:p>shown</text:p>"
        "</table:table-cell></table:table-row></table:table-header-rows>"
        "<table:table-row-group><table:table-row table:number-rows-repeated='3'>"
        "<table:table-cell table:number-columns-repeated='2'/><table:covered-table-cell "
        "table:number-columns-repeated='2' office:value-type='percentage' "
        "office:value='0.5'/></table:table-row>"
        "</table:table-row-group><table:table-row>"
        "<table:table-cell office:value-type='date' office:date-value='2024-02-29T12:00:00'/>"
        "<table:table-cell office:value-type='time' office:time-value='PT36H00M00S'/>"
        "<table:table-cell office:value-type='time' office:time-value='PT06H00M00.00S'/>"
        "<table:table-cell office:value-type='boolean' office:boolean-value='true'/>"
        "<table:table-cell office:value-type='currency' office:value='-1e3' table:number-columns-repeated="
        "'16379'/></table:table-row>"
        "<table:table-row table:number-rows-repeated='1048570'><table:table-cell "
        "table:number-columns-repeated='16384'/></table:table-row>"
        "<table:table-row><table:table-cell office:value-type='float' office:value='1'/></table:table-row>";
    expectCells(answersOf(odsParts(rows)), {{"A1", u"abc d  e\t\nf\n g  &"_s},
                                            {"B1", u"kept"_s},
                                            {"B2", {}},
                                            {"C2", 0.5},
                                            {"D4", 0.5},
                                            {"E4", {}},
                                            {"A5", Value(QDate(2024, 2, 29), QTime(12, 0))},
                                            {"B5", Value(QDate(1900, 1, 1), QTime(12, 0))},
                                            {"C5", 0.25},
                                            {"D5", Value::boolean(true)},
                                            {"E5", -1000},
                                            {"IV5", -1000},
                                            {"A65536", {}}});
}
