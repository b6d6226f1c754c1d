// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
    PrivateServer() : PrivateServer({QStringLiteral("--skip-networking")}) {}
    explicit PrivateServer(const QStringList& options) {
        const QString system = systemScripts();
        make.start(program(), arguments() << QStringLiteral("--bootstrap"));
        make.write("create database mysql;\nuse mysql;\n");
        for (const char* name :
             {"mysql_system_tables", "mysql_performance_tables", "mysql_system_tables_data"}) {
            QFile script(system + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".sql"));
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
        make.start(QStringLiteral("cp"), {QStringLiteral("-r"), ended.data(), folder.path()});
        make.waitForFinished(60000);
        start(options);
    }
    ~PrivateServer() { end(); }
    PrivateServer& operator=(const PrivateServer&) = delete;

    /// Starts on its data, which outlive a server that was killed if an option says so.
    void start(const QStringList& options) {
        server.setStandardErrorFile(folder.filePath(QStringLiteral("log")));
        server.start(program(), arguments() << QStringLiteral("--socket=") + socket() << options);
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
    QString socket() const { return folder.filePath(QStringLiteral("socket")); }
    QString data() const { return folder.filePath(QStringLiteral("data")); }
    /// The connection string of a database.
    QString connection(const QString& database, const QString& password = QStringLiteral("secret")) const {
        return QStringLiteral("SOCKET=%1;DATABASE=%2;UID=tester;PWD=%3").arg(socket(), database, password);
    }
    /// What the server said; for the message of a failing test.
    QByteArray log() {
        QFile file(folder.filePath(QStringLiteral("log")));
        return make.readAllStandardError() + (file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }

private:
    static QString program() {
        return QStandardPaths::findExecutable(QStringLiteral("mariadbd"), {QStringLiteral("/usr/sbin")});
    }
    /// In memory where there is room: a fresh store waits for the disk more than a thousand times.
    static QString place() {
        constexpr qint64 room = 500'000'000; // bytes
        const QString memory = QStringLiteral("/dev/shm");
        const bool isRoomy = QStorageInfo(memory).bytesAvailable() > room;
        return (isRoomy ? memory : QDir::tempPath()) + QStringLiteral("/gaugewell-XXXXXX");
    }
    static QString systemScripts() {
        const QString folder = QStringLiteral("/usr/share/mariadb");
        return QDir(folder).exists() ? folder : QStringLiteral("/usr/share/mysql");
    }
    QStringList arguments() const {
        QStringList list{
            QStringLiteral("--no-defaults"), QStringLiteral("--datadir=") + data(),
            // A server that starts deletes the temporary tables in its folder.
            QStringLiteral("--tmpdir=") + folder.path(), QStringLiteral("--innodb-buffer-pool-size=32M"),
            QStringLiteral("--innodb-log-file-size=8M"), QStringLiteral("--innodb-flush-log-at-trx-commit=0"),
            QStringLiteral("--innodb-flush-method=nosync"), QStringLiteral("--sync-frm=0")};
        QDir(folder.path()).mkdir(QStringLiteral("data"));
        if (geteuid() == 0)
            list << QStringLiteral("--user=root");
        return list;
    }

    QTemporaryDir folder{place()};
    QProcess make;
    QProcess server;
};
