// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/failure.h"

#include "core/gblGlobal.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;

namespace {

void toShowErrors(const QString& prefix) {
    if (!cnnMain)
        return;
    // Shown once: a later failure of another kind finds the list empty.
    const ado::ErrorList errors = cnnMain->Errors();
    cnnMain->Errors().Clear();
    for (const ado::Error& errDatabase : errors)
        forms::msgBox(prefix + QString::number(errDatabase.Number) + u"\r\n" + errDatabase.Description);
}

void rollBack() {
    try {
        if (cnnMain)
            cnnMain->RollbackTrans();
    } catch (const ado::Failure&) {
        cnnMain->Errors().Clear(); // the store has rolled back by itself
    }
}

} // namespace

bool guarded(const FailureHandler& handler, const std::function<void()>& procedure) {
    using Rollback = FailureHandler::Rollback;
    try {
        procedure();
        return true;
    } catch (const std::exception&) {
        if (handler.form)
            handler.form->setMousePointer(forms::DefaultPointer);
        if (handler.rollback == Rollback::BeforeMessages)
            rollBack();
        toShowErrors(handler.prefix);
        if (handler.rollback == Rollback::AfterMessages)
            rollBack();
        return false;
    }
}
