// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Where the program keeps its data: in the file of the home directory, or in a database of a server. The
/// choice stands in store.ini in the home directory; passwords do not.
struct StoreChoice {
    QString server;   ///< "host[:port], ..." or the path of a socket on this computer; empty: the file
    QString database; ///< the following only with a server
    QString user;
    QString authority; ///< file with the certificate of the servers' authority; empty: the system's ones

    bool isServer() const { return !server.isEmpty(); }
    bool operator==(const StoreChoice&) const = default;
};

/// The file when none was chosen.
StoreChoice readStoreChoice();
/// Throws Failure.
void writeStoreChoice(const StoreChoice& choice);

/// A store and the user's password on its server, which is kept in memory only.
struct StoreAccess {
    StoreChoice choice;
    QString password;
};

/// What connectionText leads to; the file until useStore is called.
const StoreAccess& storeInUse();
void useStore(const StoreAccess& access);
/// The connection string of a server's store.
QString connectionText(const StoreAccess& access);
