// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/text.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

#include <arpa/inet.h>
#include <sys/un.h>
#include <unistd.h>

/// A port of 127.0.0.1 that nothing listens at.
inline int freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(socket, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    close(socket);
    return ntohs(address.sin_port);
}

/// A database server in a temporary folder, reached through a socket there and ended on destruction. The user
/// "tester" with the password "secret" may do everything, the user "member" everything in database "tally".
class PrivateServer {
public:
    PrivateServer() : PrivateServer({u"--skip-networking"_s}) {}
    explicit PrivateServer(const QStringList& options) {
        const QString system = systemScripts();
        make.start(program(), arguments() << u"--bootstrap"_s);
        make.write("create database mysql;\nuse mysql;\n");
        for (const char* name :
             {"mysql_system_tables", "mysql_performance_tables", "mysql_system_tables_data"}) {
            QFile script(system + QLatin1Char('/') + QLatin1String(name) + u".sql"_s);
            if (script.open(QIODevice::ReadOnly))
                make.write(script.readAll());
        }
        make.write("\nflush privileges;\ncreate user tester identified by 'secret';\n"
                   "grant all on *.* to tester with grant option;\ncreate user guest identified by 'guest';\n"
                   "create user member identified by 'kvtwpa';\ngrant all on tally.* to member;\n");
        make.closeWriteChannel();
        make.waitForFinished(60000);
        start(options);
    }
    /// A server on a copy of the data of one that has ended.
    PrivateServer(const PrivateServer& ended, const QStringList& options) {
        make.start(u"cp"_s, {u"-r"_s, ended.data(), folder.path()});
        make.waitForFinished(60000);
        start(options);
    }
    ~PrivateServer() { end(); }
    PrivateServer& operator=(const PrivateServer&) = delete;
    /// Starts on its data, which outlive a server that was killed if an option says so.
    void start(const QStringList& options) {
        server.setStandardErrorFile(folder.filePath(u"log"_s));
        server.start(program(), arguments() << u"--socket="_s + socket() << options);
        static_cast<void>(
            QTest::qWaitFor([this] { return isRunning() || server.state() == QProcess::NotRunning; }, 30000));
    }
    void end() {
        server.terminate();
        if (!server.waitForFinished(30000))
            kill();
    }
    /// Ends it as a loss of power would, except for what the system writes to the disk later.
    void kill() {
        server.kill();
        server.waitForFinished(30000);
        QFile::remove(socket());
    }
    /// Whether it takes connections; the socket's file is there a little earlier.
    bool isRunning() const {
        const int client = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        qstrncpy(address.sun_path, qPrintable(socket()), sizeof address.sun_path);
        const bool isTaken = ::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        close(client);
        return isTaken;
    }
    QString socket() const { return folder.filePath(u"socket"_s); }
    QString data() const { return folder.filePath(u"data"_s); }
    /// The connection string of a database.
    QString connection(const QString& database, const QString& password = u"secret"_s) const {
        return u"SOCKET=%1;DATABASE=%2;UID=tester;PWD=%3"_s.arg(socket(), database, password);
    }
    /// What the server said; for the message of a failing test.
    QString log() {
        QFile file(folder.filePath(u"log"_s));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(make.readAllStandardError() + file.readAll());
    }

private:
    static QString program() { return QStandardPaths::findExecutable(u"mariadbd"_s, {u"/usr/sbin"_s}); }
    /// In memory where there is room: a fresh store waits for the disk more than a thousand times.
    static QString place() {
        constexpr qint64 room = 500'000'000; // bytes
        const QString memory = u"/dev/shm"_s;
        const bool isRoomy = QStorageInfo(memory).bytesAvailable() > room;
        return (isRoomy ? memory : QDir::tempPath()) + u"/gaugewell-XXXXXX"_s;
    }
    static QString systemScripts() {
        const QString folder = u"/usr/share/mariadb"_s;
        return QDir(folder).exists() ? folder : u"/usr/share/mysql"_s;
    }
    QStringList arguments() const {
        QStringList list{u"--no-defaults"_s, u"--datadir="_s + data(),
                         // A server that starts deletes the temporary tables in its folder.
                         u"--tmpdir="_s + folder.path(), u"--innodb-buffer-pool-size=32M"_s,
                         u"--innodb-log-file-size=8M"_s, u"--innodb-flush-log-at-trx-commit=0"_s,
                         u"--innodb-flush-method=nosync"_s, u"--sync-frm=0"_s};
        QDir(folder.path()).mkdir(u"data"_s);
        if (geteuid() == 0)
            list << u"--user=root"_s;
        return list;
    }

    QTemporaryDir folder{place()};
    QProcess make;
    QProcess server;
};
