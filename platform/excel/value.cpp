// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/value.h"

#include <QHash>

#include <cmath>

using namespace Qt::StringLiterals;

namespace excel {

namespace {

QString numberText(double number) {
    if (number == 0)
        return u"0"_s; // also for -0
    if (std::abs(number) < 1e15 && std::trunc(number) == number)
        return QString::number(qint64(number));
    return QString::number(number, 'g', 15);
}

QString errorName(quint8 code) {
    static const QHash<quint8, QString> names{{0x00, u"#NULL!"_s}, {0x07, u"#DIV/0!"_s}, {0x0F, u"#VALUE!"_s},
                                              {0x17, u"#REF!"_s},  {0x1D, u"#NAME?"_s},  {0x24, u"#NUM!"_s}};
    return names.value(code, u"#N/A"_s);
}

} // namespace

Value::Value(const QString& text) {
    if (!text.isEmpty())
        content = text;
}

Value Value::boolean(bool value) {
    Value result;
    result.content = value;
    return result;
}

Value Value::error(quint8 code) {
    Value result;
    result.content = ErrorCode{code};
    return result;
}

QString Value::text() const {
    switch (type()) {
    case Type::Text:
        return std::get<QString>(content);
    case Type::Number:
        return numberText(std::get<double>(content));
    case Type::Date:
        return date().toString(u"dd/MM/yyyy"_s) +
               (time() == QTime(0, 0) ? QString() : time().toString(u" hh:mm:ss"_s));
    case Type::Boolean:
        return std::get<bool>(content) ? u"TRUE"_s : u"FALSE"_s;
    case Type::Error:
        return errorName(std::get<ErrorCode>(content).code);
    case Type::Blank:
        break;
    }
    return {};
}

std::optional<double> Value::number() const {
    const double* number = std::get_if<double>(&content);
    return number ? std::optional(*number) : std::nullopt;
}

QDate Value::date() const {
    const Moment* moment = std::get_if<Moment>(&content);
    return moment ? moment->date : QDate();
}

QTime Value::time() const {
    const Moment* moment = std::get_if<Moment>(&content);
    return moment ? moment->time : QTime();
}

std::optional<bool> Value::truth() const {
    const bool* truth = std::get_if<bool>(&content);
    return truth ? std::optional(*truth) : std::nullopt;
}

} // namespace excel
