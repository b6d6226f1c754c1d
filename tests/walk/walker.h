// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"
#include "platform/desktop/opener.h"
#include "platform/forms/treeview.h"
#include "platform/mapi/client.h"
#include "tests/support/otherprogram.h"
#include "tests/walk/oracle.h"

#include <random>

namespace walk {
/// The window that receives events: a popup, a modal dialog or else the main window.
QWidget* eventTarget();
QString nameOf(const QWidget* widget);

/// Drives the running program by random mouse and key events. The same seed gives the same walk, unless
/// another program shares the store.
class Walker {
public:
    explicit Walker(int seed, bool isShared = false);
    /// Runs that many events or to a fault. Returns it with seed, step and last events; empty if none.
    QString run(int events);

private:
    void step();
    void perform();
    void lockSometimes();
    void openSomething();
    void point();
    static void click(QWidget* target, Qt::MouseButton button, Qt::KeyboardModifiers held, const QPoint& at);
    static void doubleClick(QWidget* target, Qt::MouseButton button, Qt::KeyboardModifiers held,
                            const QPoint& at);
    void drag(QWidget* target, const QPoint& from, Qt::KeyboardModifiers held);
    void press();
    void typeAndSave();
    void paste();
    forms::Answer answer(const forms::Message& message);
    QString chooseFile(const forms::CommonDialog& dialog);
    void dropNode() const;
    void note(const QString& event);

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    bool oneIn(int chances) { return below(chances) == 0; }
    template <class List> auto anyOf(const List& list) {
        return *std::next(std::begin(list), below(static_cast<int>(std::size(list))));
    }
    Qt::KeyboardModifiers anyModifiers();

    const int seed;
    const bool isShared;
    std::mt19937 random;
    Oracle oracle;
    OtherProgram blocker; // locks the store for one event
    bool locked = false;
    int left = 0, done = 0;
    int depth = 0; // of nested event loops: dialogs and menus
    std::deque<QString> recent;
    QString fault;
    QEventLoop loop;

    Replaced<forms::messageHook> messages{[this](const auto& shown) { return answer(shown); }};
    Replaced<forms::openFolderHook> folderDialog{[this] { return oneIn(3) ? QString() : homeDirectory(); }};
    Replaced<forms::openFileHook> openDialog{[this](const auto& dialog) { return chooseFile(dialog); }};
    Replaced<forms::saveFileHook> saveDialog{[this](const auto& dialog) { return chooseFile(dialog); }};
    Replaced<forms::helpHook> help{[](const auto&) {}};
    Replaced<desktop::openFileHook> opener{
        [this](const QString&) { return oneIn(2) ? desktop::HandedOver : desktop::NoSuchFile; }};
    Replaced<mapi::hasClientHook> client{[this] { return oneIn(2); }};
    Replaced<mapi::composeHook> composer{[](const auto&) {}};
    Replaced<crystal::previewHook> preview{[](const auto&, const QString&, int) {}};
    Replaced<forms::TreeView::dragHook> dragging{[this](QDrag&) { dropNode(); }};
    Replaced<endHook> end{[] {}};
};
} // namespace walk
