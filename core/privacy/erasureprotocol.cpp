// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/erasureprotocol.h"

#include "core/privacy/persontext.h"
#include "core/store/store.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The program names survey files by numbers and copies by dates.
QString harmlessName(const QString& path) {
    static const QRegularExpression generated(u"^(?:\\d+\\.\\w+|Tallywell-[-\\d]+\\.mdb)$"_s);
    const QString name = QFileInfo(path).fileName();
    return generated.match(name).hasMatch() ? name : u"a file named by a user"_s;
}

QString listOf(const QString& head, const QStringList& paths) {
    QString text = head + u": " + QString::number(paths.size()) + u'\n';
    for (const QString& path : paths)
        text += u"  "_s + harmlessName(path) + u'\n';
    return text;
}

QString sentences(const QString& head, const QStringList& lines) {
    return lines.isEmpty() ? QString() : head + u"\n  "_s + lines.join(u"\n  "_s) + u'\n';
}

} // namespace

void ErasureOutcome::remove(const QString& path, QStringList& removed) {
    QFile file(path);
    if (!file.exists() || file.remove())
        removed << path;
    else
        faults << QDir::toNativeSeparators(path) + u": " + file.errorString();
}

QString protocolOf(const ErasureOutcome& outcome, const QDateTime& when) {
    QString text = u"Erasure of respondent %1\n%2\n\nRows of the store\n"_s.arg(outcome.respondentid)
                       .arg(when.toString(u"dd/MM/yyyy hh:mm:ss"_s));
    for (const ErasureStep& step : outcome.plan.steps)
        text += u"  "_s + step.line() + u'\n';
    text += u'\n' + listOf(u"Survey files deleted"_s, outcome.deletedFiles);
    text += listOf(u"Copies of the store removed"_s, outcome.removedCopies);
    text += listOf(u"Copies of the store that still hold the person"_s, outcome.keptCopies);
    text +=
        u"Survey files and copies that could not be deleted, or belong to another respondent as well: %1\n"_s
            .arg(outcome.faults.size());
    if (outcome.isOnServer)
        text += u"The store is on a server: its own logs and copies are its administrator's task.\n"_s;
    else if (outcome.rewriteFault.isEmpty())
        text += u"The file of the store has been rewritten without what was erased.\n"_s;
    else
        text += u"The file of the store has not been rewritten: "_s + outcome.rewriteFault + u'\n';
    return text;
}

QString leftToDo(const ErasureOutcome& outcome) {
    QString text = sentences(u"Delete these files yourself:"_s, outcome.faults) +
                   sentences(u"These copies of the store still hold the person:"_s, outcome.keptCopies);
    if (!outcome.rewriteFault.isEmpty())
        text += u"What was erased may still stand in unused parts of the store's file. Use Tools, Clean "
                "Up, to rewrite it: "_s +
                outcome.rewriteFault + u'\n';
    return text;
}

QString saveProtocol(const QString& text, const QString& kind, const QDateTime& when) {
    const QDir folder(homeDirectory() + u"/protocols"_s);
    if (!folder.exists())
        QDir().mkdir(folder.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QString path = folder.filePath(kind + when.toString(u" yyyy-MM-dd HHmmss"_s) + u".txt");
    saveOwnersText(text, path);
    return path;
}
