// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/commondialog.h"

#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

/// The form's hourglass must not stay over the dialog.
QStringList chosenIn(QFileDialog& box) {
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const bool accepted = box.exec() == QDialog::Accepted;
    QGuiApplication::restoreOverrideCursor();
    return accepted ? box.selectedFiles() : QStringList();
}

QString askForFile(const CommonDialog& dialog) {
    QFileDialog box(Form::owner());
    box.setFileMode(dialog.Flags & AllowMultiselect ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    box.setNameFilter(qtFilter(dialog.Filter));
    return chosenIn(box).join(u'\n');
}

/// Asks before an existing file is replaced.
QString askForNewFile(const CommonDialog& dialog) {
    QFileDialog box(Form::owner());
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setNameFilter(qtFilter(dialog.Filter));
    if (!dialog.InitDir.isEmpty())
        box.setDirectory(dialog.InitDir);
    return chosenIn(box).value(0);
}

QString askForFolder() {
    QFileDialog box(Form::owner());
    box.setFileMode(QFileDialog::Directory);
    box.setOption(QFileDialog::ShowDirsOnly);
    return chosenIn(box).value(0);
}

} // namespace

std::function<QString(const CommonDialog&)> openFileHook = askForFile;
std::function<QString(const CommonDialog&)> saveFileHook = askForNewFile;
std::function<QString()> openFolderHook = askForFolder;
std::function<void(const CommonDialog&)> helpHook = [](const CommonDialog&) {};

QString qtFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i].section(u'(', 0, 0).trimmed() + u" ("_s + parts[i + 1] + u')';
    filters.removeDuplicates();
    return filters.join(u";;"_s);
}

void CommonDialog::ShowOpen() {
    take(openFileHook(*this));
}

void CommonDialog::ShowSave() {
    take(saveFileHook(*this));
}

QString CommonDialog::ShowSaveAs(const QStringList& suffixes) {
    ShowSave();
    const auto isItsEnd = [this](const QString& suffix) {
        return FileName.endsWith(suffix, Qt::CaseInsensitive);
    };
    if (FileName.isEmpty() || std::any_of(suffixes.begin(), suffixes.end(), isItsEnd))
        return FileName;
    const QString path = FileName + suffixes.first();
    const bool isRefused =
        QFile::exists(path) && msgBox(path + u" already exists.\r\nDo you want to replace it?",
                                      style::yesNo + style::secondButton) != Answer::Yes;
    return isRefused ? QString() : path;
}

/// Paths may come from any platform, so either separator is accepted.
void CommonDialog::take(const QString& answer) {
    FileName = answer;
    const bool several = answer.contains(u'\n');
    const qsizetype folderEnd = std::max(answer.lastIndexOf(u'/'), answer.lastIndexOf(u'\\'));
    FileTitle = several ? QString() : answer.mid(folderEnd + 1);
    if (answer.isEmpty() && CancelError)
        throw DialogCancelled();
}

void CommonDialog::ShowHelp() {
    helpHook(*this);
}

} // namespace forms
