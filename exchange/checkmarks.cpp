// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/checkmarks.h"

#include <QPainter>

namespace {

constexpr QColor green(46, 158, 79);
constexpr QColor blue(76, 132, 196);
constexpr QColor amber(226, 154, 0);
constexpr QColor red(212, 64, 64);

QIcon squareOf(const QColor& colour) {
    QPixmap plain(markSize, markSize);
    plain.fill(colour);
    QPixmap edged(markSize, markSize);
    edged.fill(Qt::white);
    QPainter(&edged).fillRect(edged.rect().adjusted(1, 1, -1, -1), colour);
    QIcon icon(plain);
    icon.addPixmap(edged, QIcon::Selected);
    return icon;
}

} // namespace

QIcon markOf(Verdict verdict) {
    if (!isFaultless(verdict))
        return squareOf(red);
    return squareOf(verdict == Verdict::Ready ? green : verdict == Verdict::Identical ? blue : amber);
}

QIcon markOf(CheckedAnswer::Kind kind) {
    using Kind = CheckedAnswer::Kind;
    if (kind == Kind::LeftOut) {
        QPixmap none(markSize, markSize);
        none.fill(Qt::transparent);
        return none;
    }
    return squareOf(kind == Kind::New ? green : kind == Kind::Same ? blue : amber);
}
