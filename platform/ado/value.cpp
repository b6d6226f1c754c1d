// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/value.h"

#include "platform/ado/error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

[[noreturn]] void typeMismatch() {
    throw Failure(Failure::typeMismatch, u"Type mismatch"_s);
}

std::optional<double> numberOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? -1 : 0;
    bool isNumber = false;
    double result = 0;
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        result = QStringView(text).trimmed().toDouble(&isNumber);
    } else {
        result = value.toDouble(&isNumber);
    }
    return isNumber && std::isfinite(result) ? std::optional(result) : std::nullopt;
}

double toNumber(const QVariant& value) {
    const std::optional<double> number = numberOf(value);
    if (!number)
        typeMismatch();
    return *number;
}

QDate toDate(const QVariant& value) {
    const QDate date = value.typeId() == QMetaType::QString
                           ? QDate::fromString(value.toString().trimmed(), dateTextFormat.toString())
                           : value.toDate();
    if (!date.isValid())
        typeMismatch();
    return date;
}

bool toYesNo(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().trimmed();
    if (text.compare(u"true"_s, Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"false"_s, Qt::CaseInsensitive) == 0)
        return false;
    return toNumber(value) != 0;
}

template <class View> QDate isoDate(View text) {
    const auto digits = [text](qsizetype from, qsizetype count) {
        int value = 0;
        for (qsizetype i = from; i < from + count; ++i) {
            const QChar c(text[i]);
            if (c < u'0' || c > u'9')
                return -1;
            value = value * 10 + c.unicode() - u'0';
        }
        return value;
    };
    if (text.size() != 10 || QChar(text[4]) != u'-' || QChar(text[7]) != u'-')
        return {};
    const int year = digits(0, 4);
    const int month = digits(5, 2);
    const int day = digits(8, 2);
    return year > 0 ? QDate(year, month, day) : QDate();
}

/// The fewest digits that distinguish the number from its neighbours.
QString shortest(float number) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return QString::fromLatin1(digits.data(), end - digits.data());
}

} // namespace

ColumnType columnType(const char* declared) {
    static constexpr std::array<std::pair<const char*, ColumnType>, 8> words{
        {{"TEXT", ColumnType::Text},
         {"INTEGER", ColumnType::Integer},
         {"SMALLINT", ColumnType::SmallInt},
         {"SINGLE", ColumnType::Single},
         {"DOUBLE", ColumnType::Double},
         {"DECIMAL", ColumnType::Double},
         {"DATE", ColumnType::Date},
         {"YESNO", ColumnType::YesNo}}};
    const std::string_view whole = declared ? declared : "";
    const std::string_view name = whole.substr(0, whole.find_first_of("( "));
    for (const auto& [word, type] : words) {
        if (name.size() == std::strlen(word) && qstrnicmp(name.data(), word, name.size()) == 0)
            return type;
    }
    return ColumnType::Undeclared;
}

QDate fromIso(QStringView text) {
    return isoDate(text);
}

QDate fromIso(QLatin1StringView text) {
    return isoDate(text);
}

QString toIso(QDate date) {
    if (date.year() < 1 || date.year() > 9999)
        return {};
    QString text(10, u'-');
    const auto put = [&text](qsizetype from, qsizetype count, int number) {
        for (qsizetype i = from + count - 1; i >= from; --i, number /= 10)
            text[i] = QChar(u'0' + number % 10);
    };
    put(0, 4, date.year());
    put(5, 2, date.month());
    put(8, 2, date.day());
    return text;
}

QString toText(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::QDate:
        return value.toDate().toString(dateTextFormat);
    case QMetaType::Bool:
        return value.toBool() ? u"True"_s : u"False"_s;
    case QMetaType::Float:
        return shortest(value.toFloat());
    default:
        return value.toString();
    }
}

double roundHalfEven(double value) {
    return std::nearbyint(value); // the default rounding mode is to nearest, ties to even
}

bool isWhole(const QVariant& value, qlonglong smallest, qlonglong largest) {
    const std::optional<double> number = numberOf(value);
    return number && roundHalfEven(*number) >= static_cast<double>(smallest) &&
           roundHalfEven(*number) <= static_cast<double>(largest);
}

qlonglong toWhole(const QVariant& value, qlonglong smallest, qlonglong largest) {
    bool isExact = false;
    const int type = value.typeId();
    if (type == QMetaType::LongLong || type == QMetaType::Int || type == QMetaType::QString) {
        const qlonglong whole = value.toLongLong(&isExact);
        if (isExact && whole >= smallest && whole <= largest)
            return whole;
    }
    const double rounded = roundHalfEven(toNumber(value));
    if (rounded < static_cast<double>(smallest) || rounded > static_cast<double>(largest))
        throw Failure(Failure::overflow, u"Overflow"_s);
    return static_cast<qlonglong>(rounded);
}

QVariant fromStore(ColumnType type, const QVariant& stored) {
    if (!stored.isValid())
        return {};
    switch (type) {
    case ColumnType::YesNo:
        return stored.toDouble() != 0;
    case ColumnType::Date:
        return fromIso(stored.toString());
    case ColumnType::Single:
        return stored.toFloat();
    case ColumnType::Double:
        return stored.toDouble();
    case ColumnType::Text:
        return stored.typeId() == QMetaType::QString ? stored : QVariant(stored.toString());
    default:
        return stored;
    }
}

QVariant toStore(ColumnType type, const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return {};
    switch (type) {
    case ColumnType::Text:
        return toText(value);
    case ColumnType::Integer:
        return toWhole(value, INT32_MIN, INT32_MAX);
    case ColumnType::SmallInt:
        return toWhole(value);
    case ColumnType::Single:
        return static_cast<double>(static_cast<float>(toNumber(value)));
    case ColumnType::Double:
        return toNumber(value);
    case ColumnType::Date:
        return toIso(toDate(value));
    case ColumnType::YesNo:
        return toYesNo(value) ? -1 : 0;
    case ColumnType::Undeclared:
        break;
    }
    return value;
}

} // namespace ado
