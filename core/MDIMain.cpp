// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "core/menus.h"
#include "core/programstyle.h"
#include "core/startpage.h"
#include "exchange/droppedfiles.h"
#include "exchange/frmCheckFiles.h"
#include "exchange/surveyexport.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/desktop/opener.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/columnwidths.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/readernames.h"
#include "platform/forms/tablemenu.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

MDIMain* mainWindow = nullptr;

QString text(const char* ascii) {
    return QString::fromLatin1(ascii);
}

QAction* makeAction(const MenuEntry& entry, QObject* owner) {
    auto* action = new QAction(entry.run ? text(entry.caption) : QString(), owner);
    action->setObjectName(text(entry.name));
    action->setShortcut(QKeySequence(text(entry.shortcut)));
    action->setSeparator(!entry.run);
    action->setEnabled(entry.state == MenuEntry::State::Open);
    action->setVisible(entry.state != MenuEntry::State::Hidden);
    if (entry.run)
        QObject::connect(action, &QAction::triggered, owner, entry.run);
    return action;
}

} // namespace

MDIMain& MDIMain::instance() {
    if (!mainWindow)
        mainWindow = new MDIMain;
    return *mainWindow;
}

bool MDIMain::isShown() {
    return mainWindow && mainWindow->isVisible();
}

void MDIMain::destroy() {
    delete mainWindow;
}

bool MDIMain::isOnlyForm(const QWidget& form) const {
    const QList<QMdiSubWindow*> windows = area->subWindowList();
    return std::none_of(windows.begin(), windows.end(), [&](const QMdiSubWindow* window) {
        return window->isVisible() && window->widget() != &form;
    });
}

MDIMain::MDIMain() : stsBar(new forms::StatusBar(this)), area(new QMdiArea(this)) {
    auto* style = new ProgramStyle;
    style->setParent(qApp);
    QApplication::setStyle(style);
    setObjectName(u"MDIMain"_s);
    setWindowTitle(u"Gaugewell"_s);
    QApplication::setWindowIcon(picture(u"logo"_s));
    stsBar->setObjectName(u"stsBar"_s);
    setStatusBar(stsBar);
    connect(stsBar, &forms::StatusBar::folderAsked, this, [](const QString& folder) {
        if (desktop::openFile(folder) < desktop::SmallestSuccess)
            forms::msgBox(u"There is no program that opens the folder '"_s + folder + u"'.");
    });
    forms::tableSavedHook = [](const QString& path) {
        ::showDone(QFileInfo(path).fileName() + u" written", path);
    };
    forms::rememberHook = [](const QString& key, const QString& text) {
        desktop::rememberChoice(key.toLatin1().constData(), text);
    };
    forms::recallHook = [](const QString& key) {
        return desktop::rememberedChoice(key.toLatin1().constData());
    };
    setCentralWidget(area);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    forms::Form::setHost(area);
    makeMenus();
    makeToolbar();
    makeWindowList();
    makeStartPage();
    forms::nameForReader(*this);
    new DropTarget(*this, [](const QStringList& paths) {
        frmCheckFiles::instance().Show();
        frmCheckFiles::instance().checkFiles(paths);
    });
    resize(1180, 660);
    desktop::restoreWindow(*this);
}

MDIMain::~MDIMain() {
    if (isVisible()) // destroyed without being closed
        desktop::rememberWindow(*this);
    setMousePointer(forms::DefaultPointer);
    mainWindow = nullptr;
}

void MDIMain::makeMenus() {
    std::map<QString, QMenu*> menus;
    for (const MenuEntry& entry : menuEntries()) {
        QMenu* parent = *entry.parent ? menus.at(text(entry.parent)) : nullptr;
        QWidget* within = parent ? static_cast<QWidget*>(parent) : menuBar();
        if (!entry.isMenu()) {
            within->addAction(makeAction(entry, this));
            continue;
        }
        QMenu* menu = parent ? parent->addMenu(text(entry.caption)) : menuBar()->addMenu(text(entry.caption));
        menu->setObjectName(text(entry.name));
        menu->menuAction()->setVisible(entry.state == MenuEntry::State::Menu);
        menus[text(entry.name)] = menu;
    }
}

/// The list is made when it is opened.
void MDIMain::makeWindowList() {
    auto* menu = findChild<QMenu*>(u"mnuWindows"_s);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (QMdiSubWindow* window : area->subWindowList()) {
            if (!window->isVisible())
                continue;
            const QString number = QString::number(menu->actions().size() + 1);
            QAction* entry = menu->addAction(u"&"_s + number + u' ' + window->windowTitle());
            entry->setCheckable(true);
            entry->setChecked(window == area->activeSubWindow());
            connect(entry, &QAction::triggered, window, [this, window] {
                if (window->isMinimized())
                    window->showNormal();
                area->setActiveSubWindow(window);
            });
        }
        if (menu->isEmpty())
            menu->addAction(u"No window is open"_s)->setEnabled(false);
    });
}

void MDIMain::makeToolbar() {
    auto* tlbHold = addToolBar(u"Toolbar"_s);
    tlbHold->setObjectName(u"tlbHold"_s);
    tlbHold->setMovable(false);
    setContextMenuPolicy(Qt::NoContextMenu); // it could hide the toolbar for good
    for (const ToolbarButton& entry : toolbarButtons()) {
        auto* button = new QToolButton(tlbHold);
        button->setObjectName(text(entry.name));
        button->setToolTip(text(entry.toolTip));
        button->setAccessibleName(text(entry.toolTip));
        button->setIcon(picture(text(entry.picture)));
        connect(button, &QToolButton::clicked, this, entry.run);
        if (!entry.dropDown.empty()) {
            button->setPopupMode(QToolButton::MenuButtonPopup);
            button->setMenu(new QMenu(button));
        }
        for (const MenuEntry& below : entry.dropDown)
            button->menu()->addAction(makeAction(below, button->menu()));
        tlbHold->addWidget(button);
    }
}

void MDIMain::makeStartPage() {
    auto* page = new StartPage(area);
    connect(page, &StartPage::entryAsked, this,
            [this](const QString& entry) { findChild<QAction*>(entry)->trigger(); });
    connect(page, &StartPage::surveyAsked, this, [this](const FirstSteps::Survey& survey) {
        blnSearchToFeedback = true;
        showHit({survey.customer, survey.date.toString(ado::dateTextFormat), false});
    });
    connect(page, &StartPage::fileAsked, this, [](const QString& fileName) { viewSurveyFile(fileName); });
}

void MDIMain::setMousePointer(int shape) {
    if (shape == pointer)
        return;
    if (shape == forms::DefaultPointer)
        QGuiApplication::restoreOverrideCursor();
    else
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    pointer = shape;
}

void MDIMain::PopupMenu(const QPoint& globalPosition, const QList<QAction*>& further) {
    auto* menu = findChild<QMenu*>(u"mnuEdit"_s);
    menu->addActions(further); // those of the last time are still there, or gone with their form
    menu->popup(globalPosition);
}

void MDIMain::showHit(const SearchHit& hit) {
    currentHit = hit;
    if (hit.isAction)
        frmImprovementPlan::instance().Show();
    else
        frmFeedBackObj::instance().Show();
}

void MDIMain::startAction(const ActionDraft& draft) {
    frmImprovementPlan::instance().Show();
    frmImprovementPlan::instance().toStartAction(draft);
}

void MDIMain::closeEvent(QCloseEvent* event) {
    showStatus({});
    area->closeAllSubWindows();
    if (area->currentSubWindow()) { // a form refused to close
        event->ignore();
        return;
    }
    showStatus({});
    desktop::rememberWindow(*this);
    event->accept();
    endProgram();
}

void MDIMain::showStatus(const QString& word) {
    stsBar->Panels(1).setText(word);
}

void MDIMain::showDone(const QString& text, const QString& file) {
    stsBar->showDone(text, file);
}

void MDIMain::showHelp(int command, int context) {
    const Busy opening;
    CommonDialog1.HelpFile = homeDirectory() + u"/GWL HELP 2.1.HLP";
    CommonDialog1.HelpCommand = command;
    CommonDialog1.HelpContext = context;
    CommonDialog1.ShowHelp();
}
