// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/odsbook.h"

#include "platform/excel/odstext.h"
#include "platform/excel/refusal.h"
#include "platform/excel/serialdate.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel {

namespace {

constexpr QByteArrayView spreadsheetType = "application/vnd.oasis.opendocument.spreadsheet";
constexpr QByteArrayView documentType = "application/vnd.oasis.opendocument.";

// Names that are met at each cell; a QStringView of a literal would count its characters each time.
constexpr QStringView tableRow = u"table-row";
constexpr QStringView tableCell = u"table-cell";
constexpr QStringView coveredCell = u"covered-table-cell";
constexpr QStringView rowsRepeated = u"number-rows-repeated";
constexpr QStringView columnsRepeated = u"number-columns-repeated";
constexpr QStringView valueType = u"value-type";
constexpr QStringView officePrefix = u"office";

/// How often a row or cell is repeated, at most as often as fits a sheet.
int repetitions(const XmlPart& xml, QStringView attribute) {
    return std::clamp(xml.number(attribute).value_or(1), 1, biff::maxRows);
}

double numberOf(const QString& text) {
    bool good = false;
    const double number = text.toDouble(&good);
    if (!good || !qIsFinite(number))
        biff::damaged(u"a cell has the number \"%1\""_s.arg(text.left(20)));
    return number;
}

/// A duration such as PT12H30M00S as a cell with a number format of times has it: a number of days.
Value durationOf(const QString& text) {
    static const QRegularExpression form(
        uR"(^(-?)P(?:(\d+)D)?(?:T(?:(\d+)H)?(?:(\d+)M)?(?:(\d+(?:[.,]\d+)?)S)?)?$)"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return text;
    const auto part = [&](int group) { return match.captured(group).replace(u',', u'.').toDouble(); };
    const double days = part(2) + part(3) / 24 + part(4) / 1440 + part(5) / 86400;
    return biff::fromSerial(match.captured(1).isEmpty() ? days : -days, false);
}

/// Reads the sheets of one workbook.
class SheetReader {
public:
    SheetReader(XmlPart& part, ValueBook& book) : xml(part), result(book), texts(part) {}

    void readTables();

private:
    struct Run { // of equal cells in a row
        int column;
        int count;
        Value value;
    };
    void readTable();
    void readRow(ValueSheet& sheet);
    Value readCell();

    XmlPart& xml;
    ValueBook& result;
    OdsText texts;
    int row = 0; // the next one
};

void SheetReader::readTables() {
    while (xml.nextChild()) { // of the spreadsheet
        if (xml.name() == u"table" && xml.attribute(u"style-name") != u"ta_extref")
            readTable();
        else
            xml.skip(); // also the copies of other files' sheets
    }
}

/// Rows may be within groups and headers.
void SheetReader::readTable() {
    ValueSheet sheet{.name = xml.attribute(u"name"), .isProtected = xml.flag(u"protected")};
    row = 0;
    for (int depth = 1; depth > 0;) {
        const QXmlStreamReader::TokenType token = xml.next();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            if (xml.name() == tableRow)
                readRow(sheet);
            else if (xml.name() == u"table-row-group" || xml.name() == u"table-rows" ||
                     xml.name() == u"table-header-rows")
                ++depth;
            else
                xml.skip();
        }
    }
    result.sheets.push_back(std::move(sheet));
}

void SheetReader::readRow(ValueSheet& sheet) {
    const int count = std::min(repetitions(xml, rowsRepeated), biff::maxRows - row);
    std::vector<Run> runs;
    int column = 0;
    while (xml.nextChild()) {
        if (xml.name() != tableCell && xml.name() != coveredCell) {
            xml.skip();
            continue;
        }
        const int repeated = std::min(repetitions(xml, columnsRepeated), biff::maxColumns - column);
        Value value = readCell();
        if (!value.isBlank() && repeated > 0)
            runs.push_back({column, repeated, std::move(value)});
        column += repeated;
    }
    const int end = row + count;
    for (; row < end && !runs.empty(); ++row)
        for (const Run& run : runs)
            for (int i = 0; i < run.count; ++i)
                result.put(sheet, {row, run.column + i}, run.value);
    row = end;
}

Value SheetReader::readCell() {
    if (xml.attributeView(valueType).isEmpty()) {
        xml.skip();
        return {};
    }
    const QString type = xml.attribute(valueType, officePrefix);
    const bool isError = xml.attribute(u"value-type", u"calcext") == u"error";
    const QString number = xml.attribute(u"value");
    const QString date = xml.attribute(u"date-value");
    const QString time = xml.attribute(u"time-value");
    const bool truth = xml.flag(u"boolean-value");
    const QString words = xml.attribute(u"string-value");
    const QString shown = texts.read();
    if (isError)
        return errorNamed(shown);
    if (type == u"float" || type == u"percentage" || type == u"currency")
        return numberOf(number);
    if (type == u"date")
        return momentOf(date).value_or(shown);
    if (type == u"time")
        return durationOf(time);
    if (type == u"boolean")
        return Value::boolean(truth);
    if (type == u"string")
        return words.isEmpty() ? shown : words;
    return {};
}

/// The content without the formats of its cells, which are a third of it and take as much time to parse. Kept
/// as it is when they are not found by their usual name.
QByteArray withoutStyles(QByteArray content) {
    constexpr QByteArrayView start = "<office:automatic-styles>";
    constexpr QByteArrayView end = "</office:automatic-styles>";
    const qsizetype from = content.indexOf(start);
    const qsizetype to = from < 0 ? -1 : content.indexOf(end, from);
    return to < 0 ? content : content.remove(from, to + end.size() - from);
}

/// The content without the names of the formats in the tags of cells and rows, a quarter of the rest. A "<"
/// begins a tag everywhere but in comments and CDATA sections; content with those is kept as it is.
QByteArray withoutStyleNames(const QByteArray& content) {
    constexpr QByteArrayView name = " table:style-name=\"";
    if (content.contains("<!"))
        return content;
    QByteArray result;
    result.reserve(content.size());
    qsizetype from = 0;
    for (qsizetype at = content.indexOf(name); at >= 0; at = content.indexOf(name, at + 1)) {
        const QByteArrayView before = QByteArrayView(content).first(at);
        const qsizetype end = content.indexOf('"', at + name.size());
        if (end < 0 || !(before.endsWith("<table:table-cell") || before.endsWith("<table:table-row")))
            continue;
        result += QByteArrayView(content).sliced(from, at - from);
        from = end + 1;
    }
    return result += QByteArrayView(content).sliced(from);
}

bool isEncrypted(ZipPackage& package) {
    const QString manifest = u"META-INF/manifest.xml"_s;
    if (!package.has(manifest))
        return false;
    const QByteArray content = package.read(manifest);
    if (!content.contains("encryption-data")) // which saves the parsing of nearly all
        return false;
    XmlPart xml(content, manifest);
    while (xml.nextChild()) {
        while (xml.nextChild()) {
            if (xml.name() == u"encryption-data")
                return true;
            xml.skip();
        }
    }
    return false;
}

} // namespace

void readOds(ZipPackage& package, ValueBook& book) {
    const QByteArray type = package.read(u"mimetype"_s).trimmed();
    if (!type.startsWith(documentType))
        throw biff::Refusal(u"is a zip file and no workbook"_s);
    if (type != spreadsheetType && type != spreadsheetType.toByteArray() + "-template")
        throw biff::Refusal(u"is an OpenDocument file and no spreadsheet"_s);
    if (isEncrypted(package))
        throw biff::Refusal(u"is an OpenDocument spreadsheet (.ods) that is encrypted with a password"_s);
    const QString content = u"content.xml"_s;
    XmlPart xml(withoutStyleNames(withoutStyles(package.read(content))), content);
    while (xml.nextChild()) {
        if (xml.name() != u"body") {
            xml.skip();
            continue;
        }
        while (xml.nextChild()) {
            if (xml.name() == u"spreadsheet")
                SheetReader(xml, book).readTables();
            else
                xml.skip();
        }
    }
}

} // namespace excel
