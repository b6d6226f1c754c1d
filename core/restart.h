// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

/// Ends the program; Main then starts it anew, once the home directory is free.
void endAndStartAgain();

/// For Main: starts the program anew if that is wanted. Shows a message when it cannot.
void startAgainIfWanted();

/// Starts another process of the program with the same arguments and environment; false when that fails. A
/// test replaces it.
extern std::function<bool()> startHook;
