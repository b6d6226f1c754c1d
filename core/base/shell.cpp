// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/shell.h"

void toShowStatus(const QString& word) {
    if (Shell* shell = Shell::current())
        shell->showStatus(word);
}

void toShowHelpTopic(int helpContext) {
    if (Shell* shell = Shell::current())
        shell->showHelp(forms::HelpTopic, helpContext);
}
