// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/ownerfile.h"

#include <QDir>
#include <QFileInfo>

namespace desktop {
namespace {

constexpr QFileDevice::Permissions ofFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr QFileDevice::Permissions ofFolder = ofFile | QFileDevice::ExeOwner;

} // namespace

bool keepToOwner(const QString& path) {
    return QFile::setPermissions(path, QFileInfo(path).isDir() ? ofFolder : ofFile);
}

bool makeOwnersFolder(const QString& path) {
    const QDir folder(path);
    if (folder.exists())
        return keepToOwner(path);
    return QDir().mkpath(QFileInfo(path).absolutePath()) && QDir().mkdir(path, ofFolder);
}

} // namespace desktop
