// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/checkcolours.h"

namespace {

constexpr QColor green(46, 158, 79);
constexpr QColor blue(76, 132, 196);
constexpr QColor amber(226, 154, 0);
constexpr QColor red(212, 64, 64);

} // namespace

QColor colourOf(Verdict verdict) {
    if (!isFaultless(verdict))
        return red;
    return verdict == Verdict::Ready ? green : verdict == Verdict::Identical ? blue : amber;
}

QColor colourOf(CheckedAnswer::Kind kind) {
    using Kind = CheckedAnswer::Kind;
    if (kind == Kind::LeftOut)
        return Qt::transparent;
    return kind == Kind::New ? green : kind == Kind::Same ? blue : amber;
}
