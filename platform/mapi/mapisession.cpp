// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mapi/mapisession.h"

#include "platform/mapi/client.h"

namespace mapi {

void MAPISession::setAction(int action) {
    static int lastSession = 0;
    if (action == SignOn)
        SessionID = ++lastSession;
    else if (action == SignOff)
        SessionID = 0;
    else
        throw Failure(QStringLiteral("A mail session has no action %1.").arg(action));
}

} // namespace mapi
