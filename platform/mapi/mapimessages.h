// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace mapi {

enum MessageAction { SendByDialog = 2, Compose = 6 };
enum AttachmentKind { DataAttachment = 0 };
enum RecipientKind { ToRecipient = 1 };

/// The message that is being composed: one recipient, one attachment.
class MAPIMessages {
public:
    /// Compose begins a new message, SendByDialog hands it to the user's mail client. Throws Failure without
    /// a session, when the client fails or the user cancels there, and for any other action.
    void setAction(int action);

    int SessionID = 0;
    QString MsgSubject;
    QString MsgNoteText;
    int AttachmentIndex = 0; ///< of the only one
    int AttachmentType = DataAttachment;
    QString AttachmentName;
    QString AttachmentPathName; ///< empty for no attachment
    int RecipIndex = 0;         ///< of the only one
    int RecipType = ToRecipient;
    QString RecipDisplayName;
};

} // namespace mapi
