// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantList>

#include <vector>

#include <mysql.h>

namespace ado {

/// The values of one parameter in several runs of a statement, as a server takes them in one message. All are
/// whole numbers, or all are numbers, else they go as texts.
class ValueArray {
public:
    ValueArray(const std::vector<const QVariantList*>& rows, qsizetype parameter);
    /// Refers to this array.
    MYSQL_BIND bind();
    /// Bytes of all values as they are sent, with their indicators.
    qulonglong size() const;

private:
    void take(const QVariant& value);

    enum_field_types type = MYSQL_TYPE_LONGLONG;
    std::vector<char> indicators; ///< of Null
    std::vector<long long> wholes;
    std::vector<double> reals;
    std::vector<QByteArray> texts;
    std::vector<char*> starts;
    std::vector<unsigned long> lengths;
};

} // namespace ado
