// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/xlsxbook.h"

#include "platform/excel/refusal.h"
#include "platform/excel/serialdate.h"
#include "platform/excel/xlsxstyles.h"
#include "platform/excel/xmlpart.h"

#include <QDir>
#include <QHash>

#include <mutex>

using namespace Qt::StringLiterals;

namespace excel {

namespace {

constexpr int maxStrings = 1'000'000;

/// What a relationship of a part leads to.
struct Target {
    QString kind; ///< the last word of its type: "worksheet"
    QString part; ///< empty for one outside the file
};
using Targets = QHash<QString, Target>; // by id

QString folderOf(const QString& part) {
    return part.section(u'/', 0, -2);
}

/// The relationships of a part; "" stands for the package.
Targets readTargets(ZipPackage& package, const QString& part) {
    const QString folder = folderOf(part);
    const QString rels = QDir::cleanPath(folder + u"/_rels/"_s + part.section(u'/', -1) + u".rels"_s)
                             .mid(folder.isEmpty() ? 1 : 0);
    Targets targets;
    if (!package.has(rels))
        return targets;
    XmlPart xml(package.read(rels), rels);
    while (xml.nextChild()) {
        Target target{xml.attribute(u"Type").section(u'/', -1), {}};
        const QString path = xml.attribute(u"Target");
        if (xml.attribute(u"TargetMode") != u"External")
            target.part = QDir::cleanPath(path.startsWith(u'/') ? path : u'/' + folder + u'/' + path).mid(1);
        targets.insert(xml.attribute(u"Id"), target);
        xml.skip();
    }
    return targets;
}

/// The part of a relationship of that kind; empty without one.
QString partOfKind(const Targets& targets, QStringView kind) {
    for (const Target& target : targets)
        if (target.kind == kind)
            return target.part;
    return {};
}

/// A text with its escapes of the form _x000D_ replaced.
QString unescaped(const QString& text) {
    constexpr qsizetype escapeLength = 7;
    QString result;
    qsizetype from = 0;
    for (qsizetype at = text.indexOf(u"_x"); at >= 0; at = text.indexOf(u"_x", at)) {
        bool good = false;
        const ushort code = QStringView(text).mid(at + 2, 4).toUShort(&good, 16);
        if (!good || text.size() < at + escapeLength || text[at + escapeLength - 1] != u'_') {
            ++at;
            continue;
        }
        result += QStringView(text).sliced(from, at - from);
        result += QChar(code);
        from = at += escapeLength;
    }
    return from == 0 ? text : result + QStringView(text).sliced(from);
}

/// The text of an element that holds t and r elements: its runs joined, without phonetic guides.
QString richText(XmlPart& xml) {
    QString text;
    while (xml.nextChild()) {
        if (xml.name() == u"t") {
            text += xml.text();
        } else if (xml.name() == u"r") {
            while (xml.nextChild())
                xml.name() == u"t" ? void(text += xml.text()) : xml.skip();
        } else {
            xml.skip();
        }
    }
    return unescaped(text);
}

std::vector<QString> readStrings(ZipPackage& package, const QString& part) {
    std::vector<QString> strings;
    if (part.isEmpty())
        return strings;
    XmlPart xml(package.read(part), part);
    while (xml.nextChild()) {
        if (xml.name() != u"si") {
            xml.skip();
            continue;
        }
        if (strings.size() == maxStrings)
            throw biff::Refusal(u"is too large: it has more than %1 texts"_s.arg(maxStrings));
        strings.push_back(richText(xml));
    }
    return strings;
}

/// Files that come back from one batch mostly have the same part of styles: the last one is kept.
DateStyles stylesOf(const QByteArray& content, const QString& part) {
    static std::mutex busy;
    static QByteArray known;
    static DateStyles styles;
    const std::lock_guard guard(busy);
    if (content != known) {
        styles = DateStyles(XmlPart(content, part));
        known = content;
    }
    return styles;
}

/// The place of a reference such as "B3"; one beyond the sheet of any program is refused.
biff::Place placeOf(QStringView reference) {
    constexpr int mostColumns = 16384;
    int column = 0;
    qsizetype at = 0;
    for (; at < reference.size() && reference[at] >= u'A' && reference[at] <= u'Z'; ++at) {
        column = column * 26 + reference[at].unicode() - u'A' + 1;
        if (column > mostColumns)
            break;
    }
    bool good = false;
    const int row = reference.sliced(at).toInt(&good);
    if (!good || row < 1 || column < 1)
        biff::damaged(u"a cell has the reference \"%1\""_s.arg(reference.left(20)));
    return {row - 1, column - 1};
}

/// Reads the cells of one workbook.
class SheetReader {
public:
    SheetReader(ZipPackage& package, ValueBook& book) : zip(package), result(book) {}

    void readBook(const QString& part);

private:
    void readSheet(const QString& part, ValueSheet& sheet);
    void readRow(XmlPart& xml, ValueSheet& sheet);
    Value readCell(XmlPart& xml) const;
    Value valueOf(const QString& type, const QString& content, int style) const;

    ZipPackage& zip;
    ValueBook& result;
    std::vector<QString> strings;
    DateStyles styles;
    bool from1904 = false;
    int row = 0; // the one that is read
};

void SheetReader::readBook(const QString& part) {
    const Targets targets = readTargets(zip, part);
    XmlPart xml(zip.read(part), part);
    if (xml.name() != u"workbook")
        throw biff::Refusal(u"is no workbook but another kind of document"_s);
    strings = readStrings(zip, partOfKind(targets, u"sharedStrings"));
    if (const QString look = partOfKind(targets, u"styles"); !look.isEmpty())
        styles = stylesOf(zip.read(look), look);
    while (xml.nextChild()) {
        if (xml.name() == u"workbookPr") {
            from1904 = xml.flag(u"date1904");
        } else if (xml.name() == u"sheets") {
            while (xml.nextChild()) {
                const Target target = targets.value(xml.attribute(u"id"));
                ValueSheet sheet{xml.attribute(u"name"), target.kind == u"worksheet"};
                if (sheet.isWorksheet)
                    readSheet(target.part, sheet);
                result.sheets.push_back(std::move(sheet));
                xml.skip();
            }
            continue;
        }
        xml.skip();
    }
}

void SheetReader::readSheet(const QString& part, ValueSheet& sheet) {
    XmlPart xml(zip.read(part), part);
    row = -1;
    while (xml.nextChild()) {
        if (xml.name() == u"sheetProtection")
            sheet.isProtected = xml.flag(u"sheet");
        if (xml.name() != u"sheetData") {
            xml.skip();
            continue;
        }
        while (xml.nextChild())
            xml.name() == u"row" ? readRow(xml, sheet) : xml.skip();
    }
}

/// Rows and cells without a reference follow the one before them.
void SheetReader::readRow(XmlPart& xml, ValueSheet& sheet) {
    row = xml.number(u"r").value_or(std::min(row, biff::maxRows) + 2) - 1;
    int column = -1;
    while (xml.nextChild()) {
        if (xml.name() != u"c") {
            xml.skip();
            continue;
        }
        const QStringView reference = xml.attributeView(u"r");
        const biff::Place place = reference.isEmpty()
                                      ? biff::Place{row, std::min(column, biff::maxColumns) + 1}
                                      : placeOf(reference);
        column = place.column;
        result.put(sheet, place, readCell(xml));
    }
}

Value SheetReader::readCell(XmlPart& xml) const {
    const QString type = xml.attribute(u"t");
    const int style = xml.number(u"s").value_or(0);
    Value value;
    while (xml.nextChild()) {
        if (xml.name() == u"v")
            value = valueOf(type, xml.text(), style);
        else if (xml.name() == u"is" && type == u"inlineStr")
            value = richText(xml);
        else
            xml.skip();
    }
    return value;
}

Value SheetReader::valueOf(const QString& type, const QString& content, int style) const {
    if (type == u"str" || type == u"inlineStr")
        return unescaped(content);
    const QString word = content.trimmed();
    if (type == u"b")
        return Value::boolean(word == u"1" || word == u"true");
    if (type == u"e")
        return errorNamed(word);
    if (type == u"d")
        return momentOf(word).value_or(word);
    if (word.isEmpty())
        return {};
    bool good = false;
    if (type == u"s") {
        const uint index = word.toUInt(&good);
        if (!good || index >= strings.size())
            biff::damaged(u"a cell refers to the missing text %1"_s.arg(word.left(20)));
        return strings[index];
    }
    const double number = word.toDouble(&good);
    if (!good || !qIsFinite(number))
        biff::damaged(u"a cell has the number \"%1\""_s.arg(word.left(20)));
    return styles.isDate(style) ? biff::fromSerial(number, from1904) : number;
}

} // namespace

void readXlsx(ZipPackage& package, ValueBook& book) {
    const QString main = partOfKind(readTargets(package, {}), u"officeDocument");
    if (main.isEmpty())
        throw biff::Refusal(u"is a zip file and no workbook"_s);
    if (main.endsWith(u".bin"))
        throw biff::Refusal(u"is a binary Excel workbook (.xlsb), which cannot be read"_s);
    SheetReader(package, book).readBook(main);
}

} // namespace excel
