// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/worktable.h"

#include "core/gblGlobal.h"

#include <exception>

namespace {

void commitOrRollBack() {
    if (!cnnMain->InTransaction())
        return; // the store has rolled back by itself
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

void toWriteTogether(const std::function<void()>& write) {
    cnnMain->BeginTrans();
    std::exception_ptr failure;
    try {
        write();
    } catch (const std::exception&) {
        failure = std::current_exception();
    }
    commitOrRollBack();
    if (failure)
        std::rethrow_exception(failure);
}

void toFillWorkTable(const std::function<void()>& fill) {
    toWriteTogether(fill);
}
