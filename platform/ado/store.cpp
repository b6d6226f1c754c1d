// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/store.h"

#include "platform/ado/connection.h"
#include "platform/ado/password.h"
#include "platform/ado/sqlitesession.h"

#include <QFile>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
bool makeOwnersFile(const QString& path) {
    return QFile(path).open(QIODevice::WriteOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

void createStore(const QString& path, const QByteArray& script, const QString& password) {
    const QString beside = path + u".part";
    QFile::remove(beside);
    const auto session = std::make_shared<SqliteSession>();
    if (!makeOwnersFile(beside))
        session->fail({SQLITE_CANTOPEN, u"'"_s + beside + u"' cannot be written."});
    session->open(beside);
    session->begin(Writes::Store); // one sync for all
    session->runScript(script);
    setPassword(*session, password);
    session->commit();
    session->close();
    if ((QFile::exists(path) && !QFile::remove(path)) || !QFile::rename(beside, path))
        session->fail({SQLITE_CANTOPEN, u"'"_s + path + u"' cannot be written."});
}

void runScript(Connection& connection, const QByteArray& script) {
    connection.BeginTrans();
    try {
        connection.session()->runScript(script);
        connection.CommitTrans();
    } catch (const Failure&) {
        const ErrorList errors = connection.Errors();
        connection.RollbackTrans();
        connection.Errors() = errors;
        throw;
    }
}

} // namespace ado
