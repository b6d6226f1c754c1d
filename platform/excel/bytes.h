// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// Little-endian access to byte strings. Every access checks its bounds and throws Refusal outside them,
/// so a hostile length can never reach memory.
namespace excel::biff {

quint8 get8(QByteArrayView bytes, qsizetype at);
quint16 get16(QByteArrayView bytes, qsizetype at);
quint32 get32(QByteArrayView bytes, qsizetype at);
quint64 get64(QByteArrayView bytes, qsizetype at);
double getDouble(QByteArrayView bytes, qsizetype at);
QByteArrayView slice(QByteArrayView bytes, qsizetype at, qsizetype length);

void put8(QByteArray& bytes, qsizetype at, quint8 value);
void put16(QByteArray& bytes, qsizetype at, quint16 value);
void put32(QByteArray& bytes, qsizetype at, quint32 value);
void put64(QByteArray& bytes, qsizetype at, quint64 value);

void append8(QByteArray& bytes, quint8 value);
void append16(QByteArray& bytes, quint16 value);
void append32(QByteArray& bytes, quint32 value);
void appendDouble(QByteArray& bytes, double value);

} // namespace excel::biff
