// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/shell.h"

#include "platform/forms/clock.h"

using namespace Qt::StringLiterals;

void showStatus(const QString& word) {
    if (Shell* shell = Shell::current())
        shell->showStatus(word);
}

void showDone(const QString& text, const QString& file) {
    if (Shell* shell = Shell::current())
        shell->showDone(text + u' ' + forms::nowHook().toString(u"HH:mm"_s), file);
}

QString counted(qsizetype number, const QString& noun) {
    return QString::number(number) + u' ' + noun + (number == 1 ? u""_s : u"s"_s);
}

void showHelpTopic(int helpContext) {
    if (Shell* shell = Shell::current())
        shell->showHelp(forms::HelpTopic, helpContext);
}
