// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/restart.h"

#include "core/base/gblGlobal.h"
#include "platform/forms/msgbox.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

bool isWanted = false;

} // namespace

std::function<bool()> startHook = [] {
    return QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                   QCoreApplication::arguments().mid(1));
};

void endAndStartAgain() {
    isWanted = true;
    endProgram();
}

void startAgainIfWanted() {
    if (std::exchange(isWanted, false) && !startHook())
        forms::msgBox(u"The program could not be started again. Start it yourself."_s,
                      forms::style::information, titleWithVersion);
}
