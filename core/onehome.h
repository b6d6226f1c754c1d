// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/folderclaim.h"

/// Claims the home directory for this program. When another one holds it, that one comes to the front or the
/// user is told where it runs, and false is returned: this program is to end. The lock of another computer is
/// taken over when the user says that no program runs there.
[[nodiscard]] bool claimHome(desktop::FolderClaim& claim);
