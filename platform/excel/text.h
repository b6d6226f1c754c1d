// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/record.h"

#include <QString>

/// Texts inside records: a count of UTF-16 units, a flags byte, and the characters, one byte each (Latin-1)
/// or two (UTF-16). The width of a text may change where it is continued in a Continue record.
namespace excel::biff {

constexpr int maxCellText = 32767; ///< UTF-16 units

/// A text with a count of one byte (sheet and font names), within one record.
QString shortText(const QByteArray& body, qsizetype at);
/// A text with a count of two bytes (formats, labels). One cut off by its record is returned as far as it
/// goes; an empty one may lack its flags.
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
    /// Characters after a flags byte; each further chunk begins with a new flags byte.
    QString characters(int count, quint8 flags);
    /// A text with a count of two bytes. Font runs and phonetic text announced by its flags are skipped;
    /// `plain` is set when there are none.
    QString richText(bool* plain = nullptr);

private:
    void nextChunk();
    std::vector<QByteArray> chunks;
    size_t current = 0;
    qsizetype at = 0;
    quint64 left = 0;
};

} // namespace excel::biff
