// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>
#include <functional>

/// Runs writes whose rows stay when a later one fails as one transaction on cnnMain, so that they cost one
/// sync of the disk. Returns what ended them early, null when nothing did: what was written before it is
/// committed. Throws when nothing of it stays: the transaction cannot be begun or committed, or the store has
/// rolled it back by itself.
std::exception_ptr tryWriteTogether(const std::function<void()>& write);

/// Likewise, and throws what ended the writes early, once what was written before it is committed.
void writeTogether(const std::function<void()>& write);

/// The filling of a work table.
void fillWorkTable(const std::function<void()>& fill);
