// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/opener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace desktop {
namespace {

int openByDesktop(const QString& path) {
    if (!QFileInfo::exists(path))
        return NoSuchFile;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path)) ? HandedOver : NoProgram;
}

} // namespace

std::function<int(const QString&)> openFileHook = openByDesktop;

int openFile(const QString& path) {
    return openFileHook(path);
}

} // namespace desktop
