// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace desktop {

/// The user's name on this computer; empty if the system does not tell it.
QString loginName();

} // namespace desktop
