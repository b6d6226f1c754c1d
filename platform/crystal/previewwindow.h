// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/report.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QLabel;
class QPrinter;
class QSpinBox;

namespace crystal {

class PageView;

/// Shows a report's pages; from here the user prints them or saves them as a PDF. A failure of either is
/// shown in the status bar. Closing the window deletes it.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Opens a new window for the report. state: a PreviewState.
    static void show(const std::shared_ptr<const Report>& report, const QString& title, int state);

    void printReport();
    void saveAsPdf();

private:
    PreviewWindow(std::shared_ptr<const Report> shown, const QString& title);
    void addActions();
    void addPageBox();
    void attempt(const QString& success, const std::function<void()>& step);

    std::shared_ptr<const Report> report;
    PageView* view;
    QSpinBox* pageBox;
};

/// Asks for the PDF's file, given a suggestion; returns an empty text when cancelled. Tests replace it.
extern std::function<QString(QWidget* window, const QString& suggestion)> pdfFileHook;

/// Lets the user choose a printer and pages; false when cancelled. Tests replace it.
extern std::function<bool(QWidget* window, QPrinter& printer)> printerHook;

} // namespace crystal
