// SPDX-License-Identifier: GPL-3.0-or-later
// What leads a new user: the start page, the status bar, the company name, the list of windows.
#include "core/Main.h"
#include "core/frmCompanyName.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/desktop/opener.h"
#include "platform/excel/application.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "search/frmSearch.h"
#include "tests/support/files.h"
#include "tests/support/storetest.h"

#include <QToolButton>

namespace {
struct FirstHourTest : StoreTest {
    QWidget& page() { return *control<QWidget>(MDIMain::instance(), "startPage"); }
    bool waitForPage() {
        return QTest::qWaitFor([this] { return page().isVisible(); });
    }
    QStringList textsOf(const QString& name) {
        QStringList texts;
        for (const auto* button : page().findChildren<QToolButton*>(name))
            texts << button->text();
        return texts;
    }
    int ticks() {
        int done = 0;
        for (const auto* button : page().findChildren<QToolButton*>())
            done += button->accessibleName().endsWith(u", done") ? 1 : 0;
        return done;
    }
    QString done() { return MDIMain::instance().stsBar->Panels(2).Text().section(u' ', 0, -2); }
};

TEST_F(FirstHourTest, theStartPageTicksWhatIsDoneAndOpensWhatWasMadeLast) {
    ASSERT_TRUE(waitForPage());
    EXPECT_EQ(ticks(), 0);
    EXPECT_EQ(textsOf(u"survey"_s), QStringList());
    control<QToolButton>(page(), "step1")->click();
    ASSERT_NE(frmCustomer::loaded(), nullptr);
    EXPECT_FALSE(page().isVisible()) << "a form covers it";

    const int ann = addRespondent(addCustomer(u"Aldermere & Sons"_s), u"Ann"_s);
    const int question = addQuestion(addParameter(u"Delivery"_s), u"In time?"_s);
    const int survey = addSurvey(1, {2026, 3, 31});
    addQuestionnaire(ann, survey, {question});
    addSurvey(1, {2026, 6, 30});
    add(u"log"_s, {{"custname", u"Aldermere & Sons"_s}, {"respname", u"Ann"_s}, {"xlsfilename", u"1.xls"_s}});
    frmCustomer::unload();
    ASSERT_TRUE(waitForPage());
    EXPECT_EQ(ticks(), 4) << "no answers, no chart";
    EXPECT_EQ(textsOf(u"survey"_s),
              QStringList({u"30/06/2026  Aldermere && Sons"_s, u"31/03/2026  Aldermere && Sons"_s}));
    EXPECT_EQ(textsOf(u"file"_s), QStringList(u"1.xls  Ann"_s));
    messages.expect(u"The file \""_s + path(u"1.xls"_s) + u"\" was not found.");
    control<QToolButton>(page(), "file")->click();
    page().findChildren<QToolButton*>(u"survey"_s).last()->click();
    ASSERT_NE(frmFeedBackObj::loaded(), nullptr);
    EXPECT_EQ(control<forms::ListBox>(frmFeedBackObj::instance(), "lstSurveyDates")->Text(), u"31/03/2026"_s);
}

TEST_F(FirstHourTest, theStatusBarSaysWhatWasDoneAndOpensTheFolderOfAFile) {
    shortcut(Qt::Key_U);
    frmCustomer& form = frmCustomer::instance();
    auto* hint = control<QLabel>(form, "lblUnsaved");
    EXPECT_TRUE(hint->isVisible()) << "no customer is stored yet";
    QTest::keyClicks(control<QLineEdit>(form, "txtCustomerDtls"), u"Aldermere"_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(done(), u"1 customer saved"_s);
    EXPECT_FALSE(hint->isVisible());
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(done(), u"Nothing to save"_s);
    frmSearch& search = show<frmSearch>();
    control<QLineEdit>(search, "txtKeyword")->setText(u"nothing"_s);
    press(search, "cmdOK");
    EXPECT_EQ(done(), u"0 hits"_s);

    auto* folder = control<QToolButton>(MDIMain::instance(), "openFolder");
    EXPECT_FALSE(folder->isVisible());
    showDone(u"2611.xls written"_s, home() + u"/2611.xls");
    QString opened;
    const Replaced<desktop::openFileHook> opens([&](const QString& path) {
        opened = path;
        return desktop::SmallestSuccess - 1;
    });
    messages.expect(u"There is no program that opens the folder '"_s + home() + u"'.");
    folder->click();
    EXPECT_EQ(opened, home());

    const int width = MDIMain::instance().width();
    showStatus(QString(300, u'm'));
    showDone(QString(300, u'm'));
    QApplication::sendPostedEvents();
    EXPECT_EQ(MDIMain::instance().width(), width) << "a long name widens nothing";
    EXPECT_GT(MDIMain::instance().stsBar->Panels(1).width(), width / 3);
    showStatus({});
}

TEST_F(FirstHourTest, theCompanyNameIsKeptInItsFileOrInTheForm) {
    frmCompanyName& form = show<frmCompanyName>();
    auto* name = control<QLineEdit>(form, "txtName");
    name->clear();
    QTest::keyClicks(name, u" Larkmoor's "_s);
    ASSERT_TRUE(QDir().mkdir(path(u"company.txt"_s))); // a folder in the place of the file
    messages.expect(path(u"company.txt"_s) + u": Filename refers to a directory");
    QTest::keyClick(name, Qt::Key_Return);
    ASSERT_EQ(frmCompanyName::loaded(), &form) << "what was typed is not lost";
    QDir().rmdir(path(u"company.txt"_s));
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(frmCompanyName::loaded(), nullptr);
    EXPECT_EQ(readCompanyName(), u"Larkmoor’s"_s);
    EXPECT_EQ(strCompanyName, u"Larkmoor’s"_s);
    strCompanyName.clear();
}

TEST_F(FirstHourTest, theListOfWindowsAndTheKeysOfWindowsReachEachForm) {
    press(MDIMain::instance(), "Customer");
    frmParameter::instance().Show();
    auto* menu = control<QMenu>(MDIMain::instance(), "mnuWindows");
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_TRUE(menu->actions()[1]->isChecked());
    menu->actions()[0]->trigger();
    auto* area = MDIMain::instance().findChild<QMdiArea*>();
    const auto active = [&] { return area->activeSubWindow()->widget(); };
    EXPECT_EQ(active(), &frmCustomer::instance());
    QTest::keyClick(control<QLineEdit>(frmCustomer::instance(), "txtCustomerDtls"), Qt::Key_Tab,
                    Qt::ControlModifier);
    EXPECT_EQ(active(), &frmParameter::instance());
    QTest::keyClick(control<QLineEdit>(frmParameter::instance(), "txtParameterDtls"), Qt::Key_F4,
                    Qt::ControlModifier);
    EXPECT_EQ(frmParameter::loaded(), nullptr);
    EXPECT_EQ(active(), &frmCustomer::instance());
}

TEST_F(FirstHourTest, aFileOfATypeWithoutAProgramIsNotHandedOver) {
    const QString file = path(u"x.unknown"_s);
    EXPECT_EQ(desktop::openFile(file), desktop::NoSuchFile);
    writeFile(file, QByteArray(10, '\0'));
    EXPECT_EQ(desktop::openFile(file), desktop::NoProgram);
}
} // namespace
