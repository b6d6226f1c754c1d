// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace mapi {

/// A session with the mail client.
class MAPISession {
public:
    /// 1 signs on, 2 signs off. Throws Failure for any other action.
    void setAction(int action);
    /// Not 0 while signed on.
    int SessionID = 0;
};

} // namespace mapi
