// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/excelfiles.h"

#include "platform/excel/bookfile.h"
#include "platform/excel/rowheight.h"
#include "platform/excel/serialdate.h"
#include "platform/excel/text.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace excel::biff;
using excel::Value;

namespace {

// A workbook's records as comparable lines, without offsets.
QStringList content(const CompoundFile& file) {
    const QByteArray& stream = file.data(file.findStream(u"workbook"));
    QStringList lines;
    for (qsizetype at = 0; at + 4 <= stream.size() && get16(stream, at) != 0;) {
        Record record{get16(stream, at), stream.mid(at + 4, get16(stream, at + 2))};
        at += 4 + record.body.size();
        if (record.id == id::BoundSheet)
            put32(record.body, 0, 0);
        if (record.id != id::Index && record.id != id::DbCell && record.id != id::ExtendedSst)
            lines << QString::number(record.id, 16) + u' ' + QString::fromLatin1(record.body.toHex());
    }
    return lines;
}

} // namespace

class ExcelFormat : public ExcelFiles {};

// Cells may be reordered by parsing and writing a sheet; all else keeps its order.
TEST_F(ExcelFormat, savingAndEditingLoseNothing) {
    const QStringList rewritten{u"208"_s, u"200"_s, u"bd"_s, u"be"_s, u"27e"_s, u"201"_s, u"1c1"_s};
    const auto sorted = [&](const QByteArray& file) {
        QStringList lines = content(CompoundFile::parse(file));
        lines.removeIf([&](const QString& line) { return rewritten.contains(line.section(u' ', 0, 0)); });
        lines.sort();
        return lines;
    };
    const auto bodies = [](BookFile& file) {
        QStringList lines;
        for (const auto& [place, cell] : file.book().sheet(0).cells.cells())
            lines << place.name() + QString::fromLatin1(cell.record.body.toHex());
        return lines;
    };
    for (const QString& name : sampleNames) {
        SCOPED_TRACE(qPrintable(name));
        const QByteArray original = contentOf(samplePath(name));
        BookFile file(name, original);
        const CompoundFile before = CompoundFile::parse(original);
        const CompoundFile after = CompoundFile::parse(file.content());
        ASSERT_EQ(before.entries().size(), after.entries().size());
        for (size_t i = 0; i < before.entries().size(); ++i) {
            const auto& [oldEntry, oldData] = before.entries()[i];
            const auto& [newEntry, newData] = after.entries()[i];
            EXPECT_EQ(oldEntry.left(116), newEntry.left(116)); // all but sector and size
            EXPECT_TRUE(oldData == newData || before.entries()[i].name() == u"Workbook") << i;
        }
        EXPECT_EQ(content(before), content(after));

        file.book().sheet(0).changed = true;
        const QByteArray saved = file.content();
        EXPECT_EQ(sorted(original), sorted(saved));
        BookFile again(name, saved);
        EXPECT_EQ(bodies(file), bodies(again));
        EXPECT_EQ(file.content(), again.content());
    }
}

// Large enough for the sector allocation table to need a master table.
TEST_F(ExcelFormat, largeContainersRoundTrip) {
    CompoundFile file = CompoundFile::parse(contentOf(samplePath(u"filled_by_lo.xls"_s)));
    QRandomGenerator random(1);
    const int stream = file.findStream(u"Workbook");
    for (const int size : {0, 1, 64, 4095, 4096, 4097, 7'000'000, 17'000'000}) {
        QByteArray data(size, Qt::Uninitialized);
        std::generate(data.begin(), data.end(), [&] { return char(random.generate()); });
        file.setData(stream, data);
        const CompoundFile again = CompoundFile::parse(file.serialize());
        for (size_t i = 0; i < file.entries().size(); ++i)
            EXPECT_EQ(file.entries()[i].data, again.entries()[i].data) << size << ' ' << i;
    }
}

// Macros and embedded workbooks are in storages; a nested stream may be named Workbook too.
TEST_F(ExcelFormat, storagesAndTheirStreamsAreKept) {
    QByteArray content = contentOf(samplePath(u"t_xlwt.xls"_s));
    const qsizetype directory = 512 * (1 + qsizetype(get32(content, 48)));
    const auto entry = [&](int index, QStringView name, quint8 type, quint32 child) {
        const qsizetype at = directory + qsizetype(128) * index;
        content.replace(at, 128, QByteArray(128, '\0'));
        putName(content, at, name);
        put8(content, at + 66, type);
        put32(content, at + 68, container::noEntry);
        put32(content, at + 72, container::noEntry);
        put32(content, at + 76, child);
    };
    put32(content, directory + 128 + 72, 2); // right of the workbook's entry
    entry(2, u"MBD00012AB3", CompoundFile::Storage, 3);
    entry(3, u"Workbook", CompoundFile::Stream, container::noEntry);
    CompoundFile file = CompoundFile::parse(content);
    EXPECT_EQ(file.findStream(u"Workbook"), 1);
    file.setData(3, "embedded");
    BookFile book(u"x.xls"_s, file.serialize());
    book.book().sheet(0).unprotect();
    const CompoundFile saved = CompoundFile::parse(book.content());
    EXPECT_EQ(saved.data(3), "embedded");
    put32(content, directory + 456, 2); // a loop
    EXPECT_THROW(CompoundFile::parse(content), Refusal);
}

TEST_F(ExcelFormat, textsAreReadAcrossRecords) {
    const struct {
        std::vector<const char*> chunks; // hex
        std::vector<QString> texts;
    } cases[] = {
        {{"0300 00 61", "01 6200 AC20"}, {u"ab\u20AC"_s}},
        {{"0300 01 6100", "00 6263 0100 00 64"}, {u"abc"_s, u"d"_s}},
        {{"0100 08 0100 61", "0000 0500", "0100 00 62"}, {u"a"_s, u"b"_s}},
        {{"0100 0C 0100 02000000 61 00000500 AA", "BB 0100 00 62"}, {u"a"_s, u"b"_s}},
        {{"0000 00 0100 00 62"}, {u""_s, u"b"_s}},
    };
    for (const auto& c : cases) {
        std::vector<QByteArray> chunks;
        for (const char* hex : c.chunks)
            chunks.push_back(QByteArray::fromHex(hex));
        ChunkReader reader(chunks);
        for (const QString& text : c.texts)
            EXPECT_EQ(reader.richText(), text) << c.chunks[0];
    }
    for (const char* hex : {"", "0300", "0300 00 6162", "0200 01 4100 AC", "0100 08 0100 61 0000", "0180 00"})
        EXPECT_THROW(ChunkReader({QByteArray::fromHex(hex)}).richText(), Refusal) << hex;
}

TEST_F(ExcelFormat, serialNumbersAndDates) {
    const std::pair<double, const char*> cases[] = {
        {1, "01/01/1900"},  {59, "28/02/1900"},           {60, "60"},
        {61, "01/03/1900"}, {45351.999999, "01/03/2024"}, {45351.5, "29/02/2024 12:00:00"},
        {0.1 + 0.2, "0.3"}, {2958465, "31/12/9999"},      {2958466, "2958466"},
        {1e300, "1e+300"}};
    for (const auto& [serial, text] : cases) {
        const Value value = fromSerial(serial, false);
        EXPECT_EQ(value.text(), QString::fromLatin1(text));
        if (value.date() >= QDate(1900, 3, 1)) {
            EXPECT_NEAR(*toSerial(value.date(), value.time(), false), serial, 1e-5);
        }
    }
    EXPECT_EQ(fromSerial(0, true).date(), QDate(1904, 1, 1));
}

TEST_F(ExcelFormat, codesThatShowDates) {
    for (const char* code : {"dd/mm/yyyy", "yyyy\\-mm\\-dd\\ hh:mm", "[h]:mm", "[$-407]d. mmmm yyyy", "MM"})
        EXPECT_TRUE(isDateCode(QString::fromLatin1(code))) << code;
    for (const char* code : {"General", "#,##0_);[Red](#,##0)", "\"day\" 0", "0\\d", "0_h", "[Magenta]0"})
        EXPECT_FALSE(isDateCode(QString::fromLatin1(code))) << code;
}

TEST_F(ExcelFormat, formatsAreSharedAndLimited) {
    BookFile file(u"lo_native.xls"_s, contentOf(samplePath(u"lo_native.xls"_s)));
    Formats& formats = file.book().formats();
    CellFormat format = formats.clone(15);
    EXPECT_EQ(formats.intern(format), 15);
    format.setFont(formats.fontInColour(format.font(), 10));
    EXPECT_EQ(formats.fontInColour(format.font(), 10), format.font());
    EXPECT_EQ(formats.intern(format), formats.intern(format));
    EXPECT_THROW(
        for (int i = 0; i < 5000; ++i) {
            format.setNumberFormat(quint16(i + 200));
            formats.intern(format);
        },
        Refusal);
}

// With a wrong checksum over the formats all cells lose their theme colours.
TEST_F(ExcelFormat, checksumOfFormatsIsUpdated) {
    Records globals{{id::Bof, {}},
                    {id::Font, QByteArray(16, '\0')},
                    {id::Xf, QByteArray(20, '\1')},
                    {id::XfCrc, QByteArray(20, '\0')}};
    Formats formats(globals);
    CellFormat format = formats.clone(0);
    format.setLocked(false);
    formats.intern(format);
    formats.writeInto(globals);
    ASSERT_EQ(globals[4].id, id::XfCrc);
    EXPECT_EQ(get16(globals[4].body, 14), 2);
    EXPECT_EQ(get32(globals[4].body, 16), 0x3F99B798u);

    // A format derived from one with extended properties has none.
    put32(globals[2].body, 14, 1U << 25);
    EXPECT_EQ(get32(Formats(globals).clone(0).bytes(), 14), 0U);
}

// A Chinese character is two characters wide.
TEST_F(ExcelFormat, wrappedLines) {
    const std::tuple<const char*, double, int> cases[] = {
        {"", 10, 1},           {"one two", 7, 1},    {"one two", 6, 2},
        {"one\ntwo\n", 80, 3}, {"abcdefghij", 4, 3}, {"a abcdefghij", 4, 4},
        {"a b c d", 1, 4},     {"中中", 4, 1},       {"中中中", 4, 2}};
    for (const auto& [text, width, lines] : cases)
        EXPECT_EQ(wrappedLines(QString::fromUtf8(text), width), lines) << text;
}
