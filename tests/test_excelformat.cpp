// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/excelfiles.h"

#include "fuzz/exerciseworkbook.h"
#include "platform/excel/bookfile.h"
#include "platform/excel/rowheight.h"
#include "platform/excel/serialdate.h"
#include "platform/excel/text.h"

#include <QRandomGenerator>

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

template <size_t size> QByteArray bytes(const char (&literal)[size]) {
    return {literal, size - 1};
}

QByteArray sample(int index = 0) {
    return contentOf(samplePath(sampleNames[index]));
}

// An example whose workbook stream says that it is of Excel 95.
QByteArray ofExcel95() {
    QByteArray content = sample();
    put16(content, content.indexOf(bytes("\x09\x08\x10\0\0\x06")) + 4, 0x0500);
    return content;
}

// An example with a renamed workbook stream.
QByteArray renamed(QStringView name) {
    QByteArray content = sample();
    putName(content, content.indexOf(QByteArray("W\0o\0r\0k\0b\0o\0o\0k\0", 16)), name);
    return content;
}
} // namespace

struct ExcelFormat : ExcelFiles {};

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
        SCOPED_TRACE(name);
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

// A text with fonts and a phonetic guide, then one that changes to 16 bits a character.
TEST_F(ExcelFormat, textsAreReadAcrossRecords) {
    std::vector<QByteArray> chunks;
    for (const char* hex : {"0100 0C 0100 02000000 61 00000500 AA", "BB 0300 00 62", "01 6200 AC20"})
        chunks.push_back(QByteArray::fromHex(hex));
    ChunkReader reader(chunks);
    EXPECT_EQ(reader.richText(), u"a"_s);
    EXPECT_EQ(reader.richText(), u"bb\u20AC"_s);
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

TEST_F(ExcelFormat, reportsTheActualFileType) {
    const std::pair<QByteArray, const char*> cases[] = {
        {"", "is empty"},
        {bytes("PK\x03\x04\x14\0\x06\0[Content_Types].xml"), "is damaged: the directory"},
        {"\xEF\xBB\xBF \n<html><table>", "(HTML)"},
        {"Question;Score\r\n1;5\r\n", "CSV"},
        {bytes("\x09\x04\x06\0\0\0\x10\0\0\0"), "Excel 95 or older"},
        {bytes("\x89PNG\0\0\0\0"), "is no Excel workbook"},
        {renamed(u"WordDocument"), "holds no workbook"},
        {ofExcel95(), "Excel 95 or older"},
        {sample().left(3000), "is damaged"},
    };
    for (const auto& [content, phrase] : cases) {
        writeFile(path(u"file.xls"_s), content);
        const QString error = errorOf([&] { application.Workbooks().Open(path(u"file.xls"_s)); });
        EXPECT_TRUE(error.startsWith(u"The file \"file.xls\" ") && error.endsWith(u'.') &&
                    error.contains(QString::fromLatin1(phrase)))
            << phrase << ": " << error;
    }
    for (const auto& [file, phrase] :
         {std::pair(path(u"none.xls"_s), u"was not found"_s), {folder.path(), u"folder"_s}})
        EXPECT_TRUE(errorOf([&] { application.Workbooks().Open(file); }).contains(phrase)) << phrase;
}

TEST_F(ExcelFormat, aFailedSaveLeavesTheOldFile) {
    const QString file = copyOf(u"t_xlwt.xls"_s);
    excel::Workbook book = application.Workbooks().Open(file);
    const QByteArray before = contentOf(file);
    book.Worksheets(u"Form"_s).Unprotect(u"kvtwpa"_s);

    QFile::setPermissions(file, QFileDevice::ReadOwner);
    EXPECT_TRUE(errorOf([&] { book.Close(true); }).contains(u"is read-only"_s));
    QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_TRUE(errorOf([&] { book.SaveAs(path(u"missing/x.xls"_s)); }).contains(u"could not be saved"_s));

    EXPECT_EQ(contentOf(file), before);
    ASSERT_TRUE(book.isOpen());

    writeFile(file, before + QByteArray(512, '\0')); // by another program
    EXPECT_TRUE(errorOf([&] { book.Save(); }).contains(u"changed by another program"_s));
    book.SaveAs(path(u"other.xls"_s));
    EXPECT_FALSE(application.Workbooks().Open(path(u"other.xls"_s)).Worksheets(u"Form"_s).IsProtected());
}

TEST_F(ExcelFormat, aWorkbookStreamWithTheOlderNameIsRead) {
    EXPECT_FALSE(exerciseWorkbook(renamed(u"Book")).isEmpty());
}

// Damaged files are refused with a sentence or saved readably; they never crash or hang the program.
TEST_F(ExcelFormat, mutatedFilesAreRefusedOrReadable) {
    QRandomGenerator random(20240229);
    int readable = 0, refused = 0;
    for (int round = 0; round < 2500; ++round) {
        QByteArray content = sample(round % int(sampleNames.size()));
        if (round % 5 == 0)
            content.truncate(random.bounded(int(content.size())));
        for (int n = random.bounded(1, 8); n > 0 && round % 5 != 0; --n) {
            const int at = random.bounded(round % 2 == 0 ? int(content.size()) : 4096);
            const quint8 values[] = {0, 0xFF, 0x7F, 0x80, 1, quint8(random.generate())};
            content[at] = char(values[random.bounded(6)]);
        }
        const QByteArray saved = exerciseWorkbook(content);
        ++(saved.isEmpty() ? refused : readable);
        ASSERT_TRUE(saved.isEmpty() || !exerciseWorkbook(saved).isEmpty()) << "round " << round;
    }
    EXPECT_GT(readable, 300);
    EXPECT_GT(refused, 300);
}
