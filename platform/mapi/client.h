// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <exception>
#include <functional>

namespace mapi {

/// Thrown by what fails here; the text is a sentence for a person.
class Failure : public std::exception {
public:
    explicit Failure(const QString& text) : description(text), utf8(text.toUtf8()) {}
    const QString& text() const { return description; }
    const char* what() const noexcept override { return utf8.constData(); }

private:
    QString description;
    QByteArray utf8;
};

/// A composed message as the user's mail client gets it.
struct Mail {
    QString subject;
    QString text;
    QString recipient;      ///< an address, or any text that is to show in its place
    QString attachmentName; ///< as the recipient is to see it
    QString attachmentPath; ///< empty for no attachment
};

/// Whether the user has a mail client: one that the desktop has for mailto, or the one named by MAILER.
bool hasClient();

/// Opens the message in the user's mail client, which sends nothing by itself. Returns when the client has
/// taken it over or, for a client that lasts as long as its window, a few seconds after it was started.
/// Throws Failure when the client does not start, reports a failure or that the user gave up.
void compose(const Mail& mail);

/// The arguments with which xdg-email gets the message: none of its texts can be taken for an option or for
/// a second field. Throws Failure for an attachment that is not there or whose path xdg-email garbles.
QStringList emailArguments(const Mail& mail);

/// Who knows the client and who is the client; a test puts its own here.
extern std::function<bool()> hasClientHook;
extern std::function<void(const Mail&)> composeHook;

} // namespace mapi
