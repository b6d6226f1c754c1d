// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/store.h"
#include "platform/ado/session.h"

/// Another program on the store, which locks it.
class OtherProgram {
public:
    ~OtherProgram() { unlock(); }

    /// The program under test gives up at once from now on when it meets a lock.
    static void endWaiting() {
        cnnMain->session()
            ->prepare({cnnMain->IsFile() ? QStringLiteral("pragma busy_timeout = 0")
                                         : QStringLiteral("set session lock_wait_timeout = 0, "
                                                          "innodb_lock_wait_timeout = 0"),
                       {}})
            .step();
    }
    /// Locks the whole store against reading and writing.
    void lock() {
        open();
        QStringList names;
        for (const QString& name : store.IsFile() ? QStringList() : store.Tables()) {
            if (store.session()->isTable(name))
                names << ado::quoted(name) + QStringLiteral(" write");
        }
        run(store.IsFile() ? QStringLiteral("begin exclusive")
                           : QStringLiteral("lock tables ") + names.join(QStringLiteral(", ")));
    }
    /// Locks the records of a table of a server against writing.
    void lockRows(const QString& table) {
        open();
        store.BeginTrans();
        run(QStringLiteral("select * from ") + ado::quoted(table) + QStringLiteral(" for update"));
    }
    void unlock() {
        store.RollbackTrans();
        if (!store.IsFile())
            run(QStringLiteral("unlock tables"));
    }

private:
    void open() {
        if (store.State() == ado::StateOpen)
            return;
        store.ConnectionString = connectionText();
        store.Open();
    }
    void run(const QString& sql) { store.session()->prepare({sql, {}}).step(); }

    ado::Connection store;
};
