// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/worktable.h"

#include "core/store/store.h"
#include "core/store/transaction.h"

std::exception_ptr tryWriteTogether(const std::function<void()>& write) {
    Transaction transaction;
    std::exception_ptr failure;
    try {
        write();
    } catch (const std::exception&) {
        if (!cnnMain->InTransaction())
            throw; // the store has rolled back
        failure = std::current_exception();
    }
    transaction.Commit();
    return failure;
}

void writeTogether(const std::function<void()>& write) {
    if (const std::exception_ptr failure = tryWriteTogether(write))
        std::rethrow_exception(failure);
}

void fillWorkTable(const std::function<void()>& fill) {
    writeTogether(fill);
}
