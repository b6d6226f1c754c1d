// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/shell.h"
#include "platform/forms/statusbar.h"

#include <QMainWindow>

class QMdiArea;

/// The main window: menus, toolbar, status bar and the area in which all other forms live.
class MDIMain : public QMainWindow, public Shell {
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

    void showStatus(const QString& word) override;
    int MousePointer() const override { return pointer; }
    void setMousePointer(int shape) override;
    void showHelp(int command, int context) override;
    /// The menu mnuEdit.
    void PopupMenu(const QPoint& globalPosition) override;
    void showHit(const SearchHit& hit) override;
    const std::optional<SearchHit>& hitToShow() const override { return hitOnShow; }
    crystal::CrystalReport& report() override { return crpReport; }
    forms::CommonDialog& fileDialog() override { return CommonDialog1; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    MDIMain();
    void makeMenus();
    void makeToolbar();

    QMdiArea* area;
    int pointer = 0;
    std::optional<SearchHit> hitOnShow;
};
