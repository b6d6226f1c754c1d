// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <ostream>

using namespace Qt::StringLiterals;

inline std::ostream& operator<<(std::ostream& out, const QString& text) {
    return out << text.toStdString();
}
/// Prints texts in gtest's failure messages.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text << '"';
}
