// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>

namespace forms {
class Form;
}

/// A form or the main window at work: the hourglass, from here to the end of the scope, and a word in the
/// status bar.
class Busy {
public:
    /// Without a word the status bar stays as it is.
    explicit Busy(forms::Form& form, const QString& word = {});
    /// The main window; nothing happens without one.
    explicit Busy(const QString& word = {});
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    /// Restores the pointer unless it was an hourglass before, and clears the word.
    ~Busy();

    /// Shows another word in the status bar, which is cleared at the end.
    void say(const QString& word);

    /// Restores the pointers of all work in hand: it is the user's turn.
    static void endPointers();

private:
    void endPointer();

    QPointer<forms::Form> shown;
    bool ofShell = false; ///< restores the main window's pointer
    bool hasPointer = false;
    bool hasWord = false;
    Busy* outer; ///< the work that this one is part of
    inline static Busy* innermost = nullptr;
};
