// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/worktable.h"

#include "core/store/store.h"
#include "core/store/transaction.h"

using namespace Qt::StringLiterals;

namespace {

std::exception_ptr tryWriteIn(Transaction::Scope scope, const std::function<void()>& write) {
    Transaction transaction(scope);
    std::exception_ptr failure;
    try {
        write();
        cnnMain->UpdateBatch(); // of what waits those before a failure are kept too
    } catch (const std::exception&) {
        if (!cnnMain->InTransaction())
            throw; // the store has rolled back
        failure = std::current_exception();
    }
    transaction.Commit();
    return failure;
}

} // namespace

QStringList workTables() {
    return {u"reportlinktable"_s, u"report"_s, u"reporttable"_s, u"linetable"_s, u"surveydateorder"_s,
            u"scattertable"_s,    u"search"_s, u"copydetails"_s, u"mscharttry"_s};
}

std::exception_ptr tryWriteTogether(const std::function<void()>& write) {
    return tryWriteIn(Transaction::Scope::Store, write);
}

void writeTogether(const std::function<void()>& write) {
    if (const std::exception_ptr failure = tryWriteTogether(write))
        std::rethrow_exception(failure);
}

void fillWorkTable(const std::function<void()>& fill) {
    if (const std::exception_ptr failure = tryWriteIn(Transaction::Scope::WorkTables, fill))
        std::rethrow_exception(failure);
}
