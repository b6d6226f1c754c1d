// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>

namespace forms {
class Form;
}

/// A form or the main window at work: the hourglass, from here to the end of the scope, and a word in the
/// status bar. What has been told of a nested piece of work is cleared with that one.
class Busy {
public:
    /// Without a word the status bar stays as it is.
    explicit Busy(forms::Form& form, const QString& word = {});
    /// The main window; nothing happens without one.
    explicit Busy(const QString& word = {});
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    /// The pointer goes back unless the form or main window was at work before; a word is cleared.
    ~Busy();

    /// Shows another word in the status bar, which is cleared at the end.
    void say(const QString& word);

private:
    QPointer<forms::Form> shown;
    bool ofShell = false; ///< the main window's pointer goes back
    bool hasPointer = false;
    bool hasWord = false;
};
