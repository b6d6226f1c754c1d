// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/signin.h"

#include "core/base/gblGlobal.h"
#include "core/frmSignIn.h"
#include "platform/desktop/secret.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int accessDenied = 1045; // the server's number for a wrong user or password

desktop::SecretKey keyOf(const StoreChoice& choice) {
    return {choice.server, choice.database, choice.user};
}

/// Why the server does not accept the password; empty when it does, or fails in another way.
QString refusalOf(const StoreAccess& access) {
    ado::Connection store;
    store.ConnectionString = connectionText(access);
    try {
        store.Open();
    } catch (const Failure& failure) {
        if (failure.number() == accessDenied)
            return failure.text();
    }
    return {};
}

} // namespace

void signIn(const StoreChoice& choice) {
    strDatabasePath = serverCopiesPath();
    StoreAccess access{choice, findKeptPassword(choice)};
    QString refusal = access.password.isEmpty() ? QString() : refusalOf(access);
    bool isToBeKept = false;
    for (bool isAsked = access.password.isEmpty() || !refusal.isEmpty(); isAsked;
         isAsked = !refusal.isEmpty()) {
        const std::optional<EnteredPassword> entered = frmSignIn::ask(choice, refusal);
        if (!entered)
            break;
        access.password = entered->password;
        isToBeKept = entered->isToBeKept;
        refusal = refusalOf(access);
    }
    if (isToBeKept && refusal.isEmpty())
        keepPassword(access);
    useStore(access);
}

QString findKeptPassword(const StoreChoice& choice) {
    return desktop::findSecretHook(keyOf(choice)).value_or(QString());
}

void keepPassword(const StoreAccess& access) {
    const StoreChoice& choice = access.choice;
    const QString label = u"Gaugewell: %1 on %2"_s.arg(choice.database, choice.server);
    if (!desktop::keepSecretHook(keyOf(choice), label, access.password))
        forms::msgBox(u"This desktop has no service that keeps passwords. The password will be asked for at "
                      "each start."_s,
                      forms::style::information, titleWithVersion);
}

void forgetPassword(const StoreChoice& choice) {
    desktop::forgetSecretHook(keyOf(choice));
}

QString serverCopiesPath() {
    return homeDirectory() + u"/server/Tallywell.mdb";
}
