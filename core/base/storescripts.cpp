// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/storescripts.h"

#include "platform/failure/failure.h"

#include <QFile>
#include <QStringList>

using namespace Qt::StringLiterals;

static void registerScripts() {
    Q_INIT_RESOURCE(store); // resources in a static library are not registered automatically
}

namespace {

QByteArray joined(const QStringList& names) {
    registerScripts();
    QByteArray all;
    for (const QString& name : names) {
        QFile script(u":/store/%1.sql"_s.arg(name));
        if (!script.open(QIODevice::ReadOnly))
            throw Failure(script.errorString());
        all += script.readAll() + '\n';
    }
    return all;
}

} // namespace

QByteArray newStoreScript() {
    return joined({u"schema"_s, u"version2"_s, u"queries"_s});
}

QByteArray upgradeScript() {
    return joined({u"upgrade2"_s, u"version2"_s, u"queries"_s});
}
