// SPDX-License-Identifier: GPL-3.0-or-later
// What is refused of files that are zip files, and what of workbooks that can be read only.
#include "tests/packagefiles.h"

#include <QRandomGenerator>

#include <unistd.h>

using excel::Value, excel::Worksheet;

struct SheetRefusal : PackageFiles {};

TEST_F(SheetRefusal, refusesOtherFilesByWhatTheyAre) {
    const QByteArray cell = "<row><c><v>1</v></c></row>";
    const auto changed = [](Parts parts, const QString& part, const QByteArray& from, const QByteArray& to) {
        EXPECT_TRUE(parts[part].contains(from)) << part;
        parts[part].replace(from, to);
        return parts;
    };
    const auto without = [](Parts parts, const QString& part) {
        parts.erase(part);
        return parts;
    };
    const QString rels = u"_rels/.rels"_s;
    const QString bookRels = u"xl/_rels/workbook.xml.rels"_s;
    const QString sheet = u"xl/worksheets/a.xml"_s;
    const QString content = u"content.xml"_s;
    const QByteArray ods = odsParts({})[u"mimetype"_s];
    const QByteArray filled =
        "<table:table-row table:number-rows-repeated='65536'><table:table-cell "
        "table:number-columns-repeated='256' office:value-type='float' office:value='1'/>"
        "</table:table-row>";
    const QByteArray spaces =
        "<table:table-row><table:table-cell office:value-type='string'><text:p>"
        "<text:s text:c='1000000'/><text:s/></text:p></table:table-cell></table:table-row>";
    QByteArray attributes;
    for (int i = 0; i < 201; ++i)
        attributes += " a" + QByteArray::number(i) + "='>'";
    Parts many;
    for (int i = 0; i < 1001; ++i)
        many[QString::number(i)] = "x";
    Parts large = xlsxParts(cell);
    large[sheet] += QByteArray(33 * 1024 * 1024, ' ');
    const std::pair<Parts, const char*> cases[] = {
        {{{u"notes.txt"_s, "words"}}, "is a zip file and no workbook"},
        {changed(xlsxParts(cell), rels, "workbook.xml", "workbook.bin"),
         "is a binary Excel workbook (.xlsb)"},
        {changed(xlsxParts(cell), u"xl/workbook.xml"_s, "workbook", "document"), "another kind of document"},
        {changed(odsParts({}), u"mimetype"_s, "spreadsheet", "text"), "OpenDocument file and no spreadsheet"},
        {changed(odsParts({}), u"mimetype"_s, ods, "application/epub+zip"), "is a zip file and no workbook"},
        {without(odsParts({}), content), "is damaged: it has no part \"content.xml\""},
        {without(xlsxParts(cell), sheet), "is damaged: it has no part \"xl/worksheets/a.xml\""},
        {changed(xlsxParts(cell), bookRels, "Target='work", "TargetMode='External' Target='work"),
         "is damaged"},
        {xlsxParts("<row><c></row>"), "no well-formed XML"},
        {xlsxParts("<row><c><v>&name;</v></c></row>"), "no well-formed XML"},
        {xlsxParts("<row><c t='s'><v>0</v></c></row>"), "refers to the missing text 0"},
        {xlsxParts("<row><c><v>nan</v></c></row>"), "has the number \"nan\""},
        {xlsxParts("<row><c r='1'><v>1</v></c></row>"), "has the reference \"1\""},
        {xlsxParts("<row" + attributes + "/>"), "too many attributes"},
        {xlsxParts(QByteArray("<row>").repeated(500)), "nested too deep"},
        {xlsxParts("<row>" + QByteArray("<c x='/>'></c><c/>").repeated(600)), "no well-formed XML"},
        {changed(xlsxParts(cell), sheet, "<worksheet>", "<!DOCTYPE worksheet><worksheet>"), "document type"},
        {changed(odsParts({}), content, "<office:document-c",
                 "<!DOCTYPE x [<!ENTITY a 'b'>]><office:document-c"),
         "document type"},
        {changed(odsParts({}), content, "<office:b", QByteArray("\0<office:b", 10)), "is not in UTF-8"},
        {odsParts(filled), "more than 1000000 filled cells"},
        {odsParts(spaces), "more than 1000000 spaces"},
        {many, "holds more than 1000 parts"},
        {large, "is too large: its part \"xl/worksheets/a.xml\""},
    };
    for (const auto& [parts, phrase] : cases) {
        const QString error = refusalOf(parts);
        EXPECT_TRUE(error.startsWith(u"The file \"a.xls\" ") && error.endsWith(u'.') &&
                    error.contains(QString::fromUtf8(phrase)))
            << phrase << ": " << error;
    }
}

TEST_F(SheetRefusal, refusesWhatLibreOfficeHasEncrypted) {
    const std::pair<QString, const char*> cases[] = {
        {path(u"a.xls"_s), "is encrypted with a password; it must be saved without one first."},
        {path(u"a.xlsx"_s), "is a newer Excel workbook (.xlsx) that is encrypted with a password."},
        {path(u"a.ods"_s), "is an OpenDocument spreadsheet (.ods) that is encrypted with a password."}};
    runScript(u"office.py"_s, {cases[0].first, cases[1].first, cases[2].first});
    for (const auto& [file, reason] : cases) {
        const QString error = errorOf([&] { application.Workbooks().Open(file); });
        EXPECT_TRUE(error.endsWith(QString::fromLatin1(reason))) << reason << ' ' << error;
    }
}

// The sizes that a zip file announces are not relied upon.
TEST_F(SheetRefusal, refusesWhatUnpacksToMoreThanAnnounced) {
    Parts parts = xlsxParts({});
    constexpr int size = 33 * 1024 * 1024;
    parts[u"xl/worksheets/a.xml"_s] = "<worksheet>" + QByteArray(size - 11, ' ');
    QByteArray content = contentOf(written(parts));
    QByteArray announced;
    excel::biff::append32(announced, size);
    ASSERT_EQ(content.count(announced), 2); // at the part and in the directory
    writeFile(path(u"a.xls"_s), content.replace(announced, QByteArray(4, '\1')));
    EXPECT_EQ(
        errorOf([&] { application.Workbooks().Open(path(u"a.xls"_s)); }),
        u"The file \"a.xls\" is too large: its part \"xl/worksheets/a.xml\" unpacks to more than is read."_s);
    content = "PK\x03\x04" + QByteArray(8 * 1024 * 1024, 'x');
    writeFile(path(u"a.xls"_s), content);
    EXPECT_EQ(errorOf([&] { application.Workbooks().Open(path(u"a.xls"_s)); }),
              u"The file \"a.xls\" is larger than 8 MB."_s);
}

TEST_F(SheetRefusal, givesValuesAndRefusesEveryChange) {
    const QString file = written(xlsxParts("<row><c><v>1</v></c></row>"), u"a.xlsx"_s);
    const QByteArray before = contentOf(file);
    const excel::Workbook book = application.Workbooks().Open(file);
    const Worksheet sheet = book.Worksheets(u"answers"_s);
    const excel::Range cell = sheet.Range(u"A1"_s);
    const std::function<void()> changes[] = {[&] { cell.setValue(2); },
                                             [&] { cell.setLocked(true); },
                                             [&] { cell.setWrapText(true); },
                                             [&] { cell.Locked(); },
                                             [&] { cell.WrapText(); },
                                             [&] { cell.Font().ColorIndex(); },
                                             [&] { cell.Clear(); },
                                             [&] { book.Save(); },
                                             [&] { book.SaveAs(path(u"b.xls"_s)); },
                                             [&] { cell.BorderAround(excel::BorderWeight::Thin, 3); },
                                             [&] { cell.Font().setColorIndex(3); }};
    for (const auto& change : changes)
        EXPECT_EQ(errorOf(change), u"The file \"a.xlsx\" can be read only."_s) << &change - changes;
    sheet.Unprotect(u"any"_s);
    sheet.Protect(u"other"_s);
    EXPECT_TRUE(cell.Value() == Value(1));
    EXPECT_EQ(sheet.Name(), u"Answers"_s);
    EXPECT_EQ(book.FullName(), file);
    EXPECT_EQ(errorOf([&] { book.Worksheets(u"None"_s); }), u"The file \"a.xlsx\" has no sheet \"None\"."_s);
    EXPECT_EQ(application.Workbooks().Count(), 1);
    book.Close(true);
    EXPECT_EQ(errorOf([&] { cell.Value(); }), u"The workbook \"a.xlsx\" is closed."_s);
    const excel::Workbook again = application.Workbooks().Open(file);
    application.Quit();
    EXPECT_FALSE(again.isOpen());
    EXPECT_EQ(contentOf(file), before);
}

// Damaged parts and zip files are refused with a sentence or read; they never crash or hang the program.
TEST_F(SheetRefusal, mutatedPartsAreRefusedOrRead) {
    const QString workbook = copyOf(u"filled_by_lo.xls"_s);
    QRandomGenerator random(20240229);
    int read = 0, refused = 0;
    alarm(240); // ends a hanging test
    for (const QString& type : {u"xlsx"_s, u"ods"_s}) {
        convertByOffice(type, {workbook}, folder.path());
        const QString sample = workbook.chopped(3) + type;
        const QByteArray whole = contentOf(sample);
        const Parts parts = partsOf(sample);
        ASSERT_GE(parts.size(), 5U);
        const auto mutated = [&](QByteArray content) {
            if (random.bounded(5) == 0)
                content.truncate(random.bounded(int(content.size()) + 1));
            for (int n = random.bounded(1, 4); n > 0 && !content.isEmpty(); --n)
                content[random.bounded(int(content.size()))] ^= char(1 << random.bounded(8));
            return content;
        };
        for (int round = 0; round < 1000; ++round) {
            const QString file = path(u"m.xls"_s);
            if (round % 4 == 0) {
                writeFile(file, mutated(whole));
            } else {
                Parts changed = parts;
                QByteArray& part = std::next(changed.begin(), random.bounded(int(parts.size())))->second;
                part = mutated(part);
                writeParts(file, changed);
            }
            const QString error = errorOf([&] {
                const excel::Workbook book = application.Workbooks().Open(file);
                for (const QString& name : book.SheetNames())
                    book.Worksheets(name).Cells(1, 1).Value();
            });
            EXPECT_TRUE(error.isEmpty() || error.startsWith(u"The file \"m.xls\" ")) << error;
            ++(error.isEmpty() ? read : refused);
        }
    }
    alarm(0);
    EXPECT_GT(read, 300);
    EXPECT_GT(refused, 300);
}
