// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"
#include "platform/forms/commondialog.h"

#include <QString>

#include <optional>

class QAction;
class QPoint;

/// A search hit, as needed by the form that shows it.
struct SearchHit {
    QString customer;
    QString date;  ///< dd/mm/yyyy
    bool isAction; ///< an improvement action; else a survey question or answer
};

/// An improvement action to be written.
struct ActionDraft {
    QString customer;
    QString description; ///< its beginning
};

/// The forms' interface to the main window.
class Shell {
public:
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    /// The main window; null before it is created and after it is destroyed.
    static Shell* current() { return shell; }

    /// Shows a text in panel 1 of the status bar; an empty text clears it.
    virtual void showStatus(const QString& word) = 0;
    /// Shows in panel 2 of the status bar what was done; its button opens the folder of a file.
    virtual void showDone(const QString& text, const QString& file) = 0;
    virtual int MousePointer() const = 0;
    virtual void setMousePointer(int shape) = 0;
    /// command: a forms::HelpRequest; context: the number of the topic.
    virtual void showHelp(int command, int context) = 0;
    /// Opens the pop-up menu for improvement actions at a screen position; `further` entries follow its own.
    virtual void PopupMenu(const QPoint& globalPosition, const QList<QAction*>& further) = 0;
    /// Opens the form that shows a hit. The form reads it from hitToShow when it becomes active.
    virtual void showHit(const SearchHit& hit) = 0;
    virtual const std::optional<SearchHit>& hitToShow() const = 0;
    /// Opens the improvement plan with a new action.
    virtual void startAction(const ActionDraft& draft) = 0;
    /// The report control shared by the analyses.
    virtual crystal::CrystalReport& report() = 0;
    /// The file dialog shared by all forms.
    virtual forms::CommonDialog& fileDialog() = 0;

protected:
    Shell() { shell = this; }
    virtual ~Shell() { shell = nullptr; }

private:
    inline static Shell* shell = nullptr;
};

/// Shows a text in the status bar; an empty text clears it. Does nothing without a main window.
void showStatus(const QString& word);

/// Shows beside it what a command has done, with the time: "6 questions saved 14:03". The folder of a file
/// can be opened there. Does nothing without a main window.
void showDone(const QString& text, const QString& file = {});

/// "1 question", "6 questions".
QString counted(qsizetype number, const QString& noun);

/// Opens the help at a form's topic. Does nothing without a main window.
void showHelpTopic(int helpContext);
