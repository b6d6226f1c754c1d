// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/worktable.h"

#include "core/store/store.h"
#include "core/store/transaction.h"

std::exception_ptr toKeepWritten(const std::function<void()>& write) {
    Transaction transaction;
    std::exception_ptr failure;
    try {
        write();
    } catch (const std::exception&) {
        if (!cnnMain->InTransaction())
            throw; // the store has rolled back by itself
        failure = std::current_exception();
    }
    transaction.Commit();
    return failure;
}

void toWriteTogether(const std::function<void()>& write) {
    if (const std::exception_ptr failure = toKeepWritten(write))
        std::rethrow_exception(failure);
}

void toFillWorkTable(const std::function<void()>& fill) {
    toWriteTogether(fill);
}
