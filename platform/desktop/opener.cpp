// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/opener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace desktop {
namespace {

constexpr int noSuchFile = 2;
constexpr int noProgram = 31;
constexpr int handedOver = 42;

int openByDesktop(const QString& path) {
    if (!QFileInfo::exists(path))
        return noSuchFile;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path)) ? handedOver : noProgram;
}

} // namespace

std::function<int(const QString&)> openFileHook = openByDesktop;

int openFile(const QString& path) {
    return openFileHook(path);
}

} // namespace desktop
