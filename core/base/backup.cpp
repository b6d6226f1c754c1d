// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/backup.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/storescripts.h"
#include "platform/ado/sqlitesession.h"
#include "platform/ado/store.h"
#include "platform/desktop/ownerfile.h"
#include "platform/forms/clock.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxCopies = 10;
bool copied = false;

QDir backupFolder(const QString& databasePath) {
    return {QFileInfo(databasePath).absoluteDir().filePath(u"backup"_s)};
}

/// The running number in a copy's file name, 0 if it has none; -1 if the file is not a backup copy.
int numberOf(const QString& name) {
    static const QRegularExpression pattern(
        u"^Tallywell-\\d{4,}-\\d\\d-\\d\\d-\\d{6}(?:-(\\d{1,9}))?\\.mdb$"_s);
    const QRegularExpressionMatch match = pattern.match(name);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

/// File names of the copies, oldest first. Sorted by number because the clock may have been set back.
QStringList copiesIn(const QDir& folder) {
    QStringList names = folder.entryList({u"Tallywell-*.mdb"_s}, QDir::Files, QDir::Name);
    names.removeIf([](const QString& name) { return numberOf(name) < 0; });
    std::stable_sort(names.begin(), names.end(),
                     [](const QString& a, const QString& b) { return numberOf(a) < numberOf(b); });
    return names;
}

void dropOldCopies(const QDir& folder) {
    QStringList copies = copiesIn(folder);
    while (copies.size() > maxCopies)
        QFile::remove(folder.filePath(copies.takeFirst()));
    // Partial files of a run that was killed while copying.
    for (const QString& part : folder.entryList({u"Tallywell-*.mdb.part*"_s}, QDir::Files))
        QFile::remove(folder.filePath(part));
}

/// Without customers and parameters there is nothing to lose, and a copy would displace a useful one.
bool isEmptyStore() {
    ado::Recordset any(u"select 1 from customer union all select 1 from parameter limit 1"_s, *cnnMain);
    return any.Eof();
}

/// Copies the store of a server into a file.
bool copyFromServer(ado::Connection& server, const QString& path, const CopyStep& step) {
    const QString beside = path + u".part";
    bool isComplete = false;
    try {
        ado::createStore(beside, newStoreScript(), storePassword());
        {
            ado::Connection file;
            file.ConnectionString = u"DBQ=%1;PWD=%2"_s.arg(beside, storePassword());
            file.Open();
            isComplete = copyAllRows(server, file, step);
        }
        if (!isComplete)
            QFile::remove(beside);
        else if ((QFile::exists(path) && !QFile::remove(path)) || !QFile::rename(beside, path))
            throw Failure(Failure::fileAccess, u"'%1' cannot be written."_s.arg(path));
    } catch (const Failure& failure) {
        QFile::remove(beside);
        const QString sentence =
            u"The copy of the database could not be made, and nothing has been changed. "_s + failure.text();
        server.Errors().Clear();
        server.Errors().Add({failure.number(), sentence});
        throw Failure(failure.number(), sentence);
    }
    return isComplete;
}

} // namespace

void backUpBeforeLoss() {
    if (copied || isEmptyStore())
        return;
    const Busy copying;
    copyStore(*cnnMain, strDatabasePath);
    copied = true;
}

bool copyStoreTo(ado::Connection& store, const QString& path, const CopyStep& step) {
    if (!store.IsFile())
        return copyFromServer(store, path, step);
    if (!step) {
        store.BackupTo(path);
        return true;
    }
    return ado::backUp(store, path, [&] { return step({}); });
}

bool copyStore(ado::Connection& store, const QString& databasePath, const CopyStep& step) {
    const QDir folder = backupFolder(databasePath);
    desktop::makeOwnersFolder(folder.path());
    const QStringList copies = copiesIn(folder);
    const int number = copies.isEmpty() ? 1 : numberOf(copies.last()) + 1;
    const QString stamp = forms::nowHook().toString(u"yyyy-MM-dd-HHmmss");
    const QString path = folder.filePath(u"Tallywell-%1-%2.mdb"_s.arg(stamp).arg(number));
    if (!copyStoreTo(store, path, step))
        return false;
    dropOldCopies(folder);
    return true;
}

QStringList listBackups(const QString& databasePath) {
    const QDir folder = backupFolder(databasePath);
    QStringList paths;
    for (const QString& name : copiesIn(folder))
        paths.prepend(folder.filePath(name));
    return paths;
}

void forgetBackup() {
    copied = false;
}
