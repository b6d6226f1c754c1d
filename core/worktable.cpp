// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/worktable.h"

#include "core/gblGlobal.h"

namespace {

void commitOrRollBack() {
    try {
        cnnMain->CommitTrans();
    } catch (const ado::Failure&) {
        const ado::ErrorList errors = cnnMain->Errors();
        cnnMain->RollbackTrans();
        cnnMain->Errors() = errors;
        throw;
    }
}

} // namespace

std::exception_ptr toKeepWritten(const std::function<void()>& write) {
    cnnMain->BeginTrans();
    std::exception_ptr failure;
    try {
        write();
    } catch (const std::exception&) {
        if (!cnnMain->InTransaction())
            throw; // the store has rolled back by itself
        failure = std::current_exception();
    }
    commitOrRollBack();
    return failure;
}

void toWriteTogether(const std::function<void()>& write) {
    if (const std::exception_ptr failure = toKeepWritten(write))
        std::rethrow_exception(failure);
}

void toFillWorkTable(const std::function<void()>& fill) {
    toWriteTogether(fill);
}
