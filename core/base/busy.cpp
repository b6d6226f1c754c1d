// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/busy.h"

#include "core/base/shell.h"
#include "platform/forms/form.h"

Busy::Busy(forms::Form& form, const QString& word)
    : shown(&form), hasPointer(form.MousePointer() == forms::DefaultPointer) {
    form.setMousePointer(forms::Hourglass);
    if (!word.isEmpty())
        say(word);
}

Busy::Busy(const QString& word) {
    if (Shell* shell = Shell::current()) {
        ofShell = shell->MousePointer() == forms::DefaultPointer;
        shell->setMousePointer(forms::Hourglass);
    }
    if (!word.isEmpty())
        say(word);
}

Busy::~Busy() {
    if (hasWord)
        toShowStatus({});
    if (shown && hasPointer)
        shown->setMousePointer(forms::DefaultPointer);
    if (Shell* shell = Shell::current(); shell && ofShell)
        shell->setMousePointer(forms::DefaultPointer);
}

void Busy::say(const QString& word) {
    toShowStatus(word);
    hasWord = true;
}
