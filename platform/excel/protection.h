// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace excel::biff {

/// The 16-bit hash that a protected sheet stores for its password; 0 for an empty one. It prevents mistakes,
/// not attacks: many passwords share a hash. Passwords are 1 to 15 printable ASCII characters, since programs
/// disagree on the bytes of others; Refusal for those.
quint16 passwordHash(const QString& password);

} // namespace excel::biff
