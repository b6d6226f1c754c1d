// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QString>

#include <functional>

namespace desktop {

/// One program a folder: the first holds a lock file there until it ends; a later one can ask it to come to
/// the front. The lock of a program of this computer that has died is taken over.
class FolderClaim {
public:
    explicit FolderClaim(const QString& folder);

    /// False when another program holds the folder. True also where no lock can stand, as on a read-only
    /// medium.
    bool take();
    /// The same when the lock is one of another computer's program that no longer runs.
    bool takeOver();

    struct Holder {
        qint64 process = 0;
        QString computer;
        bool isHere = true; ///< on this computer
    };
    /// Who holds the folder, after take has failed.
    Holder holder() const;
    /// Asks the holder to come to the front; waits 3 seconds at most. False when it does not answer.
    bool raiseHolder() const;

    /// Runs when another program asks this one, which holds the folder, to come to the front.
    std::function<void()> comeForward;

private:
    void listen();

    QString lockName;
    QString serverName;
    QLockFile lock;
    QLocalServer server;
};

} // namespace desktop
