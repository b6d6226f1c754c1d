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

/// Why the server does not accept the password; empty when it does, nothing when it cannot be asked.
std::optional<QString> refusalOf(const StoreAccess& access) {
    ado::Connection store;
    store.ConnectionString = connectionText(access);
    try {
        store.Open();
    } catch (const Failure& failure) {
        return failure.number() == accessDenied ? std::optional(failure.text()) : std::nullopt;
    }
    return QString();
}

} // namespace

void signIn(const StoreChoice& choice) {
    strDatabasePath = serverCopiesPath();
    StoreAccess access{choice, findKeptPassword(choice)};
    const auto isRefused = [](const std::optional<QString>& answer) { return answer && !answer->isEmpty(); };
    std::optional<QString> refusal = access.password.isEmpty() ? QString() : refusalOf(access);
    std::optional<EnteredPassword> entered;
    for (bool isAsked = access.password.isEmpty() || isRefused(refusal); isAsked;
         isAsked = isRefused(refusal)) {
        entered = frmSignIn::ask(choice, refusal.value_or(QString()));
        if (!entered)
            break;
        access.password = entered->password;
        refusal = refusalOf(access);
    }
    if (entered && refusal) // accepted
        entered->isToBeKept ? keepPassword(access) : forgetPassword(choice);
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
