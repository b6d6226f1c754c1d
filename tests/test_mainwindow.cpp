// SPDX-License-Identifier: GPL-3.0-or-later
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
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>

using namespace Qt::StringLiterals;

namespace {

class MainWindowTest : public StoreTest {
protected:
    static QAction* entry(const char* name) { return control<QAction>(MDIMain::instance(), name); }
};

TEST_F(MainWindowTest, shortcutsAndEntriesOpenTheirForms) {
    const std::pair<Qt::Key, const char*> shortcuts[] = {
        {Qt::Key_U, "frmCustomer"},   {Qt::Key_P, "frmParameter"},   {Qt::Key_N, "frmSelectSurvey"},
        {Qt::Key_M, "frmLogDetails"}, {Qt::Key_O, "frmFeedBackObj"}, {Qt::Key_R, "frmReading"}};
    for (const auto& [pressed, form] : shortcuts) {
        shortcut(pressed);
        EXPECT_EQ(activeForm(), QLatin1StringView(form));
    }
    const std::pair<const char*, const char*> entries[] = {
        {"mnuPerformanceMatrix", "frmPerformanceMatrix"},
        {"mnuImprovementPlan", "frmImprovementPlan"},
        {"mnuSearch", "frmSearch"},
        {"tlbCustomer", "frmCustomer"},
        {"tlbParameter", "frmParameter"},
        {"tlbObjAndDesc", "frmFeedBackObj"},
        {"tlbImprovement", "frmImprovementPlan"},
        {"tlbQuestion", "frmImprovementPlan"}}; // the last opens none
    for (const auto& [name, form] : entries) {
        entry(name)->trigger();
        EXPECT_EQ(activeForm(), QLatin1StringView(form)) << name;
    }
    EXPECT_FALSE(entry("mnuSatisfactionOverviewAnalysis")->isVisible());
    EXPECT_FALSE(control<QMenu>(MDIMain::instance(), "mnuEdit")->menuAction()->isVisible());
    shortcut(Qt::Key_D);
    ASSERT_NE(frmAboutUs::loaded(), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(frmAboutUs::loaded(), nullptr);
}

TEST_F(MainWindowTest, theTwoCataloguesExcludeEachOtherAndCloseEndsTheFormsOfTheToolbar) {
    shortcut(Qt::Key_U);
    EXPECT_TRUE(frmCustomer::instance().txtCustomerDtls()->hasFocus());
    shortcut(Qt::Key_P);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    EXPECT_TRUE(frmParameter::instance().txtParameterDtls()->hasFocus());
    press(MDIMain::instance(), "Customer");
    EXPECT_NE(frmCustomer::loaded(), nullptr);
    EXPECT_NE(frmParameter::loaded(), nullptr) << "the toolbar does not exclude";
    shortcut(Qt::Key_O);
    shortcut(Qt::Key_N);
    press(MDIMain::instance(), "Close");
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    EXPECT_EQ(frmParameter::loaded(), nullptr);
    EXPECT_EQ(frmFeedBackObj::loaded(), nullptr);
    EXPECT_NE(frmSelectSurvey::loaded(), nullptr) << "not one of its forms";
    expectAtRest();
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

TEST_F(MainWindowTest, leavingClosesTheConnectionAndEndsTheProgram) {
    int ended = 0;
    const auto before = std::exchange(endSeat, [&] { ++ended; });
    frmCustomer::instance().Show();
    MDIMain::instance().close();
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

QWidget* helpWindow() {
    for (QWidget* candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName() == u"HelpWindow" && candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

TEST_F(MainWindowTest, theHelpWindowShowsTheTopicAndFinds) {
    const QString file = QStringLiteral(GAUGEWELL_SOURCE "/home/GWL HELP 2.1.HLP");
    EXPECT_FALSE(desktop::HelpWindow::show(home() + u"/none.hlp", 1));
    for (const auto& [context, title] :
         {std::pair(11, u"Satisfaction Index"_s), {1, u"Customer And Respondents"_s}}) {
        ASSERT_TRUE(desktop::HelpWindow::show(file, context));
        QWidget* window = helpWindow();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->findChild<QListWidget*>()->currentItem()->text(), title);
        auto* text = window->findChild<QTextBrowser*>();
        EXPECT_EQ(text->source().fragment(), u"c"_s + QString::number(context));
        EXPECT_TRUE(text->toPlainText().contains(title));
        if (context == 1)
            window->close();
    }
}

TEST_F(MainWindowTest, aLinkOfTheHelpLeadsToItsTopicAndBackReturns) {
    ASSERT_TRUE(desktop::HelpWindow::show(QStringLiteral(GAUGEWELL_SOURCE "/home/GWL HELP 2.1.HLP"), 0));
    QWidget* window = helpWindow();
    ASSERT_NE(window, nullptr);
    auto* text = window->findChild<QTextBrowser*>();
    const int top = text->verticalScrollBar()->value();
    QTest::keyClick(text, Qt::Key_Tab); // to the first link
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(text->source().fragment(), u"c3"_s);
    EXPECT_GT(text->verticalScrollBar()->value(), top);
    window->findChild<QPushButton*>()->click(); // the first one is Back
    EXPECT_EQ(text->source().fragment(), u"c0"_s);
    window->close();
}

TEST_F(MainWindowTest, aPresentationThatCannotBeOpenedIsToldOf) {
    const QString show = path(u"gettingstarted.pps"_s);
    int answer = 32;
    const auto before = std::exchange(desktop::openFileSeat, [&](const QString& opened) {
        EXPECT_EQ(opened, show);
        return answer++;
    });
    messages.expect(u"Error running "_s + show +
                        u"...\r\nPlease ensure that you have MS PowerPoint installed.",
                    64, u"Gaugwell"_s);
    entry("mnuGettingStarted")->trigger();
    EXPECT_EQ(messages.left(), 0);
    entry("mnuGettingStarted")->trigger();
    desktop::openFileSeat = before;
}

} // namespace
