// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace mapi {

enum SessionAction { SignOn = 1, SignOff = 2 };

/// A session with the mail client.
class MAPISession {
public:
    /// A SessionAction; throws Failure for any other number.
    void setAction(int action);
    /// Not 0 while signed on.
    int SessionID = 0;
};

} // namespace mapi
