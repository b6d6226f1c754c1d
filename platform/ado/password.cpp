// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/password.h"

#include "platform/ado/session.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

QString saltedHash(const QString& salt, const QString& password) {
    const QByteArray text = salt.toUtf8() + '\n' + password.toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

QString newSalt() {
    QByteArray bytes(16, '\0');
    QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
    return QString::fromLatin1(bytes.toHex());
}

} // namespace

void setPassword(Session& session, const QString& password) {
    session.prepare({u"create table if not exists database_password (salt TEXT, hash TEXT)"_s, {}}).step();
    session.prepare({u"delete from database_password"_s, {}}).step();
    const QString salt = newSalt();
    session.prepare({u"insert into database_password values (?, ?)"_s, {salt, saltedHash(salt, password)}})
        .step();
}

void requirePassword(Session& session, const QString& password) {
    if (!session.isTable(u"database_password"_s))
        return;
    Prepared kept = session.prepare({u"select salt, hash from database_password"_s, {}});
    while (kept.step()) {
        if (kept.column(1).toString() != saltedHash(kept.column(0).toString(), password))
            session.fail({number::password, u"Not a valid password."_s});
    }
}

} // namespace ado
