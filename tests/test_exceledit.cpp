// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/excelfiles.h"

#include "platform/excel/bookfile.h"
#include "platform/excel/editor.h"

using excel::Value;
using namespace excel::biff;

namespace {
const QString password = u"kvtwpa"_s;

// A workbook of one worksheet: a sample's global records without `leftOut`, `globals`, then `sheet`.
QByteArray bookStream(const Records& globals, const Records& sheet, const QList<quint16>& leftOut = {}) {
    const CompoundFile container = CompoundFile::parse(contentOf(samplePath(u"lo_native.xls"_s)));
    const QByteArray& sample = container.data(container.findStream(u"Workbook"));
    QByteArray stream;
    quint32 boundSheet = 0;
    for (qsizetype at = 0; get16(sample, at) != id::Eof;) {
        const Record record{get16(sample, at), sample.mid(at + 4, get16(sample, at + 2))};
        at += 4 + record.body.size();
        if (record.id == id::BoundSheet && boundSheet != 0)
            continue; // one sheet is enough
        if (record.id == id::BoundSheet)
            boundSheet = quint32(stream.size()) + 4;
        if (!leftOut.contains(record.id) &&
            std::none_of(globals.begin(), globals.end(), [&](const Record& r) { return r.id == record.id; }))
            appendRecord(stream, record);
    }
    for (const Record& record : globals)
        appendRecord(stream, record);
    appendRecord(stream, {id::Eof, {}});
    put32(stream, boundSheet, quint32(stream.size()));
    appendRecord(stream, {id::Bof, QByteArray::fromHex("00061000bb0dcc0700000000060000 00")});
    for (const Record& record : sheet)
        appendRecord(stream, record);
    appendRecord(stream, {id::Eof, {}});
    return stream;
}

// Parses "number body" in hex, separated by semicolons.
Records records(const QByteArray& text) {
    Records result;
    for (const QByteArray& part : text.split(';')) {
        const QByteArray bytes = QByteArray::fromHex(part);
        if (!bytes.isEmpty())
            result.push_back({quint16(quint8(bytes[0]) << 8 | quint8(bytes[1])), bytes.mid(2)});
    }
    return result;
}

// Texts, 8 and 16 bits a character, that span many Continue records.
QString longText(int i) {
    return QString(1 + (i * 37) % 3000, i % 3 == 0 ? QChar(0x4E00 + i) : QChar(u'a' + i % 26));
}
} // namespace

struct ExcelEdit : ExcelFiles {};

// Cells outside the cleared range are kept.
TEST_F(ExcelEdit, xlrdReadsWhatIsWrittenIntoWorkbooksOfEachProgram) {
    const QString wide = u"\u20ACuro, \u4E2D, \U0001F600"_s;
    const QString manyRecords = QString(9000, u'x') + QString(9000, u'\u4E2D');
    const std::pair<Value, QJsonValue> values[] = {
        {wide, wide},
        {-1234.5, -1234.5},
        {Value(QDate(2023, 12, 31), QTime(23, 59, 59)), u"2023-12-31 23:59:59"_s},
        {Value::boolean(true), 1},
        {u"12"_s, u"12"_s},
        {manyRecords, manyRecords}};
    for (const QString& sample : sampleNames) {
        SCOPED_TRACE(sample);
        const excel::Workbook book = application.Workbooks().Open(samplePath(sample));
        const excel::Worksheet sheet = book.Worksheets(firstSheet(sample));
        sheet.Unprotect(password);
        sheet.Range(u"A14"_s, u"G65536"_s).Clear();
        for (int i = 0; i < int(std::size(values)); ++i)
            sheet.Cells(200 + i, 2).setValue(values[i].first);
        for (int i = 0; i < 400; ++i)
            sheet.Cells(200 + i, 1).setValue(longText(i));
        sheet.Protect(password);
        book.SaveAs(path(sample));
        const QJsonObject cells = readByXlrd(path(sample));
        for (int i = 0; i < int(std::size(values)); ++i)
            EXPECT_TRUE(cells[u"B%1"_s.arg(200 + i)][u"value"] == values[i].second) << i;
        for (int i = 0; i < 400; ++i)
            ASSERT_EQ(cells[u"A%1"_s.arg(200 + i)][u"value"].toString(), longText(i)) << i;
        const QJsonObject before = readByXlrd(samplePath(sample));
        for (auto at = before.begin(); at != before.end(); ++at)
            EXPECT_TRUE(at.value() == cells[at.key()] || at.value()[u"type"].toInt() == 0) << at.key();
    }
}

TEST_F(ExcelEdit, protectionIsKeptAndChecked) {
    excel::Workbook book = application.Workbooks().Open(copyOf(u"t_xlwt.xls"_s));
    const excel::Worksheet sheet = book.Worksheets(u"Form"_s);
    sheet.Range(u"B2"_s).setValue(u"an unlocked cell"_s);
    EXPECT_TRUE(errorOf([&] {
                    sheet.Range(u"A2"_s).setValue(1);
                }).contains(u"\"Form\" of the file \"t_xlwt.xls\" is protected"_s));
    for (const QString& wrong : {u"KVTWPA"_s, u""_s, u"caf\u00E9"_s})
        EXPECT_FALSE(errorOf([&] { sheet.Unprotect(wrong); }).isEmpty()) << wrong;
    sheet.Unprotect(password);
    sheet.Range(u"A2"_s).setValue(1);
}

// Column C and row 3 have formats of their own (not locked); A4:B5 and A2:B3 are merged.
TEST_F(ExcelEdit, clearLeavesPlainCellsAndTheRowsAbove) {
    const QByteArray stream = bookStream(
        {}, records("007D 01000400 0009 1000 0000 0000; 0200; 0208 0300 0000 0000 ff00 00000000 8001 1000;"
                    "0203 0300 0200 0f00 000000000000f03f; 0203 0000 0200 0f00 000000000000f03f;"
                    "00E5 0200 0300 0400 0000 0100 0100 0200 0000 0100"));
    Book book(stream);
    {
        Editor editor(book, 0);
        editor.changeFormat({5, 5}, [](auto& format) { format.setLocked(false); });
        editor.clear({{2, 0}, {65535, 2}});
        EXPECT_TRUE(editor.value({3, 2}).isBlank());
    }
    Book again(book.stream());
    Editor editor(again, 0);
    const auto formatOf = [&](Place place) { return editor.format(place).bytes(); };
    const QByteArray plain = again.formats().cellFormat(15).bytes();
    const QByteArray column = again.formats().cellFormat(16).bytes();
    ASSERT_NE(plain, column);
    EXPECT_EQ(editor.value({0, 2}).text(), u"1"_s);
    // Above the cleared area, right of it, and within it (one in the formatted row).
    for (const Place& place : {Place{1, 1}, Place{1, 2}, Place{3, 3}, Place{100, 3}})
        EXPECT_EQ(formatOf(place), column) << place.name();
    for (const Place& place : {Place{100, 2}, Place{3, 0}})
        EXPECT_EQ(formatOf(place), plain) << place.name();
    EXPECT_FALSE(again.sheet(0).isMerged({3, 0}));
    EXPECT_TRUE(again.sheet(0).isMerged({2, 0})); // crosses the edge
    EXPECT_LT(again.sheet(0).cells.cells().size(), 20U);
}

// Workbooks that spreadsheet programs accept are opened, and saved so that they open again. Tests cell A1.
TEST_F(ExcelEdit, oddWorkbooksAreOpenedAsOtherProgramsOpenThem) {
    const QByteArray three = "0203 0000 0000 0f00 0000000000000840";
    const QByteArray row = "0208 0000 0000 0100 ff00 0000 0000 00010f00";
    const QByteArray text = "00FD 0000 0000 0f00 00000000";
    const struct {
        const char* name;
        QByteArray sheet;
        QString value;
        QByteArray globals = {};
        QList<quint16> leftOut = {};
    } cases[] = {
        {"formula 4", "0406 0000 0000 0f00 0000000000000840 0000 00000000 0300 1e0300", u"3"_s},
        {"error", "0205 0000 0000 0f00 07 01", u"#DIV/0!"_s},
        {"label", "0204 0000 0000 0f00 0000", {}},
        {"cut label", "0204 0000 0000 0f00 0500 00 616263", u"abc"_s},
        {"huge count", text, u"abc"_s, "00FC FFFFFFFF FFFFFF7F 0300 00 616263"},
        {"continue", text, u"abcd"_s, "00FC 01000000 01000000 0400 00 6162; 003C; 003C 00 6364"},
        {"row continue", row + "; 003C;" + three, u"3"_s},
        {"cell continue", three + "; 003C; 00BE 0000 0100 0f00 0f00 0200; 003C", u"3"_s},
        {"more texts than counted", text, u"a"_s,
         "00FC 01000000 01000000 0100 00 61 0100 00 62; 003C 0100 00 63"},
        {"no fonts or formats", three, u"3"_s, {}, {id::Font, id::Xf, id::Format}},
    };
    for (const auto& [name, sheet, value, globals, leftOut] : cases) {
        SCOPED_TRACE(name);
        const QString error = errorOf([&] {
            CompoundFile container = CompoundFile::parse(contentOf(samplePath(u"lo_native.xls"_s)));
            container.setData(container.findStream(u"Workbook"),
                              bookStream(records(globals), records(sheet), leftOut));
            BookFile file(u"x.xls"_s, container.serialize());
            Editor editor(file.book(), 0);
            EXPECT_EQ(editor.value({0, 0}).text(), value);
            editor.setValue({5, 5}, u"new"_s);
            editor.setFontColour({5, 5}, 10);
            BookFile saved(u"x.xls"_s, file.content());
            Editor again(saved.book(), 0);
            EXPECT_EQ(again.value({0, 0}).text() + again.value({5, 5}).text(), value + u"new");
        });
        EXPECT_EQ(error, QString());
    }
}

// Row heights stop at the maximum; a sheet with too much text is no longer wrapped.
TEST_F(ExcelEdit, rowHeightAndWrappingAreLimited) {
    constexpr int rows = 700, handSet = 1, unwrapped = rows;
    constexpr quint16 highest = 8190;
    Book book(bookStream({}, records("0208 0100 0000 0000 2c01 00000000 4001 0f00")));
    Editor editor(book, 0);
    for (int row = 0; row <= rows; ++row) {
        editor.setValue({row, 0}, QString(32'767, u'x'));
        editor.changeFormat({row, 0}, [&](auto& format) { format.setWrapped(row != unwrapped); });
    }
    Book again(book.stream());
    const auto height = [&](int row) { return get16(*again.sheet(0).cells.findRow(row), rowfield::height); };
    EXPECT_EQ(height(0), highest);
    EXPECT_LT(height(rows - 1), highest / 10);
    EXPECT_EQ(height(handSet), 300);
    EXPECT_EQ(height(unwrapped), again.sheet(0).defaultRowHeight());
}

// A3 and A4 share the formula stored at A3.
TEST_F(ExcelEdit, sharedFormulasStayIntact) {
    Book book(
        bookStream({}, records("0006 0200 0000 0f00 000000000000f03f 0800 00000000 0500 01 0200 0000;"
                               "04BC 020003000000 0000 0300 1e0100;"
                               "0006 0300 0000 0f00 000000000000f03f 0800 00000000 0500 01 0200 0000")));
    Editor editor(book, 0);
    EXPECT_TRUE(errorOf([&] { editor.setValue({2, 0}, 5); }).contains(u"A4"_s));
    EXPECT_TRUE(errorOf([&] { editor.clear({{0, 0}, {2, 0}}); }).contains(u"A3"_s));
    EXPECT_EQ(editor.value({2, 0}).text(), u"1"_s);
    editor.changeFormat({2, 0}, [](auto& format) { format.setLocked(false); });
    Book kept(book.stream());
    EXPECT_EQ(kept.sheet(0).cells.find({2, 0})->followers.size(), 1U);
    editor.setValue({3, 0}, 5); // the cell without the stored formula
    editor.setValue({2, 0}, 5); // now not shared any more
}

// B1 =A1, B2 =A2 and B3 =A1+A1; A2 is a text.
TEST_F(ExcelEdit, theResultOfAFormulaThatRepeatsACellFollowsIt) {
    Book book(bookStream(
        {}, records("0006 0000 0100 0f00 000000000000f03f 0000 00000000 0500 44 0000 00c0;"
                    "0006 0100 0100 0f00 000000000000f03f 0000 00000000 0500 44 0100 00c0;"
                    "0006 0200 0100 0f00 000000000000f03f 0000 00000000 0b00 44 0000 00c0 44 0000 00c0 03")));
    Editor editor(book, 0);
    editor.setValue({0, 0}, 7);
    editor.setValue({1, 0}, u"seven"_s);
    Book saved(book.stream());
    for (const auto& [row, result] : {std::pair(0, 7), {1, 1}, {2, 1}})
        EXPECT_EQ(Editor(saved, 0).value({row, 1}).number(), result) << row;
}

TEST_F(ExcelEdit, datesFollowTheWorkbooksDateSystem) {
    Book book(bookStream(records("0022 0100; 01C1 c1010000 12345678"),
                         records("0203 0000 0000 0f00 0000000000000000")));
    Editor editor(book, 0);
    editor.setValue({1, 0}, QDate(2024, 2, 29));
    EXPECT_EQ(editor.value({1, 0}).date(), QDate(2024, 2, 29));
    const QByteArray body = book.sheet(0).cells.find({1, 0})->record.body;
    EXPECT_EQ(getDouble(body, 6), 45351 - 1462);
    for (const Value& value :
         {Value(QDate(1899, 12, 31)), Value(QDate()), Value(qQNaN()), Value(QString(32768, u'x'))})
        EXPECT_FALSE(errorOf([&] { editor.setValue({1, 0}, value); }).isEmpty());
    EXPECT_EQ(editor.value({1, 0}).date(), QDate(2024, 2, 29));
    // Formulas are recalculated when the file is opened.
    EXPECT_TRUE(book.stream().contains(QByteArray::fromHex("c1010800 c1010000 00000000")));
}
