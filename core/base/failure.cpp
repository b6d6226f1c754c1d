// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/failure.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "platform/crystal/reporterror.h"
#include "platform/forms/msgbox.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

void showErrors(const QString& prefix) {
    if (!cnnMain)
        return;
    // Shown once: a later failure of another kind finds the list empty.
    const ado::ErrorList errors = cnnMain->Errors();
    cnnMain->Errors().Clear();
    for (const ado::Error& errDatabase : errors)
        forms::msgBox(prefix + QString::number(errDatabase.Number) + u"\r\n" + errDatabase.Description);
}

/// Number and description of a failure that may be the store's or a computation's.
ado::Error errorOf(const std::exception& failure) {
    constexpr int subscriptOutOfRange = 9;
    constexpr int otherFailure = 5;
    if (const auto* known = dynamic_cast<const ado::Failure*>(&failure))
        return known->cause();
    if (dynamic_cast<const std::overflow_error*>(&failure))
        return {ado::number::overflow, u"Overflow"_s};
    if (dynamic_cast<const std::out_of_range*>(&failure))
        return {subscriptOutOfRange, u"Subscript out of range"_s};
    if (const auto* report = dynamic_cast<const crystal::ReportError*>(&failure))
        return {crystal::ReportError::Number, report->text()};
    return {otherFailure, QString::fromUtf8(failure.what())};
}

QString descriptionOf(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const std::exception& failure) {
        return errorOf(failure).Description;
    }
}

} // namespace

bool guarded(const std::function<void()>& procedure) {
    return guarded(u"Error : "_s, procedure);
}

bool guarded(const QString& prefix, const std::function<void()>& procedure) {
    return guardedUnconnected(prefix, [&] {
        reconnect();
        procedure();
    });
}

bool guardedUnconnected(const QString& prefix, const std::function<void()>& procedure) {
    try {
        procedure();
        return true;
    } catch (const std::exception& failure) {
        if (Transaction::isOpen())
            throw;
        Busy::endPointers();
        const auto* refusal = dynamic_cast<const Refusal*>(&failure);
        if (refusal)
            forms::msgBox(refusal->text(), forms::style::critical, u"Gaugewell v2.1"_s);
        else
            showErrors(prefix);
        showStatus({}); // the word of the step that has ended
        return false;
    }
}

bool guardedWithNumber(const QString& separator, const std::function<void()>& procedure) {
    try {
        reconnect();
        procedure();
        return true;
    } catch (const std::exception& failure) {
        if (Transaction::isOpen())
            throw;
        Busy::endPointers();
        if (cnnMain)
            cnnMain->Errors().Clear(); // this message reports it
        const ado::Error error = errorOf(failure);
        forms::msgBox(QString::number(error.Number) + separator + error.Description);
        return false;
    }
}

bool guardedWithDescription(const std::function<void()>& procedure) {
    if (cnnMain)
        cnnMain->Errors().Clear(); // those that are there afterwards are this procedure's
    try {
        procedure();
        return true;
    } catch (const std::exception&) {
        showWithDescription(std::current_exception());
        return false;
    }
}

void showWithDescription(const std::exception_ptr& failure) {
    if (Transaction::isOpen())
        std::rethrow_exception(failure);
    Busy::endPointers();
    if (cnnMain && cnnMain->Errors().Count() > 0)
        showErrors(u"Error : "_s);
    else
        forms::msgBox(descriptionOf(failure));
}

void runStep(bool isSkippable, const std::function<void()>& step) {
    try {
        step();
    } catch (const std::exception&) {
        if (!isSkippable)
            throw;
        if (cnnMain)
            cnnMain->Errors().Clear();
    }
}

void showUncaught(const std::exception_ptr& uncaught) {
    if (Transaction::isOpen())
        std::rethrow_exception(uncaught);
    static bool isShowing = false;
    if (isShowing)
        return;
    Busy::endPointers();
    showStatus({});
    if (cnnMain)
        cnnMain->Errors().Clear(); // this message tells it
    isShowing = true;
    forms::msgBox(descriptionOf(uncaught), forms::style::critical);
    isShowing = false;
}
