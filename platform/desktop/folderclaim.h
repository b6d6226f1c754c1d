// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QString>

#include <functional>

namespace desktop {

/// Limits a folder to one program: the first keeps a lock file there until it ends; a later one can ask it to
/// come to the front. The stale lock of a crashed program on this computer is taken over.
class FolderClaim {
public:
    explicit FolderClaim(const QString& folder);

    /// False when another program has locked the folder. True also where no lock file can be created, as on a
    /// read-only medium.
    bool take();
    /// Likewise, but removes a lock left by a program on another computer that no longer runs.
    bool takeOver();

    struct Holder {
        qint64 process = 0;
        QString computer;
        bool isHere = true; ///< on this computer
    };
    /// The program that has locked the folder, after take has failed.
    Holder holder() const;
    /// Asks the holder to come to the front; waits 3 seconds at most. False when it does not answer.
    bool raiseHolder() const;

    /// Called when another program asks this one to come to the front.
    std::function<void()> comeForward;

private:
    void listen();

    QString lockName;
    QString serverName;
    QLockFile lock;
    QLocalServer server;
};

} // namespace desktop
