// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/reporttable.h"

#include "platform/ado/value.h"

#include <QDate>

#include <algorithm>

namespace crystal {
namespace {

/// A heading without its group's label.
QString withoutLabel(const QString& heading, const QString& label) {
    return label.isEmpty() ? heading : heading.mid(label.size() + 1);
}

/// A number or date in place of its text; the text that stands for the number 0 stays.
QVariant valueOf(const ShownField& field, const QString& text) {
    bool isNumber = false;
    if (field.format == ShownField::Format::Number) {
        const double number = text.toDouble(&isNumber);
        return isNumber ? QVariant(number) : QVariant(text);
    }
    const QDate date = QDate::fromString(text, ado::dateTextFormat);
    return field.format == ShownField::Format::Date && date.isValid() ? QVariant(date) : QVariant(text);
}

} // namespace

tables::Table tableOf(const Report& report) {
    const Layout& layout = report.layout();
    tables::Table table;
    for (const Group& group : layout.groups)
        table.headings << QString(group.field.words).remove(u':');
    for (const Column& column : layout.columns)
        table.headings << column.field.words;
    QVariantList groups(static_cast<qsizetype>(layout.groups.size()));
    for (const Block& block : report.blocks()) {
        if (block.kind == Block::Kind::Heading) {
            const ShownField& field = layout.groups[static_cast<std::size_t>(block.level)].field;
            groups[block.level] = valueOf(field, withoutLabel(block.texts.value(0), field.words));
            std::fill(groups.begin() + block.level + 1, groups.end(), QVariant());
        } else if (block.kind == Block::Kind::Row) {
            QVariantList row = groups;
            for (std::size_t i = 0; i < layout.columns.size(); ++i)
                row << valueOf(layout.columns[i].field, block.texts.value(static_cast<qsizetype>(i)));
            table.rows.push_back(std::move(row));
        }
    }
    return table;
}

} // namespace crystal
