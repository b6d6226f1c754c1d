// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/record.h"

#include <QHash>
#include <QString>

namespace excel::biff {

/// The workbook's table of cell texts. Existing texts are kept byte for byte, rich and phonetic texts
/// included; new texts are only appended, so every index in the workbook stays valid.
class SharedStrings {
public:
    /// `globals` are the workbook's global records; a workbook without the table gets an empty one.
    explicit SharedStrings(const Records& globals);

    quint32 count() const { return quint32(texts.size()); }
    const QString& text(quint32 index) const; ///< throws Refusal beyond the table
    /// Index of an equal unformatted text, appended when there is none. At most maxCellText units.
    quint32 intern(const QString& text);
    /// Replaces the table in `globals` and drops the index of offsets into it.
    void writeInto(Records& globals) const;

private:
    void readTexts(quint32 counted);
    void append(const QString& text);
    std::vector<QByteArray> chunks;
    size_t lastChunk = 0; ///< where the last text ends
    qsizetype lastEnd = 8;
    std::vector<QString> texts;
    QHash<QString, quint32> plainIndex;
};

} // namespace excel::biff
