// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

#include <QFileInfo>

namespace excel::biff {

/// Why a file's content is rejected, as the end of a sentence that begins with the file's name ("is damaged:
/// ..."). The public objects turn it into a Failure.
class Refusal : public std::exception {
public:
    explicit Refusal(const QString& reason) : cause(reason) {}
    const QString& reason() const { return cause; }
    const char* what() const noexcept override { return "the workbook is refused"; }

private:
    QString cause;
};

[[noreturn]] inline void damaged(const QString& detail) {
    throw Refusal(QStringLiteral("is damaged: ") + detail);
}

/// Throws Failure with a sentence about the file that ends as given.
[[noreturn]] inline void refuse(const QString& path, const QString& rest) {
    throw Failure(QStringLiteral("The file \"%1\" %2.").arg(QFileInfo(path).fileName(), rest));
}

} // namespace excel::biff
