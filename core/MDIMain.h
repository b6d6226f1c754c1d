// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/statusbar.h"

#include <QMainWindow>

#include <functional>

class QMdiArea;
class QToolButton;

/// The main window: menus, toolbar, status bar and the area in which all other forms live.
class MDIMain : public QMainWindow {
    Q_OBJECT

public:
    /// Made at its first use, not yet shown.
    static MDIMain& instance();
    static bool isShown();
    static void destroy();

    ~MDIMain() override;

    /// The dialog for files at start-up and for the help calls of all forms.
    forms::CommonDialog CommonDialog1;
    /// Runs the reports of the analyses.
    crystal::CrystalReport crpReport;
    /// Panel 1 carries the progress words of all forms.
    forms::StatusBar* stsBar;

    void setMousePointer(int shape);
    /// Command 1 shows the topic of that context number, 11 the contents.
    void toShowHelp(int command, int context);
    /// Shows the menu of an action, mnuEdit, at a position of the screen.
    void PopupMenu(const QPoint& globalPosition);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    MDIMain();
    void makeMenus();
    void makeToolbar();
    /// hourglass, word in the status bar if told so, the step, word cleared, pointer back
    void openForm(bool withWord, bool clearsWord, const std::function<void()>& open);
    void runEntry(const QString& name);
    void toolbarMenu(const QString& key);
    void popupEntry(const QString& name);
    void openCustomer();
    void openParameter();
    void mnuGettingStarted();

    QMdiArea* area;
    int pointer = 0;
};

/// Shows the word in panel 1 of the main window's status bar; an empty text clears it.
void toShowStatus(const QString& word);

/// Opens the program's help on a form's topic.
void toShowHelpTopic(int helpContext);
