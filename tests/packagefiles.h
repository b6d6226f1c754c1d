// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/excelfiles.h"

#include <zip.h>

#include <map>

/// The parts of a zip file by their names.
using Parts = std::map<QString, QByteArray>;

inline void writeParts(const QString& path, const Parts& parts) {
    QFile::remove(path);
    zip_t* archive = zip_open(qPrintable(path), ZIP_CREATE, nullptr);
    ASSERT_TRUE(archive);
    for (const auto& [name, content] : parts) {
        zip_source_t* source =
            zip_source_buffer(archive, content.constData(), zip_uint64_t(content.size()), 0);
        ASSERT_GE(zip_file_add(archive, qPrintable(name), source, ZIP_FL_ENC_UTF_8), 0);
    }
    ASSERT_EQ(zip_close(archive), 0);
}

inline Parts partsOf(const QString& path) {
    Parts parts;
    zip_t* archive = zip_open(qPrintable(path), ZIP_RDONLY, nullptr);
    for (zip_int64_t i = 0; archive && i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t about;
        zip_stat_index(archive, zip_uint64_t(i), 0, &about);
        QByteArray content(qsizetype(about.size), '\0');
        zip_file_t* file = zip_fopen_index(archive, zip_uint64_t(i), 0);
        EXPECT_EQ(zip_fread(file, content.data(), about.size), content.size());
        zip_fclose(file);
        parts[QString::fromUtf8(about.name)] = content;
    }
    zip_discard(archive);
    return parts;
}

/// The parts of a workbook with one sheet, "Answers", of these row elements.
inline Parts xlsxParts(const QByteArray& rows, const QByteArray& strings = {},
                       const QByteArray& properties = {}) {
    const QByteArray type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    return {
        {u"_rels/.rels"_s, "<Relationships><Relationship Id='r1' Type='" + type +
                               "officeDocument' Target='/xl/workbook.xml'/></Relationships>"},
        {u"xl/workbook.xml"_s, "<workbook xmlns:r='r'>" + properties +
                                   "<sheets><sheet name='Answers' r:id='r1'/></sheets></workbook>"},
        {u"xl/_rels/workbook.xml.rels"_s,
         "<Relationships><Relationship Id='r1' Type='" + type +
             "worksheet' Target='worksheets/a.xml'/><Relationship Id='r2' Type='" + type +
             "sharedStrings' Target='strings.xml'/><Relationship Id='r3' Type='" + type +
             "styles' Target='styles.xml'/></Relationships>"},
        {u"xl/worksheets/a.xml"_s, "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"},
        {u"xl/strings.xml"_s, "<sst count='4000000000'>" + strings + "</sst>"},
        {u"xl/styles.xml"_s,
         "<styleSheet><numFmts><numFmt numFmtId='170' formatCode='0.0&quot; d&quot;\\m[Red]'/><numFmt "
         "numFmtId='171' formatCode='[$-409]d\\-mmm'/><numFmt numFmtId='172' formatCode='[h]:mm'/></numFmts>"
         "<cellStyleXfs><xf numFmtId='14'/></cellStyleXfs><cellXfs><xf numFmtId='0'/><xf numFmtId='14'/>"
         "<xf numFmtId='170'/><xf numFmtId='171'/><xf numFmtId='172'/><xf numFmtId='47'/></cellXfs>"
         "</styleSheet>"}};
}

/// The parts of an OpenDocument spreadsheet with one sheet, "Answers", of these row elements.
inline Parts odsParts(const QByteArray& rows) {
    return {{u"mimetype"_s, "application/vnd.oasis.opendocument.spreadsheet"},
            {u"content.xml"_s,
             "<office:document-content xmlns:office='o' xmlns:table='t' xmlns:text='x'><office:body>"
             "<office:spreadsheet><table:table table:name='Answers'>" +
                 rows + "</table:table></office:spreadsheet></office:body></office:document-content>"}};
}

/// Fixture of the tests on workbooks that are zip files.
struct PackageFiles : ExcelFiles {
    QString written(const Parts& parts, const QString& name = u"a.xls"_s) const {
        writeParts(path(name), parts);
        return path(name);
    }
    excel::Worksheet answersOf(const Parts& parts) const {
        return application.Workbooks().Open(written(parts)).Worksheets(u"Answers"_s);
    }
    QString refusalOf(const Parts& parts) const {
        return errorOf([&] { application.Workbooks().Open(written(parts)); });
    }
};
