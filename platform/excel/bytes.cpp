// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bytes.h"

#include "platform/excel/refusal.h"

#include <QtEndian>
#include <bit>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

void check(qsizetype size, qsizetype at, qsizetype length) {
    if (at < 0 || length < 0 || at > size || length > size - at)
        damaged(u"%1 bytes are missing at offset %2 of a part of %3 bytes"_s.arg(length).arg(at).arg(size));
}

template <typename T> T get(QByteArrayView bytes, qsizetype at) {
    check(bytes.size(), at, sizeof(T));
    return qFromLittleEndian<T>(bytes.data() + at);
}

template <typename T> void put(QByteArray& bytes, qsizetype at, T value) {
    check(bytes.size(), at, sizeof(T));
    qToLittleEndian<T>(value, bytes.data() + at);
}

template <typename T> void append(QByteArray& bytes, T value) {
    const qsizetype at = bytes.size();
    bytes.resize(at + qsizetype(sizeof(T)));
    qToLittleEndian<T>(value, bytes.data() + at);
}

} // namespace

quint8 get8(QByteArrayView bytes, qsizetype at) {
    return get<quint8>(bytes, at);
}
quint16 get16(QByteArrayView bytes, qsizetype at) {
    return get<quint16>(bytes, at);
}
quint32 get32(QByteArrayView bytes, qsizetype at) {
    return get<quint32>(bytes, at);
}
quint64 get64(QByteArrayView bytes, qsizetype at) {
    return get<quint64>(bytes, at);
}
double getDouble(QByteArrayView bytes, qsizetype at) {
    return std::bit_cast<double>(get64(bytes, at));
}

QByteArrayView slice(QByteArrayView bytes, qsizetype at, qsizetype length) {
    check(bytes.size(), at, length);
    return bytes.sliced(at, length);
}

void put8(QByteArray& bytes, qsizetype at, quint8 value) {
    put(bytes, at, value);
}
void put16(QByteArray& bytes, qsizetype at, quint16 value) {
    put(bytes, at, value);
}
void put32(QByteArray& bytes, qsizetype at, quint32 value) {
    put(bytes, at, value);
}
void put64(QByteArray& bytes, qsizetype at, quint64 value) {
    put(bytes, at, value);
}

void append8(QByteArray& bytes, quint8 value) {
    append(bytes, value);
}
void append16(QByteArray& bytes, quint16 value) {
    append(bytes, value);
}
void append32(QByteArray& bytes, quint32 value) {
    append(bytes, value);
}
void appendDouble(QByteArray& bytes, double value) {
    append(bytes, std::bit_cast<quint64>(value));
}

} // namespace excel::biff
