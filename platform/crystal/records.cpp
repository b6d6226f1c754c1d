// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/records.h"

#include "platform/ado/connection.h"
#include "platform/ado/session.h"
#include "platform/ado/value.h"
#include "platform/crystal/reportfailure.h"

#include <QDate>
#include <QSet>

#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace crystal {
namespace {

using Format = ShownField::Format;

QString toText(const ShownField& field, const QVariant& value) {
    if (field.format == Format::YesNo)
        return value.toBool() ? field.yes : field.no;
    if (field.format == Format::Number && value.isValid()) {
        const double number = value.toDouble();
        if (number == 0 && !field.zero.isEmpty())
            return field.zero;
        return QString::number(number, 'f', field.decimals);
    }
    return ado::toText(value);
}

/// The mean of the values; a 0 that has a text of its own is not a value.
struct Mean {
    double sum = 0;
    int count = 0;

    void add(const ShownField& field, const QVariant& value) {
        if (!value.isValid() || (value.toDouble() == 0 && !field.zero.isEmpty()))
            return;
        sum += value.toDouble();
        ++count;
    }
    QString text(const ShownField& field) const {
        // The mean of whole numbers has decimals as well.
        return count == 0 ? QString() : QString::number(sum / count, 'f', std::max(field.decimals, 2));
    }
};

/// Builds the body's lines from the records as they come.
class Body {
public:
    Body(const Layout& source, std::vector<Block>& target)
        : layout(source), blocks(target), current(source.groups.size()), means(source.columns.size()) {}

    /// values: of the columns, then for each column with `meanOf` whether its mean takes the record in.
    void add(const QStringList& groupTexts, const std::vector<QVariant>& values) {
        qsizetype level = 0;
        // Case-insensitive, as the store sorts.
        while (rows > 0 && level < groupTexts.size() &&
               groupTexts[level].compare(current[static_cast<std::size_t>(level)].text,
                                         Qt::CaseInsensitive) == 0)
            ++level;
        if (rows > 0 && level < groupTexts.size())
            close(level);
        for (; level < groupTexts.size(); ++level)
            open(level, groupTexts[level]);
        ++rows;
        for (OpenGroup& group : current)
            ++group.rows;
        QStringList texts;
        std::size_t taken = layout.columns.size();
        for (std::size_t i = 0; i < layout.columns.size(); ++i) {
            if (layout.columns[i].meanOf.isEmpty() || values[taken++].toBool())
                means[i].add(layout.columns[i].field, values[i]);
            texts << shared(toText(layout.columns[i].field, values[i]));
        }
        blocks.push_back({Block::Kind::Row, 0, texts});
    }
    void finish() {
        if (rows > 0)
            close(0);
    }

private:
    struct OpenGroup {
        QString text;
        int rows = 0;
        std::size_t block = 0; // of its heading
        bool heading = false;
    };

    void open(qsizetype level, const QString& text) {
        const QString& label = layout.groups[static_cast<std::size_t>(level)].field.words;
        // A group without a value needs a heading only where its rows would appear to belong to the group
        // above.
        const bool apart = !blocks.empty() && blocks.back().kind != Block::Kind::Heading;
        OpenGroup& group = current[static_cast<std::size_t>(level)];
        group = {text, 0, blocks.size(), apart || !text.isEmpty()};
        if (!group.heading)
            return;
        const QString words = text.isEmpty() ? u"\u2013"_s : text;
        blocks.push_back({Block::Kind::Heading,
                          static_cast<int>(level),
                          {label.isEmpty() ? words : label + u' ' + words, QString()}});
    }

    /// Ends the group of that level and those within it; level 0 without groups: the whole body.
    void close(qsizetype level) {
        QStringList texts;
        for (std::size_t i = 0; i < means.size(); ++i) {
            texts << (layout.columns[i].mean ? means[i].text(layout.columns[i].field) : QString());
            means[i] = {};
        }
        if (!texts.join(QString()).isEmpty())
            blocks.push_back({Block::Kind::Mean, 0, texts});
        for (auto i = static_cast<std::size_t>(level); i < current.size(); ++i) {
            const Group& group = layout.groups[i];
            if (current[i].heading && !group.oneRow.isEmpty())
                blocks[current[i].block].texts[1] =
                    QString(current[i].rows == 1 ? group.oneRow : group.manyRows)
                        .replace(u"%n"_s, QString::number(current[i].rows));
        }
    }

    /// Shares the memory of equal texts: names and questions recur.
    QString shared(const QString& text) { return *known.insert(text); }

    const Layout& layout;
    std::vector<Block>& blocks;
    std::vector<OpenGroup> current;
    std::vector<Mean> means;
    QSet<QString> known;
    int rows = 0;
};

class Source {
public:
    Source(const Layout& description, ado::Connection& connection)
        : layout(description), session(*connection.session()) {
        for (const ado::Column& column : session.columnsOf(layout.table))
            types[column.name.toLower()] = column.type;
        if (types.empty())
            throw reportFailure(layout.file, layout.line,
                                u"The database has no table or saved query '%1'."_s.arg(layout.table));
    }

    Records read(const std::vector<Condition>& selection) {
        for (const HeadValue& value : layout.values)
            take(value.field);
        for (const Group& group : layout.groups)
            take(group.field);
        for (const Column& column : layout.columns)
            take(column.field);
        for (const Column& column : layout.columns) {
            ShownField counted;
            counted.name = column.meanOf;
            counted.format = Format::YesNo;
            counted.line = column.field.line;
            if (!counted.name.isEmpty())
                take(counted);
        }
        ado::Statement statement;
        statement.sql = u"select "_s + expressions.join(u", "_s) + u" from " + ado::quoted(layout.table);
        addConditions(statement, selection);
        addOrder(statement);
        return recordsOf(session.prepare(statement), selection);
    }

private:
    ado::ColumnType typeOf(const QString& field, qint64 line) const {
        const auto found = types.find(field.toLower());
        if (found == types.end())
            throw reportFailure(layout.file, line,
                                u"There is no field '%1' in '%2'."_s.arg(field, layout.table));
        return found->second;
    }

    /// A yes/no that is Null counts as no, so that both are in one group.
    QString expression(const QString& field, qint64 line) const {
        if (typeOf(field, line) == ado::ColumnType::YesNo)
            return u"coalesce("_s + ado::quoted(field) + u", 0)";
        return ado::quoted(field);
    }

    void take(const ShownField& field) {
        const ado::ColumnType type = typeOf(field.name, field.line);
        const bool text = type == ado::ColumnType::Text || type == ado::ColumnType::Undeclared;
        const bool fits = field.format == Format::Text ||
                          (field.format == Format::Date && type == ado::ColumnType::Date) ||
                          (field.format == Format::YesNo && type == ado::ColumnType::YesNo) ||
                          (field.format == Format::Number && !text && type != ado::ColumnType::Date &&
                           type != ado::ColumnType::YesNo);
        if (!fits)
            throw reportFailure(
                layout.file, field.line,
                u"The format does not fit the field '%1', which holds something else."_s.arg(field.name));
        expressions << expression(field.name, field.line);
        taken.push_back(type);
    }

    void addConditions(ado::Statement& statement, const std::vector<Condition>& selection) const {
        QStringList parts;
        for (const Condition& condition : selection) {
            const QString name = u'{' + condition.table + u'.' + condition.field + u'}';
            if (condition.table.compare(layout.table, Qt::CaseInsensitive) != 0)
                throw reportFailure(
                    layout.file, layout.line,
                    u"The selection formula names %1, but the report reads '%2'."_s.arg(name, layout.table));
            const bool date = condition.value.typeId() == QMetaType::QDate;
            const ado::ColumnType type = typeOf(condition.field, layout.line);
            if (type != (date ? ado::ColumnType::Date : ado::ColumnType::Text))
                throw reportFailure(
                    layout.file, layout.line,
                    u"The selection formula compares %1 with a %2, which it does not hold."_s.arg(
                        name, date ? u"date"_s : u"text"_s));
            parts << ado::quoted(condition.field) + u' ' + condition.comparison + u" ?";
            statement.parameters << ado::toStore(type, condition.value);
        }
        if (!parts.isEmpty())
            statement.sql += u" where " + parts.join(u" and "_s);
    }

    /// The groups first, then the layout's own order, then the order of entry.
    void addOrder(ado::Statement& statement) const {
        QStringList keys;
        const auto add = [&](const QString& key, bool descending) {
            keys << key + (descending ? u" desc"_s : QString());
        };
        for (const Group& group : layout.groups)
            add(expression(group.field.name, group.field.line), group.descending);
        for (const Order& order : layout.orders) {
            QString key = expression(order.field, order.line);
            if (!order.where.isEmpty()) {
                key = u"case when "_s + expression(order.where, order.line) + u" = ? then " + key + u" end";
                statement.parameters << order.is;
            }
            add(key, order.descending);
        }
        if (const QString key = session.keyOf(layout.table); !key.isEmpty())
            keys << ado::quoted(key);
        if (!keys.isEmpty())
            statement.sql += u" order by " + keys.join(u", "_s);
    }

    Records recordsOf(ado::Prepared rows, const std::vector<Condition>& selection) const {
        Records result;
        Body body(layout, result.blocks);
        std::vector<QVariant> head(layout.values.size());
        for (bool first = true; rows.step(); first = false) {
            std::vector<QVariant> values;
            values.reserve(taken.size());
            for (std::size_t i = 0; i < taken.size(); ++i)
                values.push_back(rows.column(static_cast<int>(i), taken[i]));
            for (std::size_t i = 0; i < head.size(); ++i)
                takeForHead(layout.values[i].take, first, values[i], head[i]);
            const auto groups = values.begin() + static_cast<std::ptrdiff_t>(head.size());
            const auto columns = groups + static_cast<std::ptrdiff_t>(layout.groups.size());
            QStringList groupTexts;
            for (std::size_t i = 0; i < layout.groups.size(); ++i)
                groupTexts << toText(layout.groups[i].field, groups[static_cast<std::ptrdiff_t>(i)]);
            body.add(groupTexts, {columns, values.end()});
        }
        body.finish();
        for (std::size_t i = 0; i < head.size(); ++i)
            result.values << headText(layout.values[i].field, head[i], selection);
        return result;
    }

    static void takeForHead(HeadValue::Take take, bool first, const QVariant& value, QVariant& kept) {
        const auto order = QVariant::compare(value, kept);
        if (first || (take == HeadValue::Take::Smallest && order == QPartialOrdering::Less) ||
            (take == HeadValue::Take::Largest && order == QPartialOrdering::Greater))
            kept = value;
    }

    /// Without a record, the value that the selection asked for.
    static QString headText(const ShownField& field, const QVariant& value,
                            const std::vector<Condition>& selection) {
        if (value.isValid())
            return toText(field, value);
        for (const Condition& condition : selection) {
            if (condition.comparison == u"=" && condition.field.compare(field.name, Qt::CaseInsensitive) == 0)
                return toText(field, condition.value);
        }
        return {};
    }

    const Layout& layout;
    ado::Session& session;
    std::map<QString, ado::ColumnType> types; // by the column's name in small letters
    QStringList expressions;
    std::vector<ado::ColumnType> taken;
};

} // namespace

Records readRecords(const Layout& layout, const std::vector<Condition>& selection,
                    ado::Connection& connection) {
    return Source(layout, connection).read(selection);
}

Records readRecords(const Layout& layout, const std::vector<Condition>& selection, const QString& database,
                    const QString& password) {
    try {
        ado::Connection connection;
        connection.OpenReadOnly(database, password);
        return readRecords(layout, selection, connection);
    } catch (const Failure& failure) {
        if (failure.number() == reportFailureNumber)
            throw;
        throw reportFailure(database, 0, failure.text());
    }
}

} // namespace crystal
