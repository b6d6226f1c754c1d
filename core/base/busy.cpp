// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/busy.h"

#include "core/base/shell.h"
#include "platform/forms/form.h"

Busy::Busy(forms::Form& form, const QString& word)
    : shown(&form), hasPointer(form.MousePointer() == forms::DefaultPointer), outer(innermost) {
    innermost = this;
    form.setMousePointer(forms::Hourglass);
    if (!word.isEmpty())
        say(word);
}

Busy::Busy(const QString& word) : outer(innermost) {
    innermost = this;
    if (Shell* shell = Shell::current()) {
        ofShell = shell->MousePointer() == forms::DefaultPointer;
        shell->setMousePointer(forms::Hourglass);
    }
    if (!word.isEmpty())
        say(word);
}

Busy::~Busy() {
    innermost = outer;
    if (hasWord)
        showStatus({});
    endPointer();
}

void Busy::say(const QString& word) {
    showStatus(word);
    hasWord = true;
}

void Busy::endPointers() {
    for (Busy* work = innermost; work; work = work->outer)
        work->endPointer();
}

void Busy::endPointer() {
    if (shown && hasPointer)
        shown->setMousePointer(forms::DefaultPointer);
    if (Shell* shell = Shell::current(); shell && ofShell)
        shell->setMousePointer(forms::DefaultPointer);
}
