// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <csignal>
#include <sqlite3.h>
#include <sys/resource.h>

/// A disk that takes so many bytes of a file and no more. Writing on fails, or ends the process where the
/// limit's signal has not been set aside.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &old);
        limit(bytes);
    }
    /// Full from the moment on when the register's row of a survey file is stored: the workbook comes next.
    explicit SmallDisk(sqlite3* store) {
        getrlimit(RLIMIT_FSIZE, &old);
        sqlite3_trace_v2(store, SQLITE_TRACE_PROFILE, afterStatement, this);
        traced = store;
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &old);
        if (traced)
            sqlite3_trace_v2(traced, 0, nullptr, nullptr);
    }

private:
    void limit(rlim_t bytes) const {
        const rlimit tight{bytes, old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    static int afterStatement(unsigned, void* disk, void* statement, void*) {
        const QByteArray sql = sqlite3_sql(static_cast<sqlite3_stmt*>(statement));
        if (!sql.startsWith("select") && sql.contains("\"log\"") && sql.contains("\"xlsfilename\""))
            static_cast<SmallDisk*>(disk)->limit(2000);
        return 0;
    }

    rlimit old{};
    sqlite3* traced = nullptr;
};
