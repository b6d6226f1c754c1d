// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/excelfiles.h"

#include "fuzz/exerciseworkbook.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace excel::biff;

namespace {

template <size_t size> QByteArray bytes(const char (&literal)[size]) {
    return {literal, size - 1};
}

QByteArray sample(int index = 0) {
    return contentOf(samplePath(sampleNames[index]));
}

// An example with a changed workbook stream.
QByteArray withStream(const std::function<void(QByteArray&)>& change) {
    CompoundFile file = CompoundFile::parse(sample());
    const int stream = file.findStream(u"Workbook");
    QByteArray data = file.data(stream);
    change(data);
    file.setData(stream, data);
    return file.serialize();
}

// An example with a renamed workbook stream.
QByteArray renamed(QStringView name) {
    QByteArray content = sample();
    putName(content, content.indexOf(QByteArray("W\0o\0r\0k\0b\0o\0o\0k\0", 16)), name);
    return content;
}

} // namespace

class ExcelRefusal : public ExcelFiles {};

TEST_F(ExcelRefusal, reportsTheActualFileType) {
    const std::pair<QByteArray, const char*> cases[] = {
        {"", "is empty"},
        {bytes("PK\x03\x04\x14\0\x06\0[Content_Types].xml"), "is damaged: the directory"},
        {"\xEF\xBB\xBF \n<html><table>", "(HTML)"},
        {"Question;Score\r\n1;5\r\n", "CSV"},
        {bytes("\x09\x04\x06\0\0\0\x10\0\0\0"), "Excel 95 or older"},
        {bytes("\x89PNG\0\0\0\0"), "is no Excel workbook"},
        {renamed(u"WordDocument"), "holds no workbook"},
        {withStream([](auto& data) { put16(data, 4, 0x0500); }), "Excel 95 or older"},
        {sample().left(3000), "is damaged"},
    };
    for (const auto& [content, phrase] : cases) {
        writeFile(path(u"file.xls"_s), content);
        const QString error = errorOf([&] { application.Workbooks().Open(path(u"file.xls"_s)); });
        EXPECT_TRUE(error.startsWith(u"The file \"file.xls\" ") && error.endsWith(u'.') &&
                    error.contains(QString::fromLatin1(phrase)))
            << phrase << ": " << qPrintable(error);
    }
    for (const auto& [file, phrase] :
         {std::pair(path(u"none.xls"_s), u"was not found"_s), {folder.path(), u"folder"_s}})
        EXPECT_TRUE(errorOf([&] { application.Workbooks().Open(file); }).contains(phrase))
            << qPrintable(phrase);
}

TEST_F(ExcelRefusal, aFailedSaveLeavesTheOldFile) {
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

TEST_F(ExcelRefusal, aWorkbookStreamWithTheOlderNameIsRead) {
    EXPECT_FALSE(exerciseWorkbook(renamed(u"Book")).isEmpty());
}

// Damaged files are refused with a sentence or saved readably; they never crash or hang the program.
TEST_F(ExcelRefusal, mutatedFilesAreRefusedOrReadable) {
    QRandomGenerator random(20240229);
    int readable = 0;
    int refused = 0;
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
