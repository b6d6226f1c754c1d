// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/store.h"

#include "platform/ado/connection.h"
#include "platform/ado/password.h"
#include "platform/ado/session.h"

#include <QFile>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

void runScript(Session& session, const QByteArray& script) {
    const char* rest = script.constData();
    while (*rest) {
        sqlite3_stmt* statement = nullptr;
        const char* start = rest;
        int code = sqlite3_prepare_v2(session.handle(), start, -1, &statement, &rest);
        if (code == SQLITE_OK && statement) {
            code = sqlite3_step(statement);
            sqlite3_finalize(statement);
        }
        if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
            const auto line = script.first(start - script.constData()).count('\n') + 1;
            session.fail(
                {code, u"statement from line %1: %2"_s.arg(
                           QString::number(line), QString::fromUtf8(sqlite3_errmsg(session.handle())))});
        }
    }
}

} // namespace

bool makeOwnersFile(const QString& path) {
    return QFile(path).open(QIODevice::WriteOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

void createStore(const QString& path, const QByteArray& script, const QString& password) {
    const QString beside = path + u".part";
    QFile::remove(beside);
    const auto session = std::make_shared<Session>();
    if (!makeOwnersFile(beside))
        session->fail({SQLITE_CANTOPEN, u"'"_s + beside + u"' cannot be written."});
    session->open(beside);
    runScript(*session, script);
    setPassword(*session, password);
    session->close();
    if ((QFile::exists(path) && !QFile::remove(path)) || !QFile::rename(beside, path))
        session->fail({SQLITE_CANTOPEN, u"'"_s + path + u"' cannot be written."});
}

void runScript(Connection& connection, const QByteArray& script) {
    connection.BeginTrans();
    try {
        runScript(*connection.session(), script);
        connection.CommitTrans();
    } catch (const Failure&) {
        const ErrorList errors = connection.Errors();
        connection.RollbackTrans();
        connection.Errors() = errors;
        throw;
    }
}

} // namespace ado
