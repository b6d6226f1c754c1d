// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

namespace crystal {

inline constexpr int reportFailureNumber = 20500;

/// A failure of a report, with the file and, unless it is 0, the line of the layout in front of the sentence:
/// "/home/ann/log.rpt, line 12: There is no field 'x'."
inline Failure reportFailure(const QString& file, qint64 line, const QString& sentence) {
    return {reportFailureNumber,
            line > 0 ? QStringLiteral("%1, line %2: %3").arg(file, QString::number(line), sentence)
                     : QStringLiteral("%1: %2").arg(file, sentence)};
}

} // namespace crystal
