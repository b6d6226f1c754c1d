// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/fewlines.h"

using namespace Qt::StringLiterals;

QString fewOf(const QStringList& lines) {
    constexpr qsizetype most = 15;
    QString text = lines.mid(0, most).join(u"\r\n"_s);
    if (lines.size() > most)
        text += u"\r\nand %1 more"_s.arg(lines.size() - most);
    return text;
}
