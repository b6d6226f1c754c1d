// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/shell.h"

void showStatus(const QString& word) {
    if (Shell* shell = Shell::current())
        shell->showStatus(word);
}

void showHelpTopic(int helpContext) {
    if (Shell* shell = Shell::current())
        shell->showHelp(forms::HelpTopic, helpContext);
}
