// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/droppedfiles.h"

#include "exchange/files/filenames.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QStringList pathsIn(const QMimeData& carried) {
    QStringList paths;
    for (const QUrl& url : carried.urls()) {
        const QString path = url.toLocalFile();
        if (QFileInfo(path).isDir())
            paths += findReturnedFiles(path);
        else if (!path.isEmpty())
            paths << path;
    }
    return paths;
}

bool hasLocalFile(const QMimeData& carried) {
    const QList<QUrl> urls = carried.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

} // namespace

DropTarget::DropTarget(QWidget& window, Taker take) : QObject(&window), taker(std::move(take)) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool DropTarget::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!hasLocalFile(*drop.mimeData()) || QApplication::activeModalWidget()) {
        drop.ignore();
        return true;
    }
    drop.setDropAction(Qt::CopyAction); // a move would make the file manager delete them
    drop.accept();
    if (type == QEvent::Drop)
        QTimer::singleShot(0, this, [this, paths = pathsIn(*drop.mimeData())] { taker(paths); });
    return true;
}

QStringList findReturnedFiles(const QString& folder) {
    QStringList paths;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({u"*.xls"_s, u"*.xlsx"_s, u"*.xlsm"_s, u"*.ods"_s}, QDir::Files,
                                             QDir::Name | QDir::IgnoreCase)) {
        const bool isLock = name.startsWith(u"~$") || name.startsWith(u".~lock.");
        if (!isLock && name.compare(templateFile, Qt::CaseInsensitive) != 0)
            paths << dir.filePath(name);
    }
    return paths;
}
