// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>

#include <functional>

namespace forms {

/// Where the program's "today" comes from; a test puts its own day here.
inline std::function<QDate()> todaySeat = [] { return QDate::currentDate(); };

inline QDate today() {
    return todaySeat();
}

} // namespace forms
