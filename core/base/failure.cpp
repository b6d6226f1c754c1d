// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/failure.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;

namespace {

void showErrors(const QString& prefix) {
    if (!cnnMain)
        return;
    // Cleared first, so that no later handler shows them again.
    const ado::ErrorList errors = cnnMain->Errors();
    cnnMain->Errors().Clear();
    for (const ado::Error& errDatabase : errors)
        forms::msgBox(prefix + QString::number(errDatabase.Number) + u"\r\n" + errDatabase.Description);
}

/// A guarded procedure that runs.
class Running {
public:
    Running() { ++count; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { --count; }
    inline static int count = 0;
};

/// The exception as a Failure; any other type becomes one without a number.
Failure failureOf(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& other) {
        return Failure(QString::fromUtf8(other.what()));
    }
}

} // namespace

bool isWithinGuarded() {
    return Running::count > 1;
}

bool guarded(const std::function<void()>& procedure) {
    return guarded(u"Error : "_s, procedure);
}

bool guarded(const QString& prefix, const std::function<void()>& procedure) {
    return guardedUnconnected(prefix, [&] {
        const Running running;
        reconnect();
        procedure();
    });
}

bool guardedUnconnected(const QString& prefix, const std::function<void()>& procedure) {
    const auto end = [](const auto& show) {
        if (Transaction::isOpen())
            throw;
        Busy::endPointers();
        show();
        showStatus({});
        return false;
    };
    try {
        procedure();
        return true;
    } catch (const Refusal& refusal) {
        return end([&] { forms::msgBox(refusal.text(), forms::style::critical, titleWithVersion); });
    } catch (const std::exception&) {
        return end([&] { showErrors(prefix); });
    }
}

bool guardedWithNumber(const QString& separator, const std::function<void()>& procedure) {
    try {
        const Running running;
        reconnect();
        procedure();
        return true;
    } catch (const std::exception&) {
        if (Transaction::isOpen())
            throw;
        Busy::endPointers();
        if (cnnMain)
            cnnMain->Errors().Clear(); // reported by this message
        const Failure failure = failureOf(std::current_exception());
        forms::msgBox(QString::number(failure.number()) + separator + failure.text());
        return false;
    }
}

bool guardedWithDescription(const std::function<void()>& procedure) {
    if (cnnMain)
        cnnMain->Errors().Clear(); // errors of an earlier procedure
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
        forms::msgBox(failureOf(failure).text());
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
        cnnMain->Errors().Clear(); // reported by this message
    isShowing = true;
    forms::msgBox(failureOf(uncaught).text(), forms::style::critical);
    isShowing = false;
}
