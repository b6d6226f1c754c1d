// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/shell.h"
#include "platform/forms/statusbar.h"

#include <QMainWindow>

class QMdiArea;

/// The main window: menus, toolbar, status bar and the area of the other forms.
class MDIMain : public QMainWindow, public Shell {
    Q_OBJECT

public:
    /// Created on first use, hidden.
    static MDIMain& instance();
    static bool isShown();
    static void destroy();

    /// Whether no other form is open in the window.
    bool isOnlyForm(const QWidget& form) const;

    ~MDIMain() override;

    /// The file dialog of all forms, also used to show help.
    forms::CommonDialog CommonDialog1;
    /// The report control shared by the analyses.
    crystal::CrystalReport crpReport;
    /// Panel 1 shows the progress of all forms, panel 2 what they did last.
    forms::StatusBar* stsBar;

    void showStatus(const QString& word) override;
    void showDone(const QString& text, const QString& file) override;
    int MousePointer() const override { return pointer; }
    void setMousePointer(int shape) override;
    void showHelp(int command, int context) override;
    /// Opens the menu mnuEdit.
    void PopupMenu(const QPoint& globalPosition, const QList<QAction*>& further) override;
    void showHit(const SearchHit& hit) override;
    const std::optional<SearchHit>& hitToShow() const override { return currentHit; }
    void startAction(const ActionDraft& draft) override;
    crystal::CrystalReport& report() override { return crpReport; }
    forms::CommonDialog& fileDialog() override { return CommonDialog1; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    MDIMain();
    void makeMenus();
    void makeToolbar();
    void makeStartPage();
    void makeWindowList();

    QMdiArea* area;
    int pointer = 0;
    std::optional<SearchHit> currentHit;
};
