// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/returnedfile.h"

#include <QCryptographicHash>

QString contentHash(const QByteArray& content) {
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}
