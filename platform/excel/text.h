// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/record.h"

#include <QString>

/// Texts inside records: a count of UTF-16 units, a flags byte, and the characters, one byte each (Latin-1)
/// or two (UTF-16). Where content runs over into Continue records the width of a text may change.
namespace excel::biff {

constexpr int maxCellText = 32767; ///< UTF-16 units

/// A text with a count of one byte (sheet and font names), within one record.
QString shortText(const QByteArray& body, qsizetype at);
/// A text with a count of two bytes (formats, labels). Of one that its record cuts off there is the part that
/// is there; an empty one may lack its flags.
QString longText(const QByteArray& body, qsizetype at);

bool isLatin1(QStringView text);
void appendCharacters(QByteArray& bytes, QStringView text, bool wide);
QByteArray longTextBytes(const QString& text);

/// Reads content that is spread over a record and its Continue records.
class ChunkReader {
public:
    explicit ChunkReader(std::vector<QByteArray> parts);
    quint8 u8();
    quint16 u16();
    quint32 u32();
    void skip(quint64 count);
    size_t chunk() const { return current; } ///< where the next byte is read
    qsizetype offset() const { return at; }
    /// Characters after a flags byte; at the edge of a chunk a new flags byte is taken.
    QString characters(int count, quint8 flags);
    /// A text with a count of two bytes and, after it, whatever its flags announce: runs of fonts and
    /// phonetic text are skipped. `plain` tells that there were none.
    QString richText(bool* plain = nullptr);

private:
    void toNextChunk();
    std::vector<QByteArray> chunks;
    size_t current = 0;
    qsizetype at = 0;
    quint64 left = 0;
};

} // namespace excel::biff
