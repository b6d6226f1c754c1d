// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSatisfactionIndex.h"
#include "core/MDIMain.h"
#include "core/frmAboutUs.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/desktop/helpwindow.h"
#include "platform/desktop/opener.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/storetest.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

class MainWindowTest : public StoreTest {
protected:
    static QAction* entry(const char* name) {
        auto* action = MDIMain::instance().findChild<QAction*>(QLatin1StringView(name));
        auto* menu = MDIMain::instance().findChild<QMenu*>(QLatin1StringView(name));
        EXPECT_TRUE(action || menu) << name;
        return action ? action : menu->menuAction();
    }
    static void shortcut(Qt::Key pressed) {
        QWidget* target = QApplication::focusWidget();
        QTest::keyClick(target ? target : &MDIMain::instance(), pressed, Qt::ControlModifier);
    }
};

TEST_F(MainWindowTest, entriesStandWithCaptionShortcutAndPlace) {
    struct Row {
        const char* name;
        const char* caption;
        const char* shortcut;
        const char* parent;
        bool enabled;
        bool visible;
    };
    const Row table[] = {
        {"mnuCusAndResp", "&Customer And Respondent", "Ctrl+U", "mnuFile", true, true},
        {"mnuPrameter", "&Parameter", "Ctrl+P", "mnuFile", true, true},
        {"mnuSettings", "&Settings", "", "mnuFile", true, true},
        {"mnuExit", "E&xit", "Ctrl+Q", "mnuFile", true, true},
        {"mnuNewSurvey", "&New Survey", "Ctrl+N", "mnuSurveyDefine", true, true},
        {"mnuEditSurvey", "&Edit Survey", "Ctrl+E", "mnuSurveyDefine", true, true},
        {"mnuEmailSurveys", "Email &Surveys", "Ctrl+M", "mnuSurveyDefine", true, true},
        {"mnuObjective", "&Survey", "Ctrl+O", "mnuFeedBack", true, true},
        {"mnuReadMultipleFiles", "&Read Multiple Files", "Ctrl+R", "mnuFeedBack", true, true},
        {"mnuSatisfactionOverviewAnalysis", "Satisfaction &Overview Analysis", "", "mnuAnalysis", true,
         false},
        {"mnuSurveyResponseAnalysis", "&Survey Response Analysis", "", "mnuAnalysis", true, true},
        {"mnuImprovementPlanAnalysis", "Improvement Plan &Analysis", "", "mnuAnalysis", true, true},
        {"mnuSatisfactionIndex", "Satisfaction &Index", "", "mnuAnalysis", true, true},
        {"mnuPerformanceMatrix", "&Performance Matrix", "", "mnuAnalysis", true, true},
        {"mnuGWLHelp", "&Contents", "F1", "mnuHelp", true, true},
        {"mnuAbout", "Abo&ut", "Ctrl+D", "mnuHelp", true, true},
        {"mnuDelete", "&Delete", "", "mnuEdit", true, true},
        {"mnucomplete", "Complete", "", "mnuUpdateStatus", true, true},
    };
    for (const Row& row : table) {
        const QAction* action = entry(row.name);
        EXPECT_EQ(action->text(), QLatin1StringView(row.caption));
        EXPECT_EQ(action->shortcut().toString(), QLatin1StringView(row.shortcut)) << row.name;
        EXPECT_EQ(action->isVisible(), row.visible) << row.name;
        EXPECT_TRUE(action->isEnabled() == row.enabled || !row.visible) << row.name;
        EXPECT_TRUE(entry(row.parent)->menu()->actions().contains(const_cast<QAction*>(action))) << row.name;
    }
    EXPECT_FALSE(entry("mnuEdit")->isVisible());
}

TEST_F(MainWindowTest, shortcutsOpenFormsAndTheTwoCataloguesExcludeEachOther) {
    shortcut(Qt::Key_U);
    ASSERT_NE(frmCustomer::loaded(), nullptr);
    EXPECT_TRUE(frmCustomer::instance().txtCustomerDtls()->hasFocus());
    shortcut(Qt::Key_P);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    ASSERT_NE(frmParameter::loaded(), nullptr);
    EXPECT_TRUE(frmParameter::instance().txtParameterDtls()->hasFocus());
    press(MDIMain::instance(), "Customer");
    EXPECT_NE(frmCustomer::loaded(), nullptr);
    EXPECT_NE(frmParameter::loaded(), nullptr) << "the toolbar does not exclude";
    shortcut(Qt::Key_O);
    shortcut(Qt::Key_N);
    EXPECT_NE(frmSelectSurvey::loaded(), nullptr);
    press(MDIMain::instance(), "Close");
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    EXPECT_EQ(frmParameter::loaded(), nullptr);
    EXPECT_EQ(frmFeedBackObj::loaded(), nullptr);
    EXPECT_NE(frmSelectSurvey::loaded(), nullptr) << "not one of its forms";
    EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), u""_s);
    shortcut(Qt::Key_D);
    ASSERT_NE(frmAboutUs::loaded(), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(frmAboutUs::loaded(), nullptr);
}

TEST_F(MainWindowTest, aShortcutGoesBeforeTheEditingKeysOfATextBox) {
    frmParameter::instance().Show();
    frmParameter::instance().toFocusParameter();
    QLineEdit* box = frmParameter::instance().txtParameterDtls();
    type(u"Price"_s);
    const auto boxTakesSelectAll = [&] {
        QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_A, Qt::ControlModifier);
        asked.ignore(); // asked before a shortcut is looked for: accepted, the key edits
        QCoreApplication::sendEvent(box, &asked);
        return asked.isAccepted();
    };
    EXPECT_TRUE(boxTakesSelectAll());
    QAction command(&MDIMain::instance());
    command.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_A));
    EXPECT_FALSE(boxTakesSelectAll());
    shortcut(Qt::Key_U);
    EXPECT_NE(frmCustomer::loaded(), nullptr);
}

TEST_F(MainWindowTest, theToolbarsDropDownOpensItsForms) {
    const auto choose = [](const char* name) { control<QAction>(MDIMain::instance(), name)->trigger(); };
    choose("tlbParameter");
    EXPECT_NE(frmParameter::loaded(), nullptr);
    choose("tlbQuestion");
    EXPECT_EQ(frmSelectSurvey::loaded(), nullptr);
    choose("tlbObjAndDesc");
    EXPECT_NE(frmFeedBackObj::loaded(), nullptr);
}

TEST_F(MainWindowTest, leavingClosesTheConnectionAndEndsTheProgram) {
    int ended = 0;
    const auto before = std::exchange(endSeat, [&] { ++ended; });
    frmCustomer::instance().Show();
    shortcut(Qt::Key_Q);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(cnnMain, nullptr);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    EXPECT_FALSE(MDIMain::isShown());
    toOpenConnection();
    MDIMain::instance().show();
    press(MDIMain::instance(), "terminate");
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(cnnMain, nullptr);
    endSeat = before;
}

TEST_F(MainWindowTest, itsSizePlaceAndMaximisedStateComeBackAndNeverOutOfSight) {
    const auto before = std::exchange(endSeat, [] {});
    const auto again = [] {
        MDIMain::destroy();
        MDIMain::instance().show();
    };
    const QRect chosen(40, 50, 610, 420);
    MDIMain::instance().setGeometry(chosen);
    again();
    EXPECT_EQ(MDIMain::instance().geometry(), chosen);
    MDIMain::instance().showMaximized();
    shortcut(Qt::Key_Q);
    again();
    EXPECT_TRUE(MDIMain::instance().isMaximized());
    EXPECT_EQ(MDIMain::instance().normalGeometry(), chosen);
    MDIMain::instance().showNormal();
    MDIMain::instance().setGeometry(chosen.translated(9000, 9000));
    again();
    EXPECT_TRUE(MDIMain::instance().screen()->geometry().contains(MDIMain::instance().geometry()));
    endSeat = before;
}

TEST_F(MainWindowTest, helpGoesToTheFormsTopicAndTheMenuToTheBeginning) {
    QList<std::pair<int, int>> asked;
    forms::helpSeat = [&](const forms::CommonDialog& dialog) {
        EXPECT_EQ(dialog.HelpFile, home() + u"/GWL HELP 2.1.HLP"_s);
        asked << std::pair(dialog.HelpCommand, dialog.HelpContext);
    };
    entry("mnuGWLHelp")->trigger();
    frmCustomer::instance().Show();
    press(frmCustomer::instance(), "cmdHelp");
    frmParameter::instance().Show();
    press(frmParameter::instance(), "cmdHelp");
    EXPECT_EQ(asked, (QList<std::pair<int, int>>{{11, 0}, {1, 1}, {1, 2}}));
}

TEST_F(MainWindowTest, theHelpWindowShowsTheTopicAndFinds) {
    const QString file = QStringLiteral(GAUGEWELL_SOURCE "/home/GWL HELP 2.1.HLP");
    EXPECT_FALSE(desktop::HelpWindow::show(home() + u"/none.hlp", 1));
    for (const auto& [context, title] :
         {std::pair(11, u"Satisfaction Index"_s), {1, u"Customer And Respondents"_s}}) {
        ASSERT_TRUE(desktop::HelpWindow::show(file, context));
        QWidget* window = nullptr;
        for (QWidget* candidate : QApplication::topLevelWidgets()) {
            if (candidate->objectName() == u"HelpWindow" && candidate->isVisible())
                window = candidate;
        }
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->findChild<QListWidget*>()->currentItem()->text(), title);
        auto* text = window->findChild<QTextBrowser*>();
        EXPECT_EQ(text->source().fragment(), u"c"_s + QString::number(context));
        EXPECT_TRUE(text->toPlainText().contains(title));
        if (context == 1)
            window->close();
    }
}

TEST_F(MainWindowTest, aPresentationThatCannotBeOpenedIsToldOf) {
    QString opened;
    const auto before = std::exchange(desktop::openFileSeat, [&](const QString& path) {
        opened = path;
        return opened.isEmpty() ? 42 : 32;
    });
    const QString show = home() + u"/gettingstarted.pps"_s;
    messages.expect(u"Error running "_s + show +
                        u"...\r\nPlease ensure that you have MS PowerPoint installed.",
                    64, u"Gaugwell"_s);
    entry("mnuGettingStarted")->trigger();
    EXPECT_EQ(opened, show);
    desktop::openFileSeat = [](const QString&) { return 33; };
    entry("mnuGettingStarted")->trigger();
    desktop::openFileSeat = before;
}

} // namespace
