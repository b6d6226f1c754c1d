// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/previewwindow.h"

#include "platform/crystal/crystalreport.h"
#include "platform/crystal/output.h"
#include "platform/crystal/pageview.h"
#include "platform/crystal/reportfailure.h"
#include "platform/crystal/reporttable.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/readernames.h"
#include "platform/forms/tablemenu.h"
#include "platform/spoken/notice.h"
#include "platform/spoken/spokentable.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace crystal {
namespace {

constexpr double zoomStep = 1.25;

QString askForPdf(QWidget* window, const QString& suggestion) {
    QFileDialog dialog(window, QFileDialog::tr("Save as PDF"), suggestion, QFileDialog::tr("PDF (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().first() : QString();
}

bool askForPrinter(QWidget* window, QPrinter& printer) {
    QPrintDialog dialog(&printer, window);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

std::function<QString(QWidget*, const QString&)> pdfFileHook = askForPdf;
std::function<bool(QWidget*, QPrinter&)> printerHook = askForPrinter;

void PreviewWindow::show(const std::shared_ptr<const Report>& report, const QString& title, int state) {
    auto* window = new PreviewWindow(report, title);
    if (state == MaximizedWindow)
        window->showMaximized();
    else if (state == MinimizedWindow)
        window->showMinimized();
    else
        window->QWidget::show();
    window->view->setFocus();
}

PreviewWindow::PreviewWindow(std::shared_ptr<const Report> shown, const QString& title)
    : report(std::move(shown)), view(new PageView(report, this)), pageBox(new QSpinBox(this)) {
    setObjectName(u"PreviewWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    setContextMenuPolicy(Qt::NoContextMenu); // otherwise its tool bar could be hidden permanently
    resize(960, 720);
    desktop::keepOnScreen(*this);
    setCentralWidget(view);
    addActions();
    const auto table = [this] { return tableOf(*report); };
    forms::addTableMenu(*view, table, table);
    spoken::readAsTable(*view, table);
    statusBar();
    forms::nameForReader(*this);
}

void PreviewWindow::addActions() {
    QToolBar* bar = addToolBar(tr("Report"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto add = [&](const QString& text, const char* name, const QKeySequence& key, auto step) {
        QAction* action = bar->addAction(text);
        action->setObjectName(QLatin1StringView(name));
        action->setShortcut(key);
        action->setToolTip(text + u" ("_s + key.toString(QKeySequence::NativeText) + u')');
        connect(action, &QAction::triggered, this, step);
    };
    add(tr("Print..."), "print", QKeySequence::Print, [this] { printReport(); });
    add(tr("Save as PDF..."), "save", QKeySequence::Save, [this] { saveAsPdf(); });
    bar->addSeparator();
    add(tr("Previous page"), "previous", Qt::ALT | Qt::Key_Left, [this] { view->goTo(view->page() - 1); });
    addPageBox();
    add(tr("Next page"), "next", Qt::ALT | Qt::Key_Right, [this] { view->goTo(view->page() + 1); });
    bar->addSeparator();
    add(tr("Smaller"), "smaller", QKeySequence::ZoomOut, [this] { view->setZoom(view->zoom() / zoomStep); });
    add(tr("Larger"), "larger", QKeySequence::ZoomIn, [this] { view->setZoom(view->zoom() * zoomStep); });
    add(tr("Page width"), "width", Qt::CTRL | Qt::Key_0, [this] { view->fitWidth(); });
    bar->addSeparator();
    add(tr("Close"), "close", Qt::Key_Escape, [this] { close(); });
}

void PreviewWindow::addPageBox() {
    const int count = report->pageCount();
    pageBox->setObjectName(u"page"_s);
    pageBox->setAccessibleName(tr("Page"));
    pageBox->setRange(1, count);
    pageBox->setPrefix(tr("Page "));
    pageBox->setSuffix(tr(" of %1").arg(count));
    pageBox->setKeyboardTracking(false);
    findChild<QToolBar*>()->addWidget(pageBox);
    connect(pageBox, &QSpinBox::valueChanged, view, [this](int page) {
        if (page - 1 != view->page())
            view->goTo(page - 1);
    });
    connect(view, &PageView::pageChanged, pageBox, [this](int page) { pageBox->setValue(page + 1); });
}

void PreviewWindow::printReport() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(report->layout().page);
    printer.setDocName(report->layout().title);
    if (printerHook(this, printer))
        attempt(tr("Handed to the printer."), [&] { print(*report, printer); });
}

void PreviewWindow::saveAsPdf() {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QString file = pdfFileHook(this, documents.filePath(report->layout().title + u".pdf"));
    if (!file.isEmpty())
        attempt(tr("Saved as %1").arg(file), [&] { savePdf(*report, file); });
}

void PreviewWindow::attempt(const QString& success, const std::function<void()>& step) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        step();
        statusBar()->showMessage(success);
    } catch (const Failure& error) {
        statusBar()->showMessage(error.text());
    }
    spoken::announce(*statusBar());
    QApplication::restoreOverrideCursor();
}

} // namespace crystal
