// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/storechoice.h"

/// Uses a server's store with the password that the desktop keeps, or that the user enters until the server
/// accepts it. When the user cancels, or the server cannot be reached, the store is in use all the same, and
/// each command reports that it cannot be opened.
void signIn(const StoreChoice& choice);

/// The password that the desktop keeps for the user of a server's store; empty for none.
QString findKeptPassword(const StoreChoice& choice);
/// Lets the desktop keep it; a message tells when the desktop has no service for that.
void keepPassword(const StoreAccess& access);
void forgetPassword(const StoreChoice& choice);

/// Where strDatabasePath points while a server's store is in use: backup/ beside it takes the copies.
QString serverCopiesPath();
