// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"
#include "platform/forms/commondialog.h"

#include <QString>

#include <optional>

class QPoint;

/// A hit of the search, as the form that shows it needs it.
struct SearchHit {
    QString customer;
    QString date;  ///< dd/mm/yyyy
    bool isAction; ///< of an improvement plan; else a survey's question or answer
};

/// What the forms use of the main window, which is the one that implements it.
class Shell {
public:
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    /// The main window's; null before it is made and after it is gone.
    static Shell* current() { return shell; }

    /// The word in panel 1 of the status bar; an empty text clears it.
    virtual void showStatus(const QString& word) = 0;
    virtual int MousePointer() const = 0;
    virtual void setMousePointer(int shape) = 0;
    /// command: a forms::HelpRequest; context: the number of the topic.
    virtual void showHelp(int command, int context) = 0;
    /// Shows the pop-up menu of an action at a position of the screen.
    virtual void PopupMenu(const QPoint& globalPosition) = 0;
    /// Opens the form that shows a hit. It finds the hit in hitToShow when it becomes active.
    virtual void showHit(const SearchHit& hit) = 0;
    virtual const std::optional<SearchHit>& hitToShow() const = 0;
    /// Runs the reports of the analyses.
    virtual crystal::CrystalReport& report() = 0;
    /// The dialog for files, of all forms.
    virtual forms::CommonDialog& fileDialog() = 0;

protected:
    Shell() { shell = this; }
    virtual ~Shell() { shell = nullptr; }

private:
    inline static Shell* shell = nullptr;
};

/// Shows the word in the status bar; an empty text clears it. Nothing happens without a main window.
void showStatus(const QString& word);

/// Opens the program's help on a form's topic. Nothing happens without a main window.
void showHelpTopic(int helpContext);
