// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/storechoice.h"

#include "core/store/store.h"

#include <QFile>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

StoreAccess inUse;

QString choiceFile() {
    return homeDirectory() + u"/store.ini";
}

} // namespace

StoreChoice readStoreChoice() {
    const QSettings ini(choiceFile(), QSettings::IniFormat);
    // Typed without quotes, a comma makes a list.
    const auto text = [&](const QString& name) { return ini.value(name).toStringList().join(u", "_s); };
    return {.server = text(u"server"_s),
            .database = text(u"database"_s),
            .user = text(u"user"_s),
            .authority = text(u"authority"_s)};
}

void writeStoreChoice(const StoreChoice& choice) {
    QSettings ini(choiceFile(), QSettings::IniFormat);
    const std::pair<QString, QString> values[] = {{u"server"_s, choice.server},
                                                  {u"database"_s, choice.database},
                                                  {u"user"_s, choice.user},
                                                  {u"authority"_s, choice.authority}};
    for (const auto& [name, value] : values)
        value.isEmpty() ? ini.remove(name) : ini.setValue(name, value);
    ini.sync();
    if (ini.status() != QSettings::NoError)
        throw Failure(Failure::fileAccess, u"'%1' cannot be written."_s.arg(choiceFile()));
}

const StoreAccess& storeInUse() {
    return inUse;
}

void useStore(const StoreAccess& access) {
    inUse = access;
}

QString connectionText(const StoreAccess& access) {
    const StoreChoice& choice = access.choice;
    const bool isSocket = choice.server.startsWith(u'/');
    return (isSocket ? u"SOCKET="_s : u"SERVER="_s) + ado::braced(choice.server) + u";DATABASE=" +
           ado::braced(choice.database) + u";UID=" + ado::braced(choice.user) + u";PWD=" +
           ado::braced(access.password) +
           (choice.authority.isEmpty() ? QString() : u";SSLCA="_s + ado::braced(choice.authority));
}

QString connectionText() {
    if (inUse.choice.isServer())
        return connectionText(inUse);
    return u"DSN=gwl;UID=;PWD="_s + storePassword() + u';';
}
