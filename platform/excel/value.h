// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <optional>
#include <variant>

namespace excel {

/// The value of a cell. For a formula it is the result stored in the file; formulas are never computed.
class Value {
public:
    enum class Type { Blank, Text, Number, Date, Boolean, Error };

    Value() = default;          ///< blank
    Value(const QString& text); ///< an empty text is a blank
    Value(double number) : content(number) {}
    Value(int number) : content(double(number)) {}
    Value(bool) = delete; ///< use boolean()
    Value(QDate date, QTime time = QTime(0, 0)) : content(Moment{date, time}) {}
    static Value boolean(bool value);
    /// An error value by its code in the file: 0x00 #NULL!, 0x07 #DIV/0!, 0x0F #VALUE!, 0x17 #REF!,
    /// 0x1D #NAME?, 0x24 #NUM!, 0x2A #N/A.
    static Value error(quint8 code);

    Type type() const { return Type(content.index()); }
    bool isBlank() const { return type() == Type::Blank; }

    /// The value as a person reads it: "" for a blank, whole numbers without a point, other numbers with up
    /// to 15 digits and a point, dates as dd/mm/yyyy followed by hh:mm:ss when there is a time of day,
    /// TRUE or FALSE, the name of the error. The same in every locale.
    QString text() const;
    /// The number of a Number cell; nothing for every other type.
    std::optional<double> number() const;
    /// The day and the time of day of a Date cell; an invalid date or time for every other type.
    QDate date() const;
    QTime time() const;
    /// The truth value of a Boolean cell; nothing for every other type.
    std::optional<bool> truth() const;

    bool operator==(const Value& other) const = default;

private:
    struct Moment {
        QDate date;
        QTime time;
        bool operator==(const Moment&) const = default;
    };
    struct ErrorCode {
        quint8 code;
        bool operator==(const ErrorCode&) const = default;
    };
    /// In the order of Type.
    std::variant<std::monostate, QString, double, Moment, bool, ErrorCode> content;
};

} // namespace excel
