// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/backup.h"

#include "core/MDIMain.h"
#include "core/gblGlobal.h"
#include "platform/forms/screen.h"

#include <QDateTime>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostKept = 10;
bool copied = false;

struct HourglassWhile {
    HourglassWhile() { MDIMain::instance().setMousePointer(forms::Hourglass); }
    HourglassWhile(const HourglassWhile&) = delete;
    HourglassWhile& operator=(const HourglassWhile&) = delete;
    ~HourglassWhile() { MDIMain::instance().setMousePointer(forms::DefaultPointer); }
};

void dropOldCopies(const QDir& folder) {
    QStringList copies = folder.entryList({u"Tallywell-*.mdb"_s}, QDir::Files, QDir::Name);
    while (copies.size() > mostKept)
        QFile::remove(folder.filePath(copies.takeFirst()));
}

} // namespace

void toBackupBeforeLoss() {
    if (copied)
        return;
    const HourglassWhile copying;
    const QDir folder(QFileInfo(strDatabasePath).absoluteDir().filePath(u"backup"_s));
    folder.mkpath(u"."_s);
    const QString stamp = QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss");
    cnnMain->BackupTo(folder.filePath(u"Tallywell-"_s + stamp + u".mdb"));
    copied = true;
    dropOldCopies(folder);
}

void toForgetBackup() {
    copied = false;
}
