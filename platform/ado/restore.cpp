// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/restore.h"

#include "platform/ado/casefold.h"
#include "platform/failure/failure.h"

#include <sqlite3.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database open(const QString& path, int mode) {
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &database, mode, nullptr);
    Database opened(database, &sqlite3_close);
    if (code != SQLITE_OK)
        throw Failure(code, u"The file '%1' cannot be opened."_s.arg(path));
    constexpr int waitForOthers = 2000; // milliseconds
    sqlite3_busy_timeout(database, waitForOthers);
    return opened;
}

void requireDone(int code, const QString& path, sqlite3* database) {
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        throw Failure(code,
                      u"The database is in use by another program. Close that program and try again."_s);
    if (code != SQLITE_OK)
        throw Failure(code, u"The file '%1' cannot be written: %2."_s.arg(
                                path, QString::fromUtf8(sqlite3_errmsg(database))));
}

} // namespace

int copyAllPages(sqlite3_backup* copy, const Step& step) {
    constexpr int pages = 2048; // a step of 8 MB
    if (!copy)
        return SQLITE_ERROR;
    bool isCancelled = false;
    while (!isCancelled && sqlite3_backup_step(copy, step ? pages : -1) == SQLITE_OK)
        isCancelled = step && !step();
    const int code = sqlite3_backup_finish(copy);
    return isCancelled ? SQLITE_INTERRUPT : code;
}

bool restoreStore(const QString& path, const QString& from, const Step& step) {
    const Database source = open(from, SQLITE_OPEN_READONLY);
    const Database target = open(path, SQLITE_OPEN_READWRITE);
    const int code = copyAllPages(sqlite3_backup_init(target.get(), "main", source.get(), "main"), step);
    if (code == SQLITE_INTERRUPT)
        return false;
    requireDone(code, path, target.get());
    return true;
}

bool rewriteFile(const QString& path, const Step& step) {
    const Database file = open(path, SQLITE_OPEN_READWRITE);
    if (registerTextRules(file.get()) != SQLITE_OK)
        throw Failure(SQLITE_ERROR, u"The file '%1' cannot be opened."_s.arg(path));
    const int code = besides(
        step,
        [&] {
            return sqlite3_exec(file.get(), "pragma secure_delete = on; vacuum", nullptr, nullptr, nullptr);
        },
        [&] { sqlite3_interrupt(file.get()); });
    if (code == SQLITE_INTERRUPT)
        return false;
    requireDone(code, path, file.get());
    return true;
}

} // namespace ado
