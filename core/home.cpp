// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the company name and the database in the home directory at start-up.
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "platform/ado/datasources.h"
#include "platform/desktop/ownerfile.h"
#include "platform/failure/failure.h"
#include "platform/forms/msgbox.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

bool writeDataSource(const QString& dataSourceName, const QString& databasePath) {
    const QString driver = u"Microsoft Access Driver (*.MDB)"_s + QChar(0);
    const QString attributes = u"DSN="_s + dataSourceName + QChar(0) + u"DBQ="_s + databasePath + QChar(0);
    return ado::SQLConfigDataSource(ado::AddSystemSource, driver, attributes) == 1;
}

} // namespace

QString readCompanyName() {
    constexpr qint64 longestLine = 1024; // bytes: 255 characters of up to 4
    constexpr qsizetype longestName = 255;
    QFile file(homeDirectory() + u"/company.txt");
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) // a pipe would block
        return {};
    QString line = QString::fromUtf8(file.readLine(longestLine)).trimmed();
    if (line.startsWith(QChar::ByteOrderMark))
        line.remove(0, 1);
    return line.left(longestName);
}

void writeCompanyName(const QString& name) {
    QSaveFile file(homeDirectory() + u"/company.txt");
    if (!file.open(QIODevice::WriteOnly) || file.write(name.toUtf8() + '\n') < 0 || !file.commit())
        throw Failure(u"%1: %2"_s.arg(file.fileName(), file.errorString()));
}

bool toCreateDSN(const QString& dataSourceName, QString& databasePath) {
    const QString beside = homeDirectory() + u"/Tallywell.mdb"_s;
    if (QFileInfo(beside).isFile()) {
        databasePath = beside;
        desktop::keepToOwner(beside);
        // A failure is reported when the connection is opened.
        writeDataSource(dataSourceName, databasePath);
        return true;
    }
    if (forms::msgBox(u"Database not found in the current directory,...Locate the database to connect"_s,
                      forms::style::okCancel, u"Brackwell"_s) == forms::Answer::Cancel)
        return false;
    databasePath.clear();
    forms::CommonDialog& dialog = MDIMain::instance().CommonDialog1;
    dialog.CancelError = false;
    dialog.Flags = forms::HideReadOnly;
    dialog.Filter = u"All Files (Tallywell.mdb)|Tallywell.mdb|Mdb Files(Tallywell.mdb)|Tallywell.mdb"_s;
    dialog.ShowOpen();
    databasePath = dialog.FileName.trimmed();
    if (databasePath.isEmpty()) {
        forms::msgBox(u"Must choose the database"_s);
        return false;
    }
    if (!writeDataSource(dataSourceName, databasePath))
        forms::msgBox(u"DSN Creation Failed"_s);
    return true;
}
