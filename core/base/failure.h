// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/refusal.h"

#include <exception>
#include <functional>

/// Opens the connection if it is closed and runs a procedure under the standard failure handler: the first
/// failure ends it; the mouse pointer goes back; each error that the connection recorded is shown in a
/// message of its own, and so is a Refusal; the status bar is cleared. A failure that has nothing to do with
/// the database ends the procedure without a message. Within an open Transaction nothing is shown and the
/// failure is thrown on, to the owner of the transaction. Returns true when the procedure ran to its end.
bool guarded(const std::function<void()>& procedure);
/// Likewise, with a text other than "Error : " before the number of each error.
bool guarded(const QString& prefix, const std::function<void()>& procedure);

/// Likewise, without opening the connection first.
bool guardedUnconnected(const QString& prefix, const std::function<void()>& procedure);

/// As guarded, but shows the one failure that ended the procedure, whatever its source: number, separator,
/// description.
bool guardedWithNumber(const QString& separator, const std::function<void()>& procedure);

/// Runs a procedure that drives workbooks, dialogs or mail: the failure that ends it is shown by its own
/// description; the store's are shown as guarded shows them. Returns true when the procedure ran to its end.
bool guardedWithDescription(const std::function<void()>& procedure);

/// Shows a failure by its own description, the store's as guarded shows them. Within an open transaction it
/// is thrown on.
void showWithDescription(const std::exception_ptr& failure);

/// Runs one step of a procedure. The failure of a step that is skippable is dropped.
void runStep(bool isSkippable, const std::function<void()>& step);

/// What becomes of an exception that left an event handler: the pointers and the status word go back to rest
/// and the failure is shown by its description. While a transaction is open it is thrown on, to the holder.
/// A failure that comes while another is on show is not shown: it is mostly the same one, of a repainting.
void showUncaught(const std::exception_ptr& uncaught);
