// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bytes.h"
#include "platform/excel/formats.h"

namespace excel::biff {

namespace {

enum UsedGroup : quint8 {
    NumberGroup = 0x04,
    FontGroup = 0x08,
    AlignmentGroup = 0x10,
    BorderGroup = 0x20,
    PatternGroup = 0x40,
    ProtectionGroup = 0x80
};

constexpr quint16 lockedBit = 1;
constexpr quint16 styleBit = 4;
constexpr quint8 wrapBit = 8;
constexpr quint32 extendedBit = 1U << 25;

quint32 withBits(quint32 word, int shift, int width, quint32 value) {
    const quint32 mask = ((1U << width) - 1) << shift;
    return (word & ~mask) | (value << shift);
}

} // namespace

bool CellFormat::isStyle() const {
    return get16(raw, 4) & styleBit;
}
quint16 CellFormat::font() const {
    return get16(raw, 0);
}
quint16 CellFormat::numberFormat() const {
    return get16(raw, 2);
}
bool CellFormat::locked() const {
    return get16(raw, 4) & lockedBit;
}
bool CellFormat::wrapped() const {
    return get8(raw, 6) & wrapBit;
}

bool CellFormat::looksLike(const CellFormat& other) const {
    const auto look = [](QByteArray bytes) {
        put16(bytes, 4, get16(bytes, 4) & 0x000B); // lock, hidden formula, prefix
        put8(bytes, 9, 0);
        return bytes;
    };
    return look(raw) == look(other.raw);
}

void CellFormat::markUsed(quint8 group) {
    put8(raw, 9, get8(raw, 9) | group);
}

void CellFormat::setFont(quint16 index) {
    put16(raw, 0, index);
    markUsed(FontGroup);
}

void CellFormat::setNumberFormat(quint16 id) {
    put16(raw, 2, id);
    markUsed(NumberGroup);
}

void CellFormat::setLocked(bool locked) {
    put16(raw, 4, quint16(withBits(get16(raw, 4), 0, 1, locked)));
    markUsed(ProtectionGroup);
}

void CellFormat::setWrapped(bool wrapped) {
    put8(raw, 6, quint8(withBits(get8(raw, 6), 3, 1, wrapped)));
    markUsed(AlignmentGroup);
}

void CellFormat::setEdge(Edge edge, LineStyle style, quint8 colour) {
    const quint32 styles = withBits(get32(raw, 10), 4 * edge, 4, style);
    const bool sideways = edge == Left || edge == Right;
    const int shift = edge == Left ? 16 : edge == Right ? 23 : edge == Top ? 0 : 7;
    put32(raw, 10, sideways ? withBits(styles, shift, 7, colour) : styles);
    if (!sideways)
        put32(raw, 14, withBits(get32(raw, 14), shift, 7, colour));
    markUsed(BorderGroup);
}

void CellFormat::setFill(quint8 colour) {
    constexpr quint32 solid = 1;
    put32(raw, 14, withBits(get32(raw, 14), 26, 6, solid));
    put16(raw, 18, quint16(withBits(get16(raw, 18), 0, 7, colour)));
    markUsed(PatternGroup);
}

CellFormat CellFormat::cellClone(quint16 ownIndex) const {
    CellFormat clone = *this;
    if (isStyle()) {
        const quint32 flags = withBits(get16(raw, 4), 2, 1, 0);
        put16(clone.raw, 4, quint16(withBits(flags, 4, 12, ownIndex)));
        put8(clone.raw, 9, 0);
    }
    put32(clone.raw, 14, get32(raw, 14) & ~extendedBit);
    return clone;
}

} // namespace excel::biff
