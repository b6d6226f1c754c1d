// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/busy.h"

#include "core/base/shell.h"
#include "platform/forms/form.h"

Busy::Busy(forms::Form& form, const QString& word)
    : shown(&form), restoresForm(form.MousePointer() == forms::DefaultPointer), outer(innermost) {
    innermost = this;
    form.setMousePointer(forms::Hourglass);
    if (!word.isEmpty())
        say(word);
}

Busy::Busy(const QString& word) : outer(innermost) {
    innermost = this;
    if (Shell* shell = Shell::current()) {
        restoresShell = shell->MousePointer() == forms::DefaultPointer;
        shell->setMousePointer(forms::Hourglass);
    }
    if (!word.isEmpty())
        say(word);
}

Busy::~Busy() {
    innermost = outer;
    if (clearsStatus)
        showStatus({});
    restorePointer();
}

void Busy::say(const QString& word) {
    showStatus(word);
    clearsStatus = true;
}

void Busy::endPointers() {
    for (Busy* work = innermost; work; work = work->outer)
        work->restorePointer();
}

void Busy::restorePointer() {
    if (shown && restoresForm)
        shown->setMousePointer(forms::DefaultPointer);
    if (Shell* shell = Shell::current(); shell && restoresShell)
        shell->setMousePointer(forms::DefaultPointer);
}
