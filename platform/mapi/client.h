// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace mapi {

/// A composed message as passed to the user's mail client.
struct Mail {
    QString subject;
    QString text;
    QString recipient;      ///< an address, or any text that is to show in its place
    QString attachmentName; ///< as the recipient is to see it
    QString attachmentPath; ///< empty for no attachment
};

/// Whether the user has a mail client: the desktop's for mailto, or the one named by MAILER.
bool hasClient();

/// Opens the message in the user's mail client, which sends nothing by itself. Returns when the client has
/// accepted it or, for a client that runs as long as its window, a few seconds after its start. Throws
/// Failure when the client does not start, fails or is cancelled by the user.
void compose(const Mail& mail);

/// The arguments of xdg-email for the message, in which no text can be taken for an option or a second field.
/// Throws Failure for an attachment that is missing or whose path xdg-email garbles.
QStringList emailArguments(const Mail& mail);

/// Implement hasClient and compose; a test replaces them.
extern std::function<bool()> hasClientHook;
extern std::function<void(const Mail&)> composeHook;

} // namespace mapi
