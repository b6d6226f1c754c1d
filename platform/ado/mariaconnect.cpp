// SPDX-License-Identifier: GPL-3.0-or-later
// The way to a server: hosts, protection, settings of the connection.
#include "platform/ado/mariasession.h"
#include "platform/ado/serverfault.h"
#include "platform/ado/serverscript.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>

#include <mysqld_error.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr unsigned waitForServer = 5;    // seconds until a host that does not answer is given up
constexpr unsigned waitForReply = 60;    // seconds until a connection is taken for lost
constexpr unsigned long oldest = 101100; // 10.11, as the client library counts

/// A program may stand idle for a week, but one that stands still amid a transaction does not lock the others
/// out for longer than two minutes.
constexpr QStringView idleTimes = u", wait_timeout=604800, idle_transaction_timeout=120";

/// Hosts of this thread that could not serve when they were last tried; they are tried last.
thread_local QStringList late;

/// The hosts in the order of trying them.
QStringList inOrder(QStringList hosts) {
    std::stable_partition(hosts.begin(), hosts.end(),
                          [](const QString& host) { return !late.contains(host); });
    return hosts;
}

/// An idle connection is kept alive on its way, and one whose host has vanished ends within two minutes.
void keepAlive(int socket) {
    const std::tuple<int, int, int> options[] = {{SOL_SOCKET, SO_KEEPALIVE, 1},
                                                 {IPPROTO_TCP, TCP_KEEPIDLE, 60},
                                                 {IPPROTO_TCP, TCP_KEEPINTVL, 15},
                                                 {IPPROTO_TCP, TCP_KEEPCNT, 4},
                                                 {IPPROTO_TCP, TCP_USER_TIMEOUT, 30000}};
    for (const auto& [level, name, value] : options)
        setsockopt(socket, level, name, &value, sizeof value);
}

} // namespace

void MariaSession::open(const ServerAddress& address) {
    close();
    errors().Clear();
    server = address;
    const QStringList hosts = server.socket.isEmpty() ? inOrder(server.hosts) : QStringList{QString()};
    Error reason{number::dataSource, u"No database server is named."_s};
    for (const QString& host : hosts) {
        try {
            openAt(host);
            late.removeAll(host);
            errors().Clear(); // those of other hosts
            return;
        } catch (const Failure& failure) {
            if (!isOfHost(failure.number()) || hosts.size() == 1)
                throw;
            if (!late.contains(host))
                late << host;
            if (reason.Number == number::dataSource || isUnreachable(reason.Number))
                reason = {failure.number(), failure.text()};
        }
    }
    if (isUnreachable(reason.Number))
        reason.Description =
            u"None of the database servers '"_s + server.hosts.join(u", "_s) + u"' can be reached.";
    fail(reason);
}

void MariaSession::openAt(const QString& host) {
    try {
        connectTo(host);
        if (mysql_get_server_version(connection) < oldest)
            fail({number::dataSource,
                  u"The database server is too old (%1). This program needs MariaDB 10.11 or later."_s.arg(
                      QString::fromUtf8(mysql_get_server_info(connection)))});
        run(serverSettings() + idleTimes);
        joinCluster();
        isConnecting = false;
    } catch (const Failure&) {
        close();
        throw;
    }
}

void MariaSession::connectTo(const QString& host) {
    static const QRegularExpression parts(
        u"^(?:\\[(?<address>[^\\]]*)\\]|(?<name>[^:]*)|(?<bare>.*:.*))(?::(?<port>\\d+))?$"_s);
    const QRegularExpressionMatch match = parts.match(host.trimmed());
    const QString name = match.captured(u"address") + match.captured(u"name") + match.captured(u"bare");
    const my_bool yes = 1;
    const unsigned no = 0;
    const unsigned tcp = MYSQL_PROTOCOL_TCP;
    hostName = host.isEmpty() ? server.socket : host.trimmed();
    isConnecting = true;
    connection = mysql_init(nullptr);
    mysql_optionsv(connection, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    mysql_optionsv(connection, MYSQL_OPT_CONNECT_TIMEOUT, &waitForServer);
    mysql_optionsv(connection, MYSQL_OPT_READ_TIMEOUT, &waitForReply);
    mysql_optionsv(connection, MYSQL_OPT_WRITE_TIMEOUT, &waitForReply);
    mysql_optionsv(connection, MYSQL_OPT_LOCAL_INFILE, &no); // the server could ask for any file
    if (!host.isEmpty()) {
        mysql_optionsv(connection, MYSQL_OPT_PROTOCOL, &tcp); // "localhost" would be taken for a socket
        mysql_optionsv(connection, MYSQL_OPT_SSL_ENFORCE, &yes);
        mysql_optionsv(connection, MYSQL_OPT_SSL_VERIFY_SERVER_CERT, &yes);
        if (!server.authorities.isEmpty()) {
            if (!QFileInfo(server.authorities).isReadable())
                fail({number::dataSource, u"The file of the certificate authority '"_s + server.authorities +
                                              u"' cannot be read."});
            mysql_optionsv(connection, MYSQL_OPT_SSL_CA, server.authorities.toLocal8Bit().constData());
        }
    }
    // Changed rows are those that the condition met, as in a file.
    if (!mysql_real_connect(connection, host.isEmpty() ? nullptr : name.toUtf8().constData(),
                            server.user.toUtf8().constData(), server.password.toUtf8().constData(),
                            server.database.toUtf8().constData(), match.captured(u"port").toUInt(),
                            host.isEmpty() ? server.socket.toUtf8().constData() : nullptr, CLIENT_FOUND_ROWS))
        fail(static_cast<int>(mysql_errno(connection)), QString::fromUtf8(mysql_error(connection)));
    if (!host.isEmpty())
        keepAlive(static_cast<int>(mysql_get_socket(connection)));
}

/// Reads what differs between servers. A node that is cut off from the others refuses all work; a program of
/// that node goes to the next.
void MariaSession::joinCluster() {
    isInCluster = false;
    bool knowsReads = false;
    for (const QStringList& setting :
         rowsOf(u"show variables where variable_name in ('wsrep_on', 'max_allowed_packet', "
                "'innodb_snapshot_isolation')"_s)) {
        if (setting[0] == u"innodb_snapshot_isolation")
            knowsReads = true;
        else if (setting[0] == u"max_allowed_packet")
            longest = setting[1].toULongLong();
        else
            isInCluster = setting[1] == u"ON";
    }
    // A record that someone else has changed since the transaction read it is not overwritten.
    if (knowsReads)
        run(u"set session innodb_snapshot_isolation=1"_s);
    if (!isInCluster)
        return;
    if (rowsOf(u"show status where variable_name='wsrep_ready' and value='ON'"_s).isEmpty())
        fail(ER_UNKNOWN_COM_ERROR, {});
    run(u"set session wsrep_sync_wait=1"_s);
}

bool MariaSession::hasEnded() const {
    if (!connection || inTransaction)
        return false;
    // All rows of a statement are taken at once, so nothing arrives while the connection is idle.
    pollfd socket{
        .fd = static_cast<int>(mysql_get_socket(connection)), .events = POLLIN | POLLRDHUP, .revents = 0};
    return poll(&socket, 1, 0) > 0;
}

} // namespace ado
