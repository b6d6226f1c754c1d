// SPDX-License-Identifier: GPL-3.0-or-later
// Workbooks edited here are read back by python3-xlrd.
#include "tests/excelfiles.h"

using namespace Qt::StringLiterals;
using excel::BorderWeight;
using excel::Worksheet;

namespace {

const QString password = u"kvtwpa"_s;
const QString question = u"How do you rate our delivery \u2014 on time, complete, \u201Cfriendly\u201D?"_s;

// The value of a cell that xlrd has read.
excel::Value valueOf(const QJsonObject& cell) {
    const QJsonValue value = cell[u"value"];
    const QString text = value.toString();
    switch (cell[u"type"].toInt()) {
    case 2:
        return value.toDouble();
    case 3:
        return {QDate::fromString(text.left(10), Qt::ISODate), QTime::fromString(text.mid(11), Qt::ISODate)};
    case 4:
        return excel::Value::boolean(value.toInt() == 1);
    case 5:
        return excel::Value::error(quint8(value.toInt()));
    default:
        return text;
    }
}

const excel::Value values[] = {
    u"\u20ACuro, \u4E2D, \U0001F600"_s, -1234.5, excel::Value(QDate(2023, 12, 31), QTime(23, 59, 59)),
    excel::Value::boolean(true),        u"12"_s, QString(QString(9000, u'x') + QString(9000, u'\u4E2D'))};

// Texts, 8 and 16 bits a character, that span many Continue records.
QString longText(int i) {
    return QString(1 + (i * 37) % 3000, i % 3 == 0 ? QChar(0x4E00 + i) : QChar(u'a' + i % 26));
}

// Fills the sheet like a questionnaire, and rows from 200 on with values.
void fill(const Worksheet& sheet) {
    sheet.Unprotect(password);
    sheet.Range(u"A14"_s, u"G65536"_s).Clear();
    const excel::Range asked = sheet.Range(u"B16"_s);
    asked.BorderAround(BorderWeight::Thin, 3);
    asked.setValue(question);
    asked.setWrapText(true);
    asked.setLocked(true);
    const excel::Range box = sheet.Range(u"B35"_s);
    box.Font().setColorIndex(25);
    box.setValue(u"Type your Answer here"_s);
    box.setLocked(false);
    sheet.Range(u"C36:E38"_s).BorderAround(BorderWeight::Thin, 5);
    for (int i = 0; i < int(std::size(values)); ++i)
        sheet.Cells(200 + i, 2).setValue(values[i]);
    for (int i = 0; i < 400; ++i)
        sheet.Cells(200 + i, 1).setValue(longText(i));
    sheet.Protect(password);
}

} // namespace

class ExcelInterop : public ExcelFiles {
protected:
    QString fillSample(const QString& sample) const {
        const excel::Workbook book = application.Workbooks().Open(samplePath(sample));
        fill(book.Worksheets(firstSheet(sample)));
        book.SaveAs(path(u"filled_"_s + sample));
        book.Close();
        return path(u"filled_"_s + sample);
    }
};

// Every cell of the examples has the value that xlrd reads.
TEST_F(ExcelInterop, xlrdReadsTheSame) {
    for (const QString& sample : sampleNames) {
        SCOPED_TRACE(qPrintable(sample));
        const Worksheet sheet =
            application.Workbooks().Open(samplePath(sample)).Worksheets(firstSheet(sample));
        const QJsonObject cells = readByXlrd(samplePath(sample));
        ASSERT_GE(cells.size(), 10);
        for (auto at = cells.begin(); at != cells.end(); ++at) {
            SCOPED_TRACE(qPrintable(at.key()));
            const QJsonObject cell = at.value().toObject();
            EXPECT_TRUE(sheet.Range(at.key()).Value() == valueOf(cell));
            EXPECT_EQ(sheet.Range(at.key()).Locked(), cell[u"locked"].toBool());
            EXPECT_EQ(sheet.Range(at.key()).WrapText(), cell[u"wrapped"].toBool());
        }
    }
}

TEST_F(ExcelInterop, xlrdSeesValuesLocksWrapsAndBorders) {
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "B16": {"borders": ["FF0000", "FF0000", "FF0000", "FF0000"], "wrapped": true, "locked": true},
        "B35": {"font": "000080", "locked": false, "wrapped": false},
        "C36": {"borders": ["0000FF", null, "0000FF", null]},
        "D37": {"borders": [null, null, null, null]}})")
                                     .object();
    ASSERT_EQ(expected.size(), 4);
    for (const QString& sample : sampleNames) {
        SCOPED_TRACE(qPrintable(sample));
        const QJsonObject cells = readByXlrd(fillSample(sample));
        EXPECT_EQ(cells[u"B16"][u"value"].toString(), question);
        for (int i = 0; i < int(std::size(values)); ++i)
            EXPECT_TRUE(valueOf(cells[u"B%1"_s.arg(200 + i)].toObject()) == values[i]) << i;
        for (int i = 0; i < 400; ++i)
            ASSERT_EQ(cells[u"A%1"_s.arg(200 + i)][u"value"].toString(), longText(i)) << i;
        for (auto cell = expected.begin(); cell != expected.end(); ++cell) {
            const QJsonObject about = cell.value().toObject();
            for (auto part = about.begin(); part != about.end(); ++part)
                EXPECT_TRUE(cells[cell.key()][part.key()] == part.value())
                    << qPrintable(cell.key() + u' ' + part.key());
        }
        // Cells outside the cleared range are kept.
        const QJsonObject before = readByXlrd(samplePath(sample));
        for (auto at = before.begin(); at != before.end(); ++at)
            EXPECT_TRUE(at.value() == cells[at.key()] || at.value()[u"type"].toInt() == 0)
                << qPrintable(at.key());
    }
}
