// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace desktop {

/// Lets the owner alone read and write the file, or enter the folder. False when there is none or the rights
/// cannot be set, as on a file of another user.
bool keepToOwner(const QString& path);

/// Makes the folder, and those above it that are missing, so that its owner alone can enter; one that is
/// there is kept to its owner likewise. False when it cannot be made.
bool makeOwnersFolder(const QString& path);

} // namespace desktop
