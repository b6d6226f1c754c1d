// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/folderclaim.h"

/// Locks the home directory for this process. If another process holds the lock, brings that one to the front
/// or shows where it runs and returns false; this process must then end. A lock held on another computer is
/// taken over if the user confirms that the program no longer runs there.
[[nodiscard]] bool claimHome(desktop::FolderClaim& claim);
