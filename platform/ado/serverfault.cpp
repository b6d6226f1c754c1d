// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/serverfault.h"

#include <QRegularExpression>

#include <errmsg.h>
#include <mysqld_error.h>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

/// The client library says why only in words; those of certificates are OpenSSL's.
QString sentenceOfProtection(const ServerFault& fault) {
    const auto says = [&](QStringView part) { return fault.words.contains(part, Qt::CaseInsensitive); };
    if (says(u"does not support it"))
        return u"The database server '%1' offers no protected connection (TLS), which this program needs."_s;
    if (says(u"Validation of SSL server certificate failed"))
        return u"The database server '%1' shows the certificate of another host."_s;
    if (says(u"expired") || says(u"not yet valid"))
        return u"The certificate of the database server '%1' has expired or is not valid yet."_s;
    if (says(u"self-signed") || says(u"self signed") || says(u"issuer") || says(u"first certificate"))
        return u"The certificate of the database server '%1' is signed by an authority that is not known here."_s;
    return u"There is no protected connection to the database server '%1'. "_s + fault.words + u'.';
}

QString sentenceOfReach(const ServerFault& fault) {
    if (fault.code == CR_UNKNOWN_HOST)
        return u"The database server '%1' is not known in this network."_s;
    if (fault.words.endsWith(u"(110)") || fault.words.endsWith(u": 110")) // ETIMEDOUT
        return u"The database server '%1' does not answer."_s;
    return u"The database server '%1' cannot be reached."_s;
}

/// "INSERT command denied to user 'ann'@'desk' for table `tally`.`log`" as a sentence of the user.
QString sentenceOfRight(const ServerFault& fault) {
    static const QRegularExpression denied(u"^(.+) command denied .* for (?:table|column) (.+)$"_s);
    const QRegularExpressionMatch match = denied.match(fault.words);
    if (!match.hasMatch())
        return u"The user '%2' has not the rights for this step on the database server."_s;
    const QString table = match.captured(2).section(u'.', -1).remove(u'`').remove(u'\'');
    return u"The user '%2' has not the right "_s + match.captured(1) + u" on '" + table +
           u"' of the database server.";
}

/// Empty for a fault of another kind.
QString sentenceOfAccess(const ServerFault& fault) {
    switch (fault.code) {
    case ER_ACCESS_DENIED_ERROR:
    case ER_ACCESS_DENIED_NO_PASSWORD_ERROR:
        return u"The database server does not accept the user '%2' or the password."_s;
    case ER_MUST_CHANGE_PASSWORD:
    case ER_MUST_CHANGE_PASSWORD_LOGIN:
        return u"The password of the user '%2' has expired on the database server."_s;
    case ER_ACCOUNT_HAS_BEEN_LOCKED:
        return u"The user '%2' is locked on the database server."_s;
    case ER_DBACCESS_DENIED_ERROR:
        return u"The user '%2' may not use the database '%3'."_s;
    case ER_BAD_DB_ERROR:
        return u"The database server has no database '%3'."_s;
    case ER_TABLEACCESS_DENIED_ERROR:
    case ER_COLUMNACCESS_DENIED_ERROR:
    case ER_SPECIFIC_ACCESS_DENIED_ERROR:
    case ER_PROCACCESS_DENIED_ERROR:
        return sentenceOfRight(fault);
    default:
        return {};
    }
}

QString sentenceOfLoss(const ServerFault& fault) {
    QString lost = fault.code == ER_UNKNOWN_COM_ERROR
                       ? u"The database server '%1' is cut off from its cluster."_s
                       : u"The connection to the database server is lost."_s;
    if (fault.isConnecting)
        return lost;
    return lost + (fault.isUndone ? u" Nothing of this step has been saved. Try again."_s
                                  : u" Try again, and look whether the last step has been saved."_s);
}

/// With %1 for the host, %2 for the user and %3 for the database; empty for a fault that is not expected.
QString sentence(const ServerFault& fault) {
    switch (fault.code) {
    case ER_LOCK_WAIT_TIMEOUT:
        return fault.isInCluster
                   ? u"The same records are being changed by someone else, or the database server '%1' waits "
                     u"for its cluster. Try again in a moment."_s
                   : u"The same records are being changed by someone else. Try again in a moment."_s;
    case ER_LOCK_DEADLOCK:
    case ER_CHECKREAD: // changed since this transaction has read it
        return u"The same records have been changed by someone else at the same time. Nothing of this step "
               u"has been saved. Try again."_s;
    case CR_SSL_CONNECTION_ERROR:
        return fault.isConnecting ? sentenceOfProtection(fault) : sentenceOfLoss(fault);
    case CR_CONNECTION_ERROR:
    case CR_CONN_HOST_ERROR:
    case CR_UNKNOWN_HOST:
        return sentenceOfReach(fault);
    case ER_CON_COUNT_ERROR:
    case ER_TOO_MANY_USER_CONNECTIONS:
    case ER_USER_LIMIT_REACHED:
        return u"The database server '%1' takes no further connection at present. Try again in a moment."_s;
    case ER_HOST_IS_BLOCKED:
    case ER_HOST_NOT_PRIVILEGED:
        return u"The database server '%1' does not accept this computer."_s;
    case ER_DISK_FULL:
    case ER_RECORD_FILE_FULL:
        return u"The disk of the database server is full. Nothing of this step has been saved."_s;
    case ER_OPTION_PREVENTS_STATEMENT:
    case ER_READ_ONLY_MODE:
    case ER_OPEN_AS_READONLY:
        return u"The database cannot be changed: the server takes no changes."_s;
    case ER_NET_PACKET_TOO_LARGE:
    case CR_NET_PACKET_TOO_LARGE:
        return u"A text is longer than the database server accepts (its setting max_allowed_packet)."_s;
    case ER_QUERY_INTERRUPTED:
    case ER_STATEMENT_TIMEOUT:
        return u"The step has been broken off on the database server. Try again."_s;
    default:
        if (!endsConnection(fault.code))
            return sentenceOfAccess(fault);
        return fault.isConnecting && fault.code != ER_UNKNOWN_COM_ERROR ? sentenceOfReach(fault)
                                                                        : sentenceOfLoss(fault);
    }
}

} // namespace

QString sentenceOf(const ServerFault& fault) {
    QString result = sentence(fault);
    if (result.isEmpty())
        return fault.words;
    return result.replace(u"%1"_s, fault.host).replace(u"%2"_s, fault.user).replace(u"%3"_s, fault.database);
}

bool isUnreachable(int code) {
    return code == CR_CONNECTION_ERROR || code == CR_CONN_HOST_ERROR || code == CR_UNKNOWN_HOST ||
           code == CR_SERVER_LOST;
}

bool isOfHost(int code) {
    switch (code) {
    case ER_CON_COUNT_ERROR:
    case ER_TOO_MANY_USER_CONNECTIONS:
    case ER_USER_LIMIT_REACHED:
    case ER_HOST_IS_BLOCKED:
    case ER_HOST_NOT_PRIVILEGED:
        return true;
    default:
        return isUnreachable(code) || endsConnection(code);
    }
}

int numberOf(int code, const QString& words) {
    return code == ER_ERROR_DURING_COMMIT && words.contains(u"Primary Component") ? ER_UNKNOWN_COM_ERROR
                                                                                  : code;
}

bool endsConnection(int code) {
    switch (code) {
    case CR_SERVER_GONE_ERROR:
    case CR_SERVER_LOST:
    case CR_SERVER_LOST_EXTENDED:
    case CR_SSL_CONNECTION_ERROR: // what a lost connection is called when it is protected
    case CR_COMMANDS_OUT_OF_SYNC:
    case CR_MALFORMED_PACKET:
    case ER_SERVER_SHUTDOWN:
    case ER_CONNECTION_KILLED:
    case ER_ABORTING_CONNECTION:
    case ER_NEW_ABORTING_CONNECTION:
    case ER_NET_READ_INTERRUPTED:
    case ER_UNKNOWN_COM_ERROR: // of a node that its cluster has left behind
        return true;
    default:
        return false;
    }
}

} // namespace ado
