// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <mutex>

struct sqlite3;

namespace ado {

/// Looks for damage inside a database file, on a connection of its own that only reads.
class QuickCheck {
public:
    explicit QuickCheck(QString path) : file(std::move(path)) {}

    /// Runs in any thread and hinders no writer of a sound file. False for a sound file, for one that cannot
    /// be opened, and when it was stopped.
    bool findsDamage();
    /// From any thread: ends a check that runs, as soon as SQLite lets it, and each later one.
    void stop();

private:
    bool findsDamage(const QByteArray& uri);

    QString file;
    std::mutex handleInUse;
    sqlite3* running = nullptr;
    bool stopped = false;
};

} // namespace ado
