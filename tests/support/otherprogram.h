// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/store.h"
#include "platform/ado/session.h"
#include "tests/support/text.h"

/// Another program on the store, which locks it.
class OtherProgram {
public:
    ~OtherProgram() { unlock(); }
    /// The program under test gives up at once from now on when it meets a lock.
    static void endWaiting() {
        cnnMain->session()
            ->prepare({cnnMain->IsFile() ? u"pragma busy_timeout = 0"_s
                                         : u"set session lock_wait_timeout = 0, "
                                           "innodb_lock_wait_timeout = 0"_s,
                       {}})
            .step();
    }
    /// Locks the whole store against reading and writing.
    void lock() {
        open();
        QStringList names;
        for (const QString& name : store.IsFile() ? QStringList() : store.Tables()) {
            if (store.session()->isTable(name))
                names << ado::quoted(name) + u" write"_s;
        }
        run(store.IsFile() ? u"begin exclusive"_s : u"lock tables "_s + names.join(u", "_s));
    }
    /// Locks the records of a table of a server against writing.
    void lockRows(const QString& table) {
        open();
        store.BeginTrans();
        run(u"select * from "_s + ado::quoted(table) + u" for update"_s);
    }
    void unlock() {
        store.RollbackTrans();
        if (!store.IsFile())
            run(u"unlock tables"_s);
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
