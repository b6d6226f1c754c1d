// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/quickcheck.h"

#include "platform/ado/casefold.h"

#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

namespace ado {
namespace {

bool reportsDamage(sqlite3* database, QuickCheck::Depth depth) {
    sqlite3_stmt* check = nullptr;
    const char* sql =
        depth == QuickCheck::Depth::Full ? "pragma integrity_check(1)" : "pragma quick_check(1)";
    int code = sqlite3_prepare_v2(database, sql, -1, &check, nullptr);
    bool damaged = false;
    if (code == SQLITE_OK) {
        code = sqlite3_step(check);
        damaged = code == SQLITE_ROW &&
                  sqlite3_stricmp("ok", reinterpret_cast<const char*>(sqlite3_column_text(check, 0))) != 0;
    }
    sqlite3_finalize(check);
    return damaged || code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

} // namespace

bool QuickCheck::findsDamage() {
    const QByteArray uri = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toEncoded();
    // The first look takes no lock, which in a large file would keep a writer waiting for seconds. A page
    // that is written meanwhile can look damaged then; the second look, under a lock, decides.
    return findsDamage(uri + "?immutable=1") && findsDamage(uri);
}

bool QuickCheck::findsDamage(const Step& step) {
    return besides(
        step, [this] { return findsDamage(); }, [this] { stop(); });
}

bool QuickCheck::findsDamage(const QByteArray& uri) {
    sqlite3* database = nullptr;
    const int opened = sqlite3_open_v2(
        uri.constData(), &database, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_FULLMUTEX, nullptr);
    bool damaged = false;
    if (opened == SQLITE_OK && registerTextRules(database) == SQLITE_OK) {
        constexpr int waitForWriter = 10000; // milliseconds
        sqlite3_busy_timeout(database, waitForWriter);
        {
            const std::lock_guard lock(handleInUse);
            running = stopped ? nullptr : database;
        }
        damaged = running && reportsDamage(database, depth);
        const std::lock_guard lock(handleInUse);
        running = nullptr;
        damaged = damaged && !stopped;
    }
    sqlite3_close(database);
    return damaged;
}

void QuickCheck::stop() {
    const std::lock_guard lock(handleInUse);
    stopped = true;
    if (running)
        sqlite3_interrupt(running);
}

} // namespace ado
