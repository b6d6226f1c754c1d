// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace desktop {

/// Restricts a file or folder to its owner. False when it does not exist or the permissions cannot be set, as
/// on another user's file.
bool keepToOwner(const QString& path);

/// Creates the folder and its missing parents, accessible to the owner only; an existing folder is restricted
/// likewise. False when it cannot be created.
bool makeOwnersFolder(const QString& path);

} // namespace desktop
