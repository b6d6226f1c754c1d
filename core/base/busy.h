// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>

namespace forms {
class Form;
}

/// Shows the hourglass on a form or the main window until the end of the scope, and optionally a text in the
/// status bar.
class Busy {
public:
    /// An empty word leaves the status bar unchanged.
    explicit Busy(forms::Form& form, const QString& word = {});
    /// For the main window; no pointer changes without one.
    explicit Busy(const QString& word = {});
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    /// Restores the pointer unless it already was an hourglass; clears the status bar if a word was shown.
    ~Busy();

    /// Shows another word in the status bar, cleared by the destructor.
    void say(const QString& word);

    /// Restores the pointers of all active Busy objects, before the user is asked something.
    static void endPointers();

private:
    void restorePointer();

    QPointer<forms::Form> shown;
    bool restoresShell = false; ///< restore the main window's pointer
    bool restoresForm = false;  ///< restore the form's pointer
    bool clearsStatus = false;  ///< clear the status bar
    Busy* outer;                ///< the enclosing Busy; null for the outermost
    inline static Busy* innermost = nullptr;
};
