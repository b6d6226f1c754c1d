// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

/// A database server in a temporary folder, reached through a socket there and ended on destruction. The user
/// "tester" with the password "secret" may do everything, the user "member" everything in database "tally".
class PrivateServer {
public:
    PrivateServer() {
        const QString system = systemScripts();
        make.start(program(), arguments() << QStringLiteral("--bootstrap"));
        make.write("create database mysql;\nuse mysql;\n");
        for (const char* name :
             {"mysql_system_tables", "mysql_performance_tables", "mysql_system_tables_data"}) {
            QFile script(system + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".sql"));
            if (script.open(QIODevice::ReadOnly))
                make.write(script.readAll());
        }
        make.write(
            "\nflush privileges;\ncreate user tester@localhost identified by 'secret';\n"
            "grant all on *.* to tester@localhost with grant option;\ncreate user guest@localhost identified by 'guest';\n"
            "create user member@localhost identified by 'kvtwpa';\ngrant all on tally.* to "
            "member@localhost;\n");
        make.closeWriteChannel();
        make.waitForFinished(60000);
        server.setStandardErrorFile(folder.filePath(QStringLiteral("log")));
        server.start(program(), arguments() << QStringLiteral("--socket=") + socket()
                                            << QStringLiteral("--skip-networking"));
        static_cast<void>(QTest::qWaitFor(
            [this] { return QFile::exists(socket()) || server.state() == QProcess::NotRunning; }, 30000));
    }
    ~PrivateServer() {
        server.terminate();
        if (!server.waitForFinished(30000))
            server.kill();
    }
    bool isRunning() const { return QFile::exists(socket()); }
    QString socket() const { return folder.filePath(QStringLiteral("socket")); }
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
            QStringLiteral("--no-defaults"),
            QStringLiteral("--datadir=") + folder.filePath(QStringLiteral("data")),
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
