// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>

namespace crystal {

/// Thrown by every operation of this library that fails. The text is a sentence for a person, with the file
/// and, where there is one, the line of the layout in front: "/home/ann/log.rpt, line 12: There is no field
/// 'x'."
class ReportError : public std::exception {
public:
    static constexpr int Number = 20500; ///< under which a report's failure is shown

    /// line 0: the failure has no line.
    ReportError(const QString& file, qint64 line, const QString& sentence)
        : words(line > 0 ? QStringLiteral("%1, line %2: %3").arg(file, QString::number(line), sentence)
                         : QStringLiteral("%1: %2").arg(file, sentence)),
          utf8(words.toUtf8()) {}
    const QString& text() const { return words; }
    const char* what() const noexcept override { return utf8.constData(); }

private:
    QString words;
    QByteArray utf8;
};

} // namespace crystal
