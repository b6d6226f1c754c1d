// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mapi/mapimessages.h"

#include "platform/mapi/client.h"

using namespace Qt::StringLiterals;

namespace mapi {

void MAPIMessages::setAction(int action) {
    if (SessionID == 0)
        throw Failure(u"There is no mail session."_s);
    if (action == Compose) {
        MsgSubject.clear();
        MsgNoteText.clear();
        AttachmentName.clear();
        AttachmentPathName.clear();
        RecipDisplayName.clear();
    } else if (action == SendByDialog) {
        mapi::compose({MsgSubject, MsgNoteText, RecipDisplayName, AttachmentName, AttachmentPathName});
    } else {
        throw Failure(u"A message has no action %1."_s.arg(action));
    }
}

} // namespace mapi
