// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/filecontent.h"

#include "platform/excel/compoundfile.h"
#include "platform/excel/refusal.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace excel {

DiskState::DiskState(const QString& path) {
    const QFileInfo info(path);
    changed = info.lastModified();
    size = info.exists() ? info.size() : -1;
}

FileContent readContent(const QString& path) {
    QFile file(path);
    const DiskState state(path);
    if (!file.exists())
        throw Failure(u"The file \"%1\" was not found."_s.arg(path));
    if (QFileInfo(path).isDir())
        biff::refuse(path, u"is a folder and no workbook"_s);
    if (!file.open(QIODevice::ReadOnly))
        biff::refuse(path, u"cannot be opened: %1"_s.arg(file.errorString()));
    if (file.size() > biff::CompoundFile::maxFileSize)
        biff::refuse(path, u"is larger than 64 MB"_s);
    FileContent content(file.readAll(), state);
    if (file.error() != QFileDevice::NoError)
        biff::refuse(path, u"cannot be read: %1"_s.arg(file.errorString()));
    return content;
}

} // namespace excel
