// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"

#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "core/frmAboutUs.h"
#include "core/menus.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmReading.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/desktop/opener.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "search/frmSearch.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmSelectSurvey.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QProxyStyle>
#include <QToolBar>
#include <QToolButton>

#include <map>

using namespace Qt::StringLiterals;

namespace {

MDIMain* mainWindow = nullptr;

QString text(const char* ascii) {
    return QString::fromLatin1(ascii);
}

/// The style of the desktop with a picture of ours for the menus that find no room: for its own each start
/// would look through Qt's plugins for image files.
class Style : public QProxyStyle {
public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        return icon == SP_ToolBarHorizontalExtensionButton ? picture(u"more"_s)
                                                           : QProxyStyle::standardIcon(icon, option, widget);
    }
};

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

MDIMain::MDIMain() : stsBar(new forms::StatusBar(this)), area(new QMdiArea(this)) {
    auto* style = new Style;
    style->setParent(qApp);
    QApplication::setStyle(style);
    setObjectName(u"MDIMain"_s);
    setWindowTitle(u"Gaugewell"_s);
    QApplication::setWindowIcon(picture(u"logo"_s));
    stsBar->setObjectName(u"stsBar"_s);
    setStatusBar(stsBar);
    setCentralWidget(area);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    forms::Form::setHost(area);
    makeMenus();
    makeToolbar();
    resize(1180, 660);
    desktop::restoreWindow(*this);
}

MDIMain::~MDIMain() {
    if (isVisible()) // ended without having been closed
        desktop::rememberWindow(*this);
    setMousePointer(forms::DefaultPointer);
    mainWindow = nullptr;
}

void MDIMain::makeMenus() {
    using enum MenuEntry::State;
    std::map<QString, QMenu*> menus;
    for (const MenuEntry& entry : menuEntries()) {
        QMenu* parent = *entry.parent ? menus.at(text(entry.parent)) : nullptr;
        if (entry.state == Menu || entry.state == HiddenMenu) {
            QMenu* menu =
                parent ? parent->addMenu(text(entry.caption)) : menuBar()->addMenu(text(entry.caption));
            menu->setObjectName(text(entry.name));
            menu->menuAction()->setVisible(entry.state == Menu);
            menus[text(entry.name)] = menu;
            continue;
        }
        auto* action = new QAction(text(entry.caption), this);
        action->setObjectName(text(entry.name));
        action->setShortcut(QKeySequence(text(entry.shortcut)));
        action->setSeparator(entry.caption[0] == '-');
        action->setEnabled(entry.state == Open);
        action->setVisible(entry.state != Hidden);
        connect(action, &QAction::triggered, this, [this, name = text(entry.name)] { runEntry(name); });
        if (parent)
            parent->addAction(action);
        else
            menuBar()->addAction(action);
    }
}

void MDIMain::makeToolbar() {
    auto* tlbHold = addToolBar(u"Toolbar"_s);
    tlbHold->setObjectName(u"tlbHold"_s);
    tlbHold->setMovable(false);
    setContextMenuPolicy(Qt::NoContextMenu); // else the bar could be hidden for good
    const auto addButton = [&](const char* key, const char* toolTip, const char* pictureName) {
        auto* button = new QToolButton(tlbHold);
        button->setObjectName(text(key));
        button->setToolTip(text(toolTip));
        button->setAccessibleName(text(toolTip));
        button->setIcon(picture(text(pictureName)));
        tlbHold->addWidget(button);
        return button;
    };
    QToolButton* customer = addButton("Customer", "Open Form", "form");
    customer->setPopupMode(QToolButton::MenuButtonPopup);
    auto* menu = new QMenu(customer);
    for (const ButtonMenu& entry : customerButtonMenus()) {
        QAction* action = menu->addAction(text(entry.caption));
        action->setObjectName(u"tlb"_s + text(entry.key));
        action->setSeparator(entry.caption[0] == '-');
        action->setEnabled(entry.enabled);
        connect(action, &QAction::triggered, this, [this, key = text(entry.key)] { toolbarMenu(key); });
    }
    customer->setMenu(menu);
    connect(customer, &QToolButton::clicked, this,
            [this] { openForm(false, true, [this] { openCustomer(); }); });

    connect(addButton("Close", "Close Form", "close"), &QToolButton::clicked, this, [] {
        frmCustomer::unload();
        frmParameter::unload();
        frmFeedBackObj::unload();
        frmImprovementPlan::unload();
    });
    connect(addButton("terminate", "End Project", "terminate"), &QToolButton::clicked, this,
            [] { toEndProgram(); });
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

void MDIMain::openForm(bool withWord, bool clearsWord, const std::function<void()>& open) {
    setMousePointer(forms::Hourglass);
    if (withWord)
        toShowStatus(u"Opening Form..."_s);
    open();
    if (clearsWord)
        toShowStatus({});
    setMousePointer(forms::DefaultPointer);
}

void MDIMain::openCustomer() {
    frmCustomer& form = frmCustomer::instance();
    form.Show();
    if (form.txtCustomerDtls()->isVisible())
        form.txtCustomerDtls()->setFocus();
}

void MDIMain::openParameter() {
    frmParameter& form = frmParameter::instance();
    form.Show();
    form.toFocusParameter();
}

void MDIMain::runEntry(const QString& name) {
    if (name == u"mnuCusAndResp") {
        openForm(true, true, [this] {
            frmParameter::unload();
            openCustomer();
        });
    } else if (name == u"mnuPrameter") {
        openForm(true, true, [this] {
            frmCustomer::unload();
            openParameter();
        });
    } else if (name == u"mnuSettings") {
        openForm(false, false, [] { frmSetting::instance().Show(); });
    } else if (name == u"mnuExit") {
        close();
    } else if (name == u"mnuNewSurvey") {
        openForm(true, true, [] { frmSelectSurvey::instance().Show(); });
    } else if (name == u"mnuEmailSurveys") {
        openForm(true, true, [] { frmLogDetails::instance().Show(); });
    } else if (name == u"mnuReadMultipleFiles") {
        openForm(false, false, [] {
            blnExistingSurvey = false;
            frmReading::instance().Show();
        });
    } else if (name == u"mnuEditSurvey") {
        openForm(true, true, [] { frmEditExistingSurvey::instance().Show(); });
    } else if (name == u"mnuObjective") {
        openForm(true, true, [] {
            frmFeedBackObj& form = frmFeedBackObj::instance();
            form.Show();
            if (form.txtDtls()->isVisible())
                form.txtDtls()->setFocus();
        });
    } else if (name == u"mnuSurveyResponseAnalysis") {
        openForm(true, true, [] { frmDateToDate::instance().Show(); });
    } else if (name == u"mnuSatisfactionOverviewAnalysis") {
        openForm(true, true, [] { frmDtoDSatisfactionOverview::instance().Show(); });
    } else if (name == u"mnuImprovementPlanAnalysis") {
        openForm(false, false, [] { frmDtoDActionPlan::instance().Show(); });
    } else if (name == u"mnuSatisfactionIndex") {
        openForm(true, true, [] { frmSatisfactionIndex::instance().Show(); });
    } else if (name == u"mnuPerformanceMatrix") {
        openForm(true, true, [] { frmPerformanceMatrix::instance().Show(); });
    } else if (name == u"mnuImprovementPlan") {
        openForm(true, true, [] { frmImprovementPlan::instance().Show(); });
    } else if (name == u"mnuSearch") {
        openForm(true, true, [] { frmSearch::instance().Show(); });
    } else if (name == u"mnuGettingStarted") {
        mnuGettingStarted();
    } else if (name == u"mnuGWLHelp") {
        showHelp(11, 0);
    } else if (name == u"mnuAbout") {
        openForm(false, false, [] { frmAboutUs::instance().Show(); });
    } else {
        popupEntry(name);
    }
}

void MDIMain::PopupMenu(const QPoint& globalPosition) {
    findChild<QMenu*>(u"mnuEdit"_s)->popup(globalPosition);
}

void MDIMain::showHit(const SearchHit& hit) {
    hitOnShow = hit;
    if (hit.isAction)
        frmImprovementPlan::instance().Show();
    else
        frmFeedBackObj::instance().Show();
}

void MDIMain::popupEntry(const QString& name) {
    frmImprovementPlan& form = frmImprovementPlan::instance();
    if (name == u"mnuDelete") {
        if (forms::msgBox(u"Do you want to delete"_s, forms::style::yesNo + forms::style::secondButton,
                          u"Gaugewell v2.1"_s) == forms::Answer::Yes) {
            form.toDeleteActionForSelectedCustomer();
            form.toFillListView();
        }
    } else if (name == u"mnucomplete") {
        form.intStatus = 1;
        form.toupdateStatus();
    } else if (name == u"mnunotcomplete") {
        form.intStatus = 2;
        form.toupdateStatus();
    }
}

void MDIMain::toolbarMenu(const QString& key) {
    openForm(true, true, [&] {
        if (key == u"Customer")
            openCustomer();
        else if (key == u"Parameter")
            openParameter();
        else if (key == u"ObjAndDesc")
            frmFeedBackObj::instance().Show();
        else if (key == u"Improvement")
            frmImprovementPlan::instance().Show();
    });
}

void MDIMain::mnuGettingStarted() {
    constexpr int smallestSuccess = 33;
    const QString show = homeDirectory() + u"/gettingstarted.pps";
    if (desktop::openFile(show) < smallestSuccess)
        forms::msgBox(u"Error running "_s + show +
                          u"...\r\nPlease ensure that you have MS PowerPoint installed.",
                      forms::style::information, u"Gaugwell"_s);
}

void MDIMain::closeEvent(QCloseEvent* event) {
    toShowStatus({});
    area->closeAllSubWindows();
    if (area->currentSubWindow()) { // a form refused to close
        event->ignore();
        return;
    }
    toShowStatus({});
    desktop::rememberWindow(*this);
    event->accept();
    toEndProgram();
}

void MDIMain::showStatus(const QString& word) {
    stsBar->Panels(1).setText(word);
}

void MDIMain::showHelp(int command, int context) {
    setMousePointer(forms::Hourglass);
    CommonDialog1.HelpFile = homeDirectory() + u"/GWL HELP 2.1.HLP";
    CommonDialog1.HelpCommand = command;
    CommonDialog1.HelpContext = context;
    CommonDialog1.ShowHelp();
    setMousePointer(forms::DefaultPointer);
}
