// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QMimeData;
class QWidget;

/// Lets survey files and folders of them be dropped on a window: owned by the window, it hands over their
/// paths after the drop has ended, so that the program they come from does not wait. Files that are not on
/// this computer are left out. Nothing is taken while a dialog is open.
class DropTarget : public QObject {
    Q_OBJECT

public:
    using Taker = std::function<void(const QStringList& paths)>;
    DropTarget(QWidget& window, Taker take);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Taker taker;
};

/// The returned files that a folder holds, without its subfolders, and without the template and the lock
/// files of spreadsheet programs.
QStringList findReturnedFiles(const QString& folder);
