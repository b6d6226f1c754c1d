// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

#include <functional>

namespace forms {

/// Where the program's "today" comes from; a test puts its own day here.
inline std::function<QDate()> todayHook = [] { return QDate::currentDate(); };

inline QDate today() {
    return todayHook();
}

/// Where the program's "now" comes from, the names of its backup copies for one.
inline std::function<QDateTime()> nowHook = [] { return QDateTime::currentDateTime(); };

} // namespace forms
