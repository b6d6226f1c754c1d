// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <exception>
#include <functional>

/// The tables that a command empties and fills for itself, for a form or a report to show. Each running
/// program has its own (ado::Connection::OwnTables).
QStringList workTables();

/// Runs `write` in one transaction on cnnMain (one disk sync). If `write` throws, the rows written before are
/// committed and the exception is returned; null on success. Throws if nothing was kept: the transaction
/// could not be begun or committed, or the store rolled it back.
std::exception_ptr tryWriteTogether(const std::function<void()>& write);

/// Likewise, but rethrows the exception after the commit.
void writeTogether(const std::function<void()>& write);

/// Fills work tables likewise, without locking the store for other programs.
void fillWorkTable(const std::function<void()>& fill);
