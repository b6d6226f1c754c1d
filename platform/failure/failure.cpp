// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/failure/failure.h"

using namespace Qt::StringLiterals;

Failure::Failure(int number, const QString& text) : code(number), sentence(text), utf8(text.toUtf8()) {}

Failure Failure::ofOverflow() {
    return {overflow, u"Overflow"_s};
}

Failure Failure::ofSubscript() {
    return {subscriptOutOfRange, u"Subscript out of range"_s};
}
