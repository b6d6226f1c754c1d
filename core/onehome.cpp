// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/onehome.h"

#include "core/MDIMain.h"
#include "core/base/gblGlobal.h"
#include "platform/forms/msgbox.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

void bringToFront(QWidget* window) {
    if (!window)
        return;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
}

void comeForward() {
    if (MDIMain::isShown())
        bringToFront(&MDIMain::instance());
    bringToFront(QApplication::activeModalWidget());
}

} // namespace

bool claimHome(desktop::FolderClaim& claim) {
    claim.comeForward = comeForward;
    if (claim.take())
        return true;
    const desktop::FolderClaim::Holder holder = claim.holder();
    const QString where = u"Gaugewell already runs in the folder '"_s + homeDirectory() +
                          u"' on the computer '"_s + holder.computer;
    if (!holder.isHere) {
        const QString question = where +
                                 u"'. Two programs in one folder can lose what the other one writes.\r\n"
                                 u"Has it ended there, and is this one to start?"_s;
        return forms::msgBox(question, forms::style::yesNo + forms::style::secondButton) ==
                   forms::Answer::Yes &&
               claim.takeOver();
    }
    if (!claim.raiseHolder())
        forms::msgBox(where + u"' (process "_s + QString::number(holder.process) +
                          u") and does not answer. End it there before you start it again.",
                      forms::style::critical);
    return false;
}
