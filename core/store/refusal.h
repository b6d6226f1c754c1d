// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

/// Ends a step that the data at hand do not allow; nothing of it is written. The text is a sentence for the
/// user, which guarded shows under the program's usual title.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const QString& sentence) : runtime_error(sentence.toStdString()) {}
    QString text() const { return QString::fromUtf8(what()); }
};
