// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/transaction.h"

#include "core/store/store.h"

Transaction::Transaction(Scope scope) {
    scope == Scope::Store ? cnnMain->BeginTrans() : cnnMain->BeginOwnTrans();
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
        // The store has already rolled back; the user sees the error that caused it.
    }
    cnnMain->Errors() = errors;
}

void Transaction::Commit() {
    cnnMain->CommitTrans();
    current = nullptr;
}
