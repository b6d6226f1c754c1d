// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/folderclaim.h"

#include <QCryptographicHash>
#include <QDir>
#include <QEventLoop>
#include <QLocalSocket>
#include <QSysInfo>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace desktop {
namespace {

constexpr int longestWait = 3000; // milliseconds

/// The name of the socket of a folder's holder, the same for every path to the folder.
QString nameOf(const QString& folder) {
    const QByteArray path = QDir(folder).canonicalPath().toUtf8();
    constexpr qsizetype digits = 20; // a socket's path is limited
    return u"gaugewell-"_s +
           QString::fromLatin1(
               QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().first(digits));
}

} // namespace

FolderClaim::FolderClaim(const QString& folder)
    : lockName(QDir(folder).filePath(u"gaugewell.lock"_s)), serverName(nameOf(folder)), lock(lockName) {
    lock.setStaleLockTime(0); // never stale by age: the program may run for weeks
    server.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server, &QLocalServer::newConnection, &server, [this] {
        QLocalSocket* const asking = server.nextPendingConnection();
        QObject::connect(asking, &QLocalSocket::disconnected, asking, &QObject::deleteLater);
        asking->write("1");
        asking->flush();
        if (comeForward)
            comeForward();
    });
}

bool FolderClaim::take() {
    if (lock.tryLock(0))
        listen();
    return lock.isLocked() || lock.error() != QLockFile::LockFailedError;
}

bool FolderClaim::takeOver() {
    QFile::remove(lockName);
    return take();
}

void FolderClaim::listen() {
    QLocalServer::removeServer(serverName); // left by a crashed program
    server.listen(serverName);
}

FolderClaim::Holder FolderClaim::holder() const {
    Holder found;
    QString program;
    if (lock.getLockInfo(&found.process, &found.computer, &program))
        found.isHere = found.computer.isEmpty() || found.computer == QSysInfo::machineHostName();
    return found;
}

bool FolderClaim::raiseHolder() const {
    QLocalSocket holder;
    QEventLoop waiting;
    QObject::connect(&holder, &QLocalSocket::readyRead, &waiting, &QEventLoop::quit);
    QObject::connect(&holder, &QLocalSocket::errorOccurred, &waiting, &QEventLoop::quit);
    QTimer::singleShot(longestWait, &waiting, &QEventLoop::quit);
    holder.connectToServer(serverName);
    if (holder.state() != QLocalSocket::UnconnectedState && holder.bytesAvailable() == 0)
        waiting.exec();
    return holder.bytesAvailable() > 0;
}

} // namespace desktop
