// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csignal>
#include <functional>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

inline int statementsLeft = 0; ///< until the process kills itself

inline int killAtStatement(unsigned, void*, void*, void*) {
    if (--statementsLeft == 0)
        kill(getpid(), SIGKILL);
    return 0;
}

inline int traceConnection(sqlite3* database, char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, killAtStatement, nullptr);
}

/// Does the work in a process of its own, which is killed at its nth statement on connections that it opens.
/// True when it ends before that. No connection may be open.
inline bool survivesKillAt(int statement, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        statementsLeft = statement;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(traceConnection));
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status);
}
