// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/restore.h"

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
    return opened;
}

} // namespace

void restoreStore(const QString& path, const QString& from) {
    constexpr int waitForOthers = 2000; // milliseconds
    const Database source = open(from, SQLITE_OPEN_READONLY);
    const Database target = open(path, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(target.get(), waitForOthers);
    sqlite3_backup* copy = sqlite3_backup_init(target.get(), "main", source.get(), "main");
    int code = SQLITE_ERROR;
    if (copy) {
        sqlite3_backup_step(copy, -1);
        code = sqlite3_backup_finish(copy);
    }
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        throw Failure(code,
                      u"The database is in use by another program. Close that program and try again."_s);
    if (code != SQLITE_OK)
        throw Failure(code, u"The file '%1' cannot be written: %2."_s.arg(
                                path, QString::fromUtf8(sqlite3_errmsg(target.get()))));
}

} // namespace ado
