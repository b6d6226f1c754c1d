// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/besides.h"

#include <QDateTime>
#include <QString>

/// A copy of the store in its folder of copies.
struct StoreCopy {
    QString path;
    QDateTime made;  ///< by its name
    qint64 size = 0; ///< bytes

    QString date() const { return made.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")); }
};

/// Newest first.
std::vector<StoreCopy> findStoreCopies();

/// What is wrong with a copy, as words that stand alone, such as "damaged". Empty for a good one.
/// isCancelled: the check has not come to its end.
struct CopyFault {
    QString words;
    bool isCancelled = false;
};
/// Looks at every page, index and the version.
CopyFault checkCopy(const QString& path, const ado::Step& step);

/// Whether the file of the store in use is damaged, so that it cannot be copied; false too when the step has
/// cancelled.
bool isPresentDamaged(const ado::Step& step);

/// How many persons have been erased since a moment, by the store's protocol; 0 without one that can be read.
int countErasedSince(const QDateTime& moment);

/// Puts a copy into the place of the store's file, for which cnnMain is closed. The present store is copied
/// before. Throws Refusal, with the store unchanged. False, likewise, when the step has cancelled.
bool restoreCopy(const QString& path, const ado::Step& step);

/// Likewise for a store that cannot be copied since it is damaged: its file is kept beside the copies.
/// Returns the path of that.
QString replaceDamagedStore(const QString& path);
