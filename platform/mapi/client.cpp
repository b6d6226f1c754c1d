// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mapi/client.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QList>
#include <QProcess>
#include <QTimer>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;

namespace mapi {
namespace {

constexpr int longestQuery = 5000;    // ms
constexpr int longestStart = 5000;    // ms
constexpr int longestHandOver = 4000; // ms; a client still running then has shown its window

bool askDesktop() {
    if (!qEnvironmentVariableIsEmpty("MAILER"))
        return true;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"x-scheme-handler/mailto"_s});
    return query.waitForFinished(longestQuery) && !query.readAllStandardOutput().trimmed().isEmpty();
}

QString reasonOf(int exitCode) {
    switch (exitCode) {
    case 2:
        return u"the file to attach is missing"_s;
    case 3:
        return u"no mail program was found"_s;
    case 5:
        return u"the file to attach cannot be read"_s;
    default:
        return u"the mail program reported a failure, or the mail was cancelled"_s;
    }
}

/// Waits for the end while windows are repainted; user input is queued.
void waitFor(QProcess& process) {
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    limit.start(longestHandOver);
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}

/// Releases a client that runs as long as its window, possibly longer than this program: destroying a
/// QProcess kills its process, so it is destroyed only after the process has ended.
void detach(QProcess* process) {
    static QList<QProcess*>& running = *new QList<QProcess*>;
    running << process;
    QObject::connect(process, &QProcess::finished, process, [process] {
        running.removeOne(process);
        process->deleteLater();
    });
}

void composeByXdgEmail(const Mail& mail) {
    const QStringList arguments = emailArguments(mail);
    auto process = std::make_unique<QProcess>();
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(u"xdg-email"_s, arguments);
    if (!process->waitForStarted(longestStart)) {
        throw Failure(u"The mail program could not be started: "_s + process->errorString());
    }
    waitFor(*process);
    if (process->state() != QProcess::NotRunning) {
        detach(process.release());
        return;
    }
    const int exitCode = process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1;
    if (exitCode != 0)
        throw Failure(u"The mail was not handed over: "_s + reasonOf(exitCode) + u'.');
}

QString encoded(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text, "@"));
}

/// Line ends as required in a mailto address.
QString withNetworkLineEnds(QString text) {
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n"_s, u"\r\n"_s);
}

} // namespace

std::function<bool()> hasClientHook = askDesktop;
std::function<void(const Mail&)> composeHook = composeByXdgEmail;

bool hasClient() {
    return hasClientHook();
}

void compose(const Mail& mail) {
    composeHook(mail);
}

QStringList emailArguments(const Mail& mail) {
    QStringList arguments{u"--utf8"_s};
    if (!mail.attachmentPath.isEmpty()) {
        const QFileInfo file(mail.attachmentPath);
        if (!file.isFile())
            throw Failure(u"The file to attach is missing: "_s + mail.attachmentPath);
        const QString path = file.absoluteFilePath();
        if (path.contains(u'\\') || path.contains(u'\n'))
            throw Failure(
                u"A mail program cannot take a file with a backslash or a line break in its path: "_s + path);
        arguments << u"--attach"_s << path;
    }
    // Recipient and texts go as one mailto address, since xdg-email alters backslashes in its own options.
    arguments << u"mailto:"_s + encoded(mail.recipient) + u"?subject=" + encoded(mail.subject) + u"&body=" +
                     encoded(withNetworkLineEnds(mail.text));
    return arguments;
}

} // namespace mapi
