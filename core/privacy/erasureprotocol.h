// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/erasure.h"

/// What has become of an erasure, with the full names of files.
struct ErasureOutcome {
    int respondentid = 0;
    ErasurePlan plan;
    QStringList deletedFiles;
    QStringList removedCopies;
    QStringList keptCopies; ///< that still hold the person
    QStringList faults;     ///< files that are left, as sentences
    QString rewriteFault;   ///< empty: the store has been rewritten, or is a server's
    bool isOnServer = false;

    /// Deletes a file and adds it to those deleted, or to the faults.
    void remove(const QString& path, QStringList& removed);
};

/// The protocol of an erasure. It has nothing of the person: a file name that a user has given, which may
/// name the person, is left out.
QString protocolOf(const ErasureOutcome& outcome, const QDateTime& when);

/// What is left to the user, with full names; empty for nothing.
QString leftToDo(const ErasureOutcome& outcome);

/// Saves a protocol as "Erasure 2024-03-05 140203.txt" in the folder protocols/ of the home directory, which
/// only its owner can read. Returns the full path. Throws Failure.
QString saveProtocol(const QString& text, const QString& kind, const QDateTime& when);
