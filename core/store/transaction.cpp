// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/transaction.h"

#include "core/store/store.h"

Transaction::Transaction() {
    cnnMain->BeginTrans();
    current = this;
}

Transaction::~Transaction() {
    if (current != this)
        return;
    current = nullptr;
    if (!cnnMain)
        return;
    const ado::ErrorList errors = cnnMain->Errors();
    try {
        cnnMain->RollbackTrans();
    } catch (const Failure&) {
        // The store has rolled back by itself; what made it do so is what the user is told.
    }
    cnnMain->Errors() = errors;
}

void Transaction::Commit() {
    cnnMain->CommitTrans();
    current = nullptr;
}
