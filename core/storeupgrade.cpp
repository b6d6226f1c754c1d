// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/storeupgrade.h"

#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/base/storescripts.h"
#include "platform/ado/store.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int readOnlyError = 8; // the store's result code for a file that cannot be written

} // namespace

bool needsUpgrade() {
    ado::Connection store;
    store.ConnectionString = connectionText();
    try {
        store.Open();
        return store.SchemaVersion() == 1;
    } catch (const Failure&) {
        return false; // the connection reports it
    }
}

void upgradeStore(const QString& databasePath) {
    ado::Connection store;
    store.ConnectionString = connectionText();
    try {
        store.Open();
        store.BeginTrans(); // a lock, or a file that cannot be written, fails before the copy is made
        store.Execute(u"update setting set setting=setting"_s);
        store.RollbackTrans();
        copyStore(store, databasePath);
        ado::runScript(store, upgradeScript());
    } catch (const Failure& failure) {
        if (failure.number() != readOnlyError)
            forms::msgBox(
                u"The file '"_s + databasePath +
                    u"' could not be updated to this version of the program and is used as it is. The "
                    "next start tries again.\r\n\r\n" +
                    failure.text(),
                forms::style::critical);
    }
}
