// SPDX-License-Identifier: GPL-3.0-or-later
// Tables written to files, read back by other programs' eyes: exact bytes, and the XML of the sheet.
#include "platform/tables/tablefile.h"
#include "tests/support/files.h"

#include <QDate>
#include <QDir>
#include <QTemporaryDir>

namespace {
struct Tables : ::testing::Test {
    QString path(const QString& name) const { return folder.filePath(name); }
    /// The cells of a workbook's first sheet and what is said of it, as openpyxl reads them.
    static QString workbook(const QString& file) {
        const QString script = uR"(
import sys, openpyxl
sheet = openpyxl.load_workbook(sys.argv[1]).active
print(sheet.freeze_panes, sheet.auto_filter.ref, all(cell.font.b for cell in sheet[1]), sheet["A2"].font.b)
for row in sheet:
    print("|".join(repr(c.value) + (" " + c.number_format if c.is_date else "") for c in row))
print(*[round(sheet.column_dimensions[column].width) for column in "AB"])
)"_s;
        return QString::fromUtf8(outputOf(u"/usr/bin/python3"_s, {u"-c"_s, script, file})).trimmed();
    }

    QTemporaryDir folder;
};

TEST_F(Tables, aTableIsTheSameInBothFormats) {
    tables::Table table{{u"Größe, \"Name\""_s, u"=Sum"_s}, {}};
    table.rows = {{u"a,b"_s, 2.5},
                  {u"say \"x\""_s, -3},
                  {u"two\nlines"_s, QDate(2024, 3, 5)},
                  {u"=1+1"_s, true},
                  {u"+1"_s, u"-1"_s},
                  {u"@a"_s, u"\tb"_s},
                  {u"\rc"_s, {}},
                  {u"Ärger – ж 😀"_s, QDate(1899, 1, 1)},
                  {u"1=1"_s, qQNaN()}};
    tables::save(table, path(u"t.CSV"_s));
    EXPECT_EQ(contentOf(path(u"t.CSV"_s)).toStdString(),
              "\"Größe, \"\"Name\"\"\",'=Sum\r\n\"a,b\",2.5\r\n"
              "\"say \"\"x\"\"\",-3\r\n\"two\nlines\",05/03/2024\r\n"
              "'=1+1,Yes\r\n'+1,'-1\r\n'@a,'\tb\r\n\"'\rc\",\r\n"
              "Ärger – ж 😀,01/01/1899\r\n1=1,\r\n");
    tables::save(table, path(u"t.xlsx"_s));
    EXPECT_EQ(workbook(path(u"t.xlsx"_s)).toStdString(),
              "A2 A1:B10 True False\n'Größe, \"Name\"'|'=Sum'\n'a,b'|2.5\n'say \"x\"'|-3\n"
              "'two\\nlines'|datetime.datetime(2024, 3, 5, 0, 0) dd/mm/yyyy\n'=1+1'|True\n'+1'|'-1'\n"
              "'@a'|'\\tb'\n'_x000D_c'|None\n'Ärger – ж 😀'|'01/01/1899'\n'1=1'|None\n17 14");
}

TEST_F(Tables, columnsOfNumbersOrDatesAreRecognised) {
    tables::Table table{{{}, {}, {}, {}, {}}, {}};
    table.rows = {{u"5"_s, u"05/03/2024"_s, u"007"_s, u"5"_s, u"31/02/2024"_s},
                  {u""_s, u"01/12/2024"_s, u"8"_s, u"a\tb"_s, u"01/12/2024"_s},
                  {u"-0.50"_s, u""_s, u"9"_s, u"say \"x\""_s, u""_s}};
    tables::recogniseColumns(table);
    QList<tables::Kind> kinds;
    for (const QVariant& value : table.rows[0])
        kinds << tables::kindOf(value);
    using enum tables::Kind;
    EXPECT_EQ(kinds, QList({Number, Date, Text, Text, Text}));
    EXPECT_EQ(tables::tabSeparated(table).toStdString(),
              "5\t05/03/2024\t007\t5\t31/02/2024\n\t01/12/2024\t8\t\"a\tb\"\t01/12/2024\n"
              "-0.5\t\t9\t\"say \"\"x\"\"\"\t");
}

TEST_F(Tables, whatCannotBeWrittenLeavesTheOlderFile) {
    QDir(folder.path()).mkdir(u"folder.csv"_s);
    for (const QString& name : {u"absent/t.xlsx"_s, u"absent/t.csv"_s, u"folder.csv"_s})
        EXPECT_THROW(tables::save({{u"a"_s}, {}}, path(name)), Failure) << name;
    for (const QString& name : {u"kept.xlsx"_s, u"kept.csv"_s}) {
        tables::save({{u"older"_s}, {}}, path(name));
        const QByteArray older = contentOf(path(name));
        tables::openTableFile(path(name), {u"newer"_s})->addRow({u"abandoned"_s});
        EXPECT_EQ(contentOf(path(name)), older) << name;
    }
    const QByteArray older = contentOf(path(u"kept.xlsx"_s));
    EXPECT_EQ(failureOf([&] {
                  tables::save({{u"newer"_s}, {{QString(32768, u'x')}}}, path(u"kept.xlsx"_s));
              }),
              u"The table could not be saved as %1: a cell of a workbook holds 32767 characters, "
              "row 1 has a longer text; save the table as .csv."_s.arg(path(u"kept.xlsx"_s)));
    EXPECT_EQ(contentOf(path(u"kept.xlsx"_s)), older);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2) << "no file beside them is left";
}
} // namespace
