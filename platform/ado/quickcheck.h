// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/besides.h"

#include <QString>

#include <mutex>

struct sqlite3;

namespace ado {

/// Checks a database file for damage, on a read-only connection of its own.
class QuickCheck {
public:
    /// Full: also whether each index has the rows of its table.
    enum class Depth { Quick, Full };
    explicit QuickCheck(QString path, Depth wanted = Depth::Quick) : file(std::move(path)), depth(wanted) {}

    /// Runs in any thread and does not block writers of an intact file. False for an intact file, for one
    /// that cannot be opened, and when stopped.
    bool findsDamage();
    /// Likewise, in another thread while this one calls the step. False too when the step has cancelled.
    bool findsDamage(const Step& step);
    bool isStopped() const { return stopped; }
    /// From any thread: ends a running check as soon as SQLite allows it, and each later one at once.
    void stop();

private:
    bool findsDamage(const QByteArray& uri);

    QString file;
    Depth depth;
    std::mutex handleInUse;
    sqlite3* running = nullptr;
    bool stopped = false;
};

} // namespace ado
