// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/text.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr quint8 wideFlag = 1;
constexpr quint8 phoneticFlag = 4;
constexpr quint8 richFlag = 8;

QString decode(QByteArrayView bytes, bool wide) {
    if (!wide)
        return QString::fromLatin1(bytes);
    QString text(bytes.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(get16(bytes, 2 * i));
    return text;
}

} // namespace

QString shortText(const QByteArray& body, qsizetype at) {
    const int count = get8(body, at);
    const bool wide = get8(body, at + 1) & wideFlag;
    return decode(slice(body, at + 2, wide ? 2 * count : count), wide);
}

QString longText(const QByteArray& body, qsizetype at) {
    const qsizetype count = get16(body, at);
    if (count == 0)
        return {};
    const bool wide = get8(body, at + 2) & wideFlag;
    const qsizetype there = (body.size() - at - 3) / (wide ? 2 : 1);
    return decode(slice(body, at + 3, std::min(count, there) * (wide ? 2 : 1)), wide);
}

bool isLatin1(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
}

void appendCharacters(QByteArray& bytes, QStringView text, bool wide) {
    for (const QChar c : text) {
        if (wide)
            append16(bytes, c.unicode());
        else
            append8(bytes, quint8(c.unicode()));
    }
}

QByteArray longTextBytes(const QString& text) {
    const bool wide = !isLatin1(text);
    QByteArray bytes;
    append16(bytes, quint16(text.size()));
    append8(bytes, wide ? wideFlag : 0);
    appendCharacters(bytes, text, wide);
    return bytes;
}

ChunkReader::ChunkReader(std::vector<QByteArray> parts) : chunks(std::move(parts)) {
    for (const QByteArray& chunk : chunks)
        left += quint64(chunk.size());
}

void ChunkReader::nextChunk() {
    while (current < chunks.size() && at == chunks[current].size()) {
        ++current;
        at = 0;
    }
    if (current == chunks.size())
        damaged(u"a text runs past the end of its record"_s);
}

quint8 ChunkReader::u8() {
    nextChunk();
    --left;
    return get8(chunks[current], at++);
}

quint16 ChunkReader::u16() {
    const int low = u8();
    return quint16(low | u8() << 8);
}

quint32 ChunkReader::u32() {
    const quint32 low = u16();
    return low | quint32(u16()) << 16;
}

void ChunkReader::skip(quint64 count) {
    if (count > left)
        damaged(u"a text runs past the end of its record"_s);
    left -= count;
    while (count > 0) {
        nextChunk();
        const auto step = std::min<quint64>(count, quint64(chunks[current].size() - at));
        at += qsizetype(step);
        count -= step;
    }
}

QString ChunkReader::characters(int count, quint8 flags) {
    QString text;
    while (count > 0) {
        if (current < chunks.size() && at == chunks[current].size())
            flags = u8();
        nextChunk();
        const int width = flags & wideFlag ? 2 : 1;
        const auto fit = std::min<qsizetype>(count, (chunks[current].size() - at) / width);
        if (fit == 0)
            damaged(u"a character is cut in two"_s);
        text += decode(slice(chunks[current], at, fit * width), width == 2);
        at += fit * width;
        left -= quint64(fit * width);
        count -= int(fit);
    }
    return text;
}

QString ChunkReader::richText(bool* plain) {
    const int count = u16();
    const quint8 flags = u8();
    if (count > maxCellText)
        damaged(u"a text is longer than a cell can hold"_s);
    const quint64 runs = flags & richFlag ? u16() : 0;
    const quint64 phonetic = flags & phoneticFlag ? u32() : 0;
    QString text = characters(count, flags);
    skip(4 * runs + phonetic);
    if (plain)
        *plain = (flags & (richFlag | phoneticFlag)) == 0;
    return text;
}

} // namespace excel::biff
