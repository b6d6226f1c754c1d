// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/busy.h"

#include "core/base/shell.h"
#include "platform/forms/form.h"

StatusWord::StatusWord(const QString& word) {
    if (!word.isEmpty())
        say(word);
}

StatusWord::~StatusWord() {
    if (isShown)
        showStatus({});
}

void StatusWord::say(const QString& word) {
    showStatus(word);
    isShown = true;
}

Busy::Busy(forms::Form& form, const QString& word)
    : StatusWord(word), shown(&form), hasPointer(form.MousePointer() == forms::DefaultPointer),
      outer(innermost) {
    innermost = this;
    form.setMousePointer(forms::Hourglass);
}

Busy::Busy(const QString& word) : StatusWord(word), outer(innermost) {
    innermost = this;
    if (Shell* shell = Shell::current()) {
        ofShell = shell->MousePointer() == forms::DefaultPointer;
        shell->setMousePointer(forms::Hourglass);
    }
}

Busy::~Busy() {
    innermost = outer;
    endPointer();
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
