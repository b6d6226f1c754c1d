// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

/// What has failed on a server or on the way to it.
struct ServerFault {
    int code;      ///< the client library's or the server's
    QString words; ///< likewise
    QString host;  ///< with its port, or the path of a socket
    QString user;
    QString database;
    bool isConnecting; ///< not yet connected
    bool isInCluster;  ///< where a read waits until its node has what the others have confirmed
    bool isUndone;     ///< in a transaction that was not being committed: the server rolls it back
};

/// A sentence for each fault that a user can meet, otherwise the server's own words.
QString sentenceOf(const ServerFault& fault);

/// The host does not answer: it is unknown, off, mute or on no network.
bool isUnreachable(int code);

/// A fault of this host, while another of its cluster may serve.
bool isOfHost(int code);

/// The number of the fault. A node that is cut off amid a transaction tells so in its words only.
int numberOf(int code, const QString& words);

/// An open connection is of no use after that fault.
bool endsConnection(int code);

} // namespace ado
