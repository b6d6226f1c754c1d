// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/storechange.h"

#include "core/base/backup.h"
#include "core/store/openstore.h"
#include "core/store/worktable.h"

StoreChange::~StoreChange() {
    if (isKept)
        return;
    useStore(before);
    strDatabasePath = pathBefore;
}

void StoreChange::tryOut() {
    ado::Connection trial;
    trial.ConnectionString = connectionText();
    trial.OwnTables = workTables();
    try {
        openStore(trial);
    } catch (const Failure& failure) {
        throw Refusal(failure.text());
    }
}

void StoreChange::keep() {
    try {
        writeStoreChoice(storeInUse().choice);
    } catch (const Failure& failure) {
        throw Refusal(failure.text());
    }
    isKept = true;
    forgetBackup();
    toOpenConnection();
}
