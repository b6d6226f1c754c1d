// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/storeupgrade.h"

#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "platform/ado/store.h"
#include "platform/forms/msgbox.h"

#include <QFile>

using namespace Qt::StringLiterals;

static void registerScripts() {
    Q_INIT_RESOURCE(store); // resources in a static library are not registered automatically
}

namespace {

constexpr int readOnlyError = 8; // the store's result code for a file that cannot be written

QByteArray scripts() {
    registerScripts();
    QByteArray all;
    for (const QString& name : {u"upgrade2"_s, u"version2"_s, u"queries"_s}) {
        QFile script(u":/store/%1.sql"_s.arg(name));
        if (!script.open(QIODevice::ReadOnly))
            throw Failure(script.errorString());
        all += script.readAll() + '\n';
    }
    return all;
}

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
        ado::runScript(store, scripts());
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
