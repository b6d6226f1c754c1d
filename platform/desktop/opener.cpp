// SPDX-License-Identifier: GPL-3.0-or-later
#include <gio/gio.h>

#include "platform/desktop/opener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLibrary>
#include <QMimeDatabase>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace desktop {
namespace {

/// Whether the desktop knows a program for the file's type or a type that it is a kind of. The desktop's own
/// opener reports success without one. True where this cannot be found out.
bool hasProgram(const QString& path) {
    QLibrary desktopFiles(u"gio-2.0"_s, 0);
    QLibrary objects(u"gobject-2.0"_s, 0);
    const auto find = reinterpret_cast<decltype(&g_app_info_get_default_for_type)>(
        desktopFiles.resolve("g_app_info_get_default_for_type"));
    const auto release = reinterpret_cast<decltype(&g_object_unref)>(objects.resolve("g_object_unref"));
    if (!find || !release)
        return true;
    const QByteArray type = QMimeDatabase().mimeTypeForFile(path).name().toLatin1();
    GAppInfo* program = find(type.constData(), FALSE);
    if (program)
        release(program);
    return program != nullptr;
}

int openByDesktop(const QString& path) {
    if (!QFileInfo::exists(path))
        return NoSuchFile;
    return hasProgram(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path)) ? HandedOver : NoProgram;
}

} // namespace

std::function<int(const QString&)> openFileHook = openByDesktop;

int openFile(const QString& path) {
    return openFileHook(path);
}

} // namespace desktop
