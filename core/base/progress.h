// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

namespace forms {
class Form;
}

/// How far a long command of a form has come, with a button to cancel it; closed at the end of the scope. It
/// appears once the command has taken half a second, and then keeps the user from everything else.
class Progress {
public:
    /// The command has that many steps.
    Progress(forms::Form& form, int total);

    /// Before each step, with its name. False once the user has cancelled.
    bool step(const QString& name);
    /// Within a long step. False once the user has cancelled.
    bool goOn();
    /// For commands that name some of their steps.
    bool stepOrGoOn(const QString& name) { return name.isEmpty() ? goOn() : step(name); }

    inline static int delay = 500; ///< milliseconds

private:
    QProgressDialog dialog;
    QLabel* label;
    QElapsedTimer clock;
    int done = 0;
};
