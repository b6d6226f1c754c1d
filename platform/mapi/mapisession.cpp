// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mapi/mapisession.h"

#include "platform/mapi/client.h"

namespace mapi {

void MAPISession::setAction(int action) {
    constexpr int signOn = 1;
    constexpr int signOff = 2;
    static int lastSession = 0;
    if (action == signOn)
        SessionID = ++lastSession;
    else if (action == signOff)
        SessionID = 0;
    else
        throw Failure(QStringLiteral("A mail session has no action %1.").arg(action));
}

} // namespace mapi
