// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

#include <functional>

namespace forms {

/// Source of the program's "today"; a test replaces it.
inline std::function<QDate()> todayHook = [] { return QDate::currentDate(); };

inline QDate today() {
    return todayHook();
}

/// Source of the program's "now"; a test replaces it.
inline std::function<QDateTime()> nowHook = [] { return QDateTime::currentDateTime(); };

} // namespace forms
