// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace mapi {

/// The message that is being composed: one recipient, one attachment.
class MAPIMessages {
public:
    /// 6 begins a message anew, 2 hands it to the user's mail client. Throws Failure when there is no
    /// session, when the client fails or the user gives up there, and for any other action.
    void setAction(int action);

    int SessionID = 0;
    QString MsgSubject;
    QString MsgNoteText;
    int AttachmentIndex = 0; ///< 0, the only one
    int AttachmentType = 0;  ///< 0, a file
    QString AttachmentName;
    QString AttachmentPathName; ///< empty for no attachment
    int RecipIndex = 0;         ///< 0, the only one
    int RecipType = 1;          ///< 1, To
    QString RecipDisplayName;
};

} // namespace mapi
