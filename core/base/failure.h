// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/refusal.h"

#include <exception>
#include <functional>

/// The standard error handler. Opens the connection if it is closed and runs a procedure. Returns true if the
/// procedure completed. If it throws, restores the mouse pointers, shows each error recorded by the
/// connection, or the text of a Refusal, in a message box, clears the status bar and returns false. An
/// exception without a recorded database error shows no message. While a Transaction is open nothing is shown
/// and the exception is rethrown.
bool guarded(const std::function<void()>& procedure);
/// Likewise, with a prefix other than "Error : " before each error number.
bool guarded(const QString& prefix, const std::function<void()>& procedure);

/// Whether the guarded procedure that runs is part of another one.
bool isWithinGuarded();

/// Likewise, without opening the connection first.
bool guardedUnconnected(const QString& prefix, const std::function<void()>& procedure);

/// As guarded, but shows only the exception thrown, whatever its source: number, separator, description.
bool guardedWithNumber(const QString& separator, const std::function<void()>& procedure);

/// Runs a procedure that uses workbooks, dialogs or mail. Shows an exception as showWithDescription does.
/// Returns true if the procedure completed.
bool guardedWithDescription(const std::function<void()>& procedure);

/// Shows the recorded database errors as guarded does; if there are none, the description of the exception.
/// Rethrows it while a transaction is open.
void showWithDescription(const std::exception_ptr& failure);

/// Runs one step of a procedure. If it is skippable, exceptions are discarded.
void runStep(bool isSkippable, const std::function<void()>& step);

/// Handles an exception that left an event handler: restores the pointers, clears the status bar and shows
/// the description. Rethrows it while a transaction is open. Shows nothing while an earlier message is open:
/// a failing repaint would report the same error again and again.
void showUncaught(const std::exception_ptr& uncaught);
