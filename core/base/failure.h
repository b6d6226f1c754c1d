// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/refusal.h"

#include <exception>
#include <functional>

namespace forms {
class Form;
}

/// How a procedure ends when a step of it fails.
struct FailureHandler {
    QString prefix = QStringLiteral("Error : "); ///< stands before the number of each error
    forms::Form* form = nullptr;                 ///< whose mouse pointer goes back to the default
};

/// Runs a procedure under the standard failure handler: the first failure ends it; the mouse pointer goes
/// back; each error that the connection recorded is shown in a message of its own, and so is a Refusal; the
/// status bar is cleared. A failure that has nothing to do with the database ends the procedure without a
/// word. Within an open Transaction nothing is shown and the failure is thrown on, to the procedure that
/// holds the transaction. Returns true when the procedure ran to its end.
bool guarded(const FailureHandler& handler, const std::function<void()>& procedure);

/// Runs a procedure whose handler shows the one failure that ended it, whatever its source: number,
/// separator, description. Returns true when the procedure ran to its end.
bool guardedWithNumber(const QString& separator, const std::function<void()>& procedure);

/// Runs a procedure that drives workbooks, dialogs or mail: the failure that ends it is shown by its own
/// description; the store's are shown as guarded shows them. Returns true when the procedure ran to its end.
bool guardedWithDescription(const std::function<void()>& procedure);

/// What becomes of an exception that left an event handler: the pointers and the status word go back to rest
/// and the failure is shown by its description. While a transaction is open it is thrown on, to the holder.
/// A failure that comes while another is on show is not shown: it is mostly the same one, of a repainting.
void toShowUncaught(const std::exception_ptr& uncaught);
