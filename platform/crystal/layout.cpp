// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/layout.h"

#include "platform/crystal/reportfailure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace crystal {
namespace {

/// The attributes of one element; each that is read is crossed off, so that what is left over can be refused.
class Attributes {
public:
    Attributes(const QXmlStreamReader& xml, const QString& source)
        : element(xml.name().toString()), line(xml.lineNumber()), file(source) {
        for (const QXmlStreamAttribute& attribute : xml.attributes())
            values.emplace_back(attribute.qualifiedName().toString(), attribute.value().toString());
    }

    QString text(const QString& name) {
        QString value = text(name, {});
        if (value.isEmpty())
            refuse(u"<"_s + element + u"> needs the attribute '" + name + u"'.");
        return value;
    }
    QString text(const QString& name, const QString& otherwise) {
        const auto found = std::find_if(values.begin(), values.end(),
                                        [&](const auto& attribute) { return attribute.first == name; });
        if (found == values.end())
            return otherwise;
        QString value = found->second;
        values.erase(found);
        return value;
    }
    double number(const QString& name, double otherwise, double smallest, double largest) {
        const QString value = text(name, QString::number(otherwise));
        bool valid = false;
        const double result = value.toDouble(&valid);
        if (!valid || result < smallest || result > largest)
            refuse(u"%1=\"%2\" is not a number from %3 to %4."_s.arg(name, value, QString::number(smallest),
                                                                     QString::number(largest)));
        return result;
    }
    /// The position of the value among those allowed; the first is the default.
    int oneOf(const QString& name, const QStringList& allowed) {
        const QString value = text(name, allowed.first());
        const auto index = allowed.indexOf(value);
        if (index < 0)
            refuse(u"%1=\"%2\" is not one of: %3."_s.arg(name, value, allowed.join(u", "_s)));
        return static_cast<int>(index);
    }
    void finish() const {
        if (!values.empty())
            refuse(u"<"_s + element + u"> has no attribute '" + values.front().first + u"'.");
    }
    [[noreturn]] void refuse(const QString& sentence) const { throw reportFailure(file, line, sentence); }
    qint64 lineNumber() const { return line; }

private:
    QString element;
    qint64 line;
    const QString& file;
    std::vector<std::pair<QString, QString>> values;
};

ShownField shownField(Attributes& attributes, const QString& wordsAttribute) {
    ShownField result;
    result.line = attributes.lineNumber();
    result.name = attributes.text(u"field"_s);
    result.words = attributes.text(wordsAttribute, {});
    result.format = static_cast<ShownField::Format>(
        attributes.oneOf(u"format"_s, {u"text"_s, u"date"_s, u"number"_s, u"yesno"_s}));
    if (result.format == ShownField::Format::Number) {
        result.decimals = static_cast<int>(attributes.number(u"decimals"_s, 0, 0, 9));
        result.zero = attributes.text(u"zero"_s, {});
    }
    if (result.format == ShownField::Format::YesNo) {
        result.yes = attributes.text(u"yes"_s);
        result.no = attributes.text(u"no"_s);
    }
    return result;
}

bool descending(Attributes& attributes) {
    return attributes.oneOf(u"direction"_s, {u"ascending"_s, u"descending"_s}) == 1;
}

QPageLayout pageOf(Attributes& attributes) {
    constexpr QPageSize::PageSizeId sizes[] = {QPageSize::A4, QPageSize::A3, QPageSize::A5, QPageSize::Letter,
                                               QPageSize::Legal};
    const int size = attributes.oneOf(u"paper"_s, {u"A4"_s, u"A3"_s, u"A5"_s, u"Letter"_s, u"Legal"_s});
    const int orientation = attributes.oneOf(u"orientation"_s, {u"portrait"_s, u"landscape"_s});
    const auto margin = [&](const QString& name) { return attributes.number(name, 15, 0, 60); };
    return {QPageSize(sizes[size]), orientation == 1 ? QPageLayout::Landscape : QPageLayout::Portrait,
            QMarginsF(margin(u"left"_s), margin(u"top"_s), margin(u"right"_s), margin(u"bottom"_s)),
            QPageLayout::Millimeter};
}

Group groupOf(Attributes& attributes) {
    Group result;
    result.field = shownField(attributes, u"label"_s);
    result.descending = descending(attributes);
    const QString count = attributes.text(u"count"_s, {});
    result.oneRow = count.section(u'|', 0, 0);
    result.manyRows = count.section(u'|', 1);
    if (!count.isEmpty() && (result.oneRow.isEmpty() || result.manyRows.isEmpty()))
        attributes.refuse(
            u"count=\"%1\" is not two words with a bar between: \"one row|%n rows\"."_s.arg(count));
    return result;
}

Column columnOf(Attributes& attributes) {
    constexpr Qt::AlignmentFlag sides[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    Column result;
    result.field = shownField(attributes, u"heading"_s);
    result.share = attributes.number(u"width"_s, 0, 1, 1000);
    result.align = sides[attributes.oneOf(u"align"_s, {u"left"_s, u"right"_s, u"center"_s})];
    result.repeats = attributes.oneOf(u"repeats"_s, {u"yes"_s, u"no"_s}) == 0;
    result.mean = attributes.oneOf(u"mean"_s, {u"no"_s, u"yes"_s}) == 1;
    if (result.mean && result.field.format != ShownField::Format::Number)
        attributes.refuse(u"Only a column with format=\"number\" has a mean."_s);
    result.meanOf = attributes.text(u"meanof"_s, {});
    return result;
}

class Reader {
public:
    explicit Reader(const QString& path) { layout.file = path; }

    Layout read() {
        QFile source(layout.file);
        if (!source.open(QIODevice::ReadOnly))
            throw reportFailure(layout.file, 0, u"The report layout is not there or cannot be read."_s);
        xml.setDevice(&source);
        if (xml.readNextStartElement())
            report();
        // Also reads what follows the report, so that a damaged end is detected.
        while (!xml.atEnd())
            xml.readNext();
        if (xml.hasError())
            throw reportFailure(layout.file, xml.lineNumber(),
                                u"The layout is not valid XML: %1"_s.arg(xml.errorString()));
        if (layout.columns.empty())
            throw reportFailure(layout.file, layout.line, u"The layout has no <column>."_s);
        return layout;
    }

private:
    void report() {
        Attributes attributes(xml, layout.file);
        if (xml.name() != u"report")
            attributes.refuse(u"<report> is expected and not <%1>."_s.arg(xml.name()));
        layout.line = attributes.lineNumber();
        layout.title = attributes.text(u"title"_s);
        layout.table = attributes.text(u"table"_s);
        layout.empty = attributes.text(u"empty"_s);
        layout.organisation = attributes.text(u"organisation"_s, {});
        attributes.finish();
        while (xml.readNextStartElement()) {
            element();
            xml.skipCurrentElement();
        }
    }

    void element() {
        Attributes attributes(xml, layout.file);
        const QString name = xml.name().toString();
        if (name == u"page") {
            layout.page = pageOf(attributes);
            layout.fontSize = attributes.number(u"size"_s, 9, 6, 20);
        } else if (name == u"formula") {
            layout.formulas.push_back({attributes.text(u"name"_s), attributes.text(u"label"_s, {}),
                                       attributes.lineNumber(), qsizetype(layout.values.size())});
        } else if (name == u"value") {
            HeadValue value;
            value.field = shownField(attributes, u"label"_s);
            value.take = static_cast<HeadValue::Take>(
                attributes.oneOf(u"take"_s, {u"first"_s, u"smallest"_s, u"largest"_s}));
            layout.values.push_back(value);
        } else if (name == u"picture") {
            const QDir beside = QFileInfo(layout.file).absoluteDir();
            layout.pictures.push_back({beside.filePath(attributes.text(u"file"_s)),
                                       attributes.number(u"height"_s, 80, 10, 400), attributes.lineNumber()});
        } else if (name == u"group") {
            layout.groups.push_back(groupOf(attributes));
        } else if (name == u"column") {
            layout.columns.push_back(columnOf(attributes));
        } else if (name == u"order") {
            Order order{attributes.text(u"field"_s),
                        descending(attributes),
                        attributes.lineNumber(),
                        attributes.text(u"where"_s, {}),
                        {}};
            if (!order.where.isEmpty())
                order.is = attributes.text(u"is"_s);
            layout.orders.push_back(order);
        } else {
            attributes.refuse(u"A layout has no element <%1>."_s.arg(name));
        }
        attributes.finish();
    }

    QXmlStreamReader xml;
    Layout layout;
};

} // namespace

Layout readLayout(const QString& file) {
    return Reader(file).read();
}

} // namespace crystal
