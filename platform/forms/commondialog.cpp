// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/commondialog.h"

#include <QApplication>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

constexpr int severalFiles = 512;

QString askForFile(const CommonDialog& dialog) {
    QFileDialog box(QApplication::activeWindow());
    box.setFileMode(dialog.Flags & severalFiles ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    box.setNameFilter(qtFilter(dialog.Filter));
    return box.exec() == QDialog::Accepted ? box.selectedFiles().join(u'\n') : QString();
}

} // namespace

std::function<QString(const CommonDialog&)> openFileSeat = askForFile;
std::function<void(const CommonDialog&)> helpSeat = [](const CommonDialog&) {};

QString qtFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i].section(u'(', 0, 0).trimmed() + u" ("_s + parts[i + 1] + u')';
    filters.removeDuplicates();
    return filters.join(u";;"_s);
}

void CommonDialog::ShowOpen() {
    FileName = openFileSeat(*this);
}

void CommonDialog::ShowHelp() {
    helpSeat(*this);
}

} // namespace forms
