// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>

namespace forms {
class Form;
}

/// A word in the status bar, cleared at the end of the scope.
class StatusWord {
public:
    /// Without a word the status bar is left as it is.
    explicit StatusWord(const QString& word = {});
    StatusWord(const StatusWord&) = delete;
    StatusWord& operator=(const StatusWord&) = delete;
    ~StatusWord();

    /// Replaces the word.
    void say(const QString& word);
    /// Leaves the word in the status bar.
    void keep() { isShown = false; }

private:
    bool isShown = false;
};

/// A form or the main window at work: the hourglass, from here to the end of the scope, and a word in the
/// status bar.
class Busy : public StatusWord {
public:
    explicit Busy(forms::Form& form, const QString& word = {});
    /// The main window; nothing happens without one.
    explicit Busy(const QString& word = {});
    /// Restores the pointer unless it was an hourglass before.
    ~Busy();

    /// Restores the pointers of all current work, before the user is asked something.
    static void endPointers();

private:
    void endPointer();

    QPointer<forms::Form> shown;
    bool ofShell = false; ///< restores the main window's pointer
    bool hasPointer = false;
    Busy* outer; ///< the work that this one is part of
    inline static Busy* innermost = nullptr;
};
