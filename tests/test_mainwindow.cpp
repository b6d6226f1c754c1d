// SPDX-License-Identifier: GPL-3.0-or-later
// Starting, the main window with its help, and ending.
#include "core/Main.h"
#include "core/base/busy.h"
#include "core/frmSplash.h"
#include "core/onehome.h"
#include "core/store/transaction.h"
#include "platform/ado/datasources.h"
#include "platform/desktop/helpwindow.h"
#include "platform/desktop/opener.h"
#include "platform/desktop/windowstate.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/files.h"
#include "tests/support/storetest.h"

#include <QStyle>
#include <QSysInfo>
#include <sys/stat.h>

namespace {
struct MainWindowTest : StoreTest {
    void removeStore() { ASSERT_TRUE(QFile::rename(path(u"Tallywell.mdb"_s), path(u"moved.mdb"_s))); }
    /// Whether the program goes on when it has found no store and the user answers so.
    bool locate(Answer answer, const QString& message = {}) {
        messages.expect(u"Database not found in the current directory,...Locate the database to connect"_s,
                        style::okCancel, u"Brackwell"_s, answer);
        if (!message.isEmpty())
            messages.expect(message);
        return toCreateDSN(u"gwl"_s, found);
    }

    QString found;
};

TEST_F(MainWindowTest, theStoreInTheHomeIsUsedElseOneIsLocatedOrTheProgramEnds) {
    ado::SQLConfigDataSource(4, u"d"_s, u"DSN=gwl"_s + QChar(0) + u"DBQ=/nowhere/other.mdb");
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found));
    EXPECT_EQ(ado::dataSource(u"gwl"_s).value(u"DBQ"_s), path(u"Tallywell.mdb"_s));
    removeStore();
    EXPECT_FALSE(locate(Answer::Cancel));
    EXPECT_FALSE(locate(Answer::Ok, u"Must choose the database"_s));
    picked = path(u"moved.mdb"_s);
    EXPECT_TRUE(locate(Answer::Ok));
    EXPECT_EQ(found, picked);
    toOpenConnection();
    EXPECT_EQ(cnnMain->State(), ado::StateOpen);
}

TEST_F(MainWindowTest, aRunningProgramKeepsItsStoreWhenAnotherOneRegisters) {
    writeFile(ado::dataSourceRegistry(), "[gwl]\nDBQ=/nowhere/other.mdb\n");
    cnnMain->Close();
    reconnect();
    EXPECT_EQ(cnnMain->State(), ado::StateOpen);
}

TEST_F(MainWindowTest, theOrganisationsNameIsReadFromAFileAndOnlyItsFirstLine) {
    const std::pair<QByteArray, QString> contents[] = {
        {"\xEF\xBB\xBF Larkm\xC3\xB6r \r\nsecond", u"Larkmör"_s},
        {QByteArray(100000, 'x'), QString(255, u'x')}};
    const QString file = path(u"company.txt"_s);
    EXPECT_EQ(readCompanyName(), QString());
    for (const auto& [content, name] : contents) {
        writeFile(file, content);
        EXPECT_EQ(readCompanyName(), name);
    }
    QFile::remove(file);
    ASSERT_EQ(mkfifo(qPrintable(file), 0600), 0); // reading it would block
    EXPECT_EQ(readCompanyName(), QString());
}

TEST_F(MainWindowTest, aSecondProgramInAHomeBringsTheFirstToTheFrontOrReportsWhereItRuns) {
    const QString lock = path(u"gaugewell.lock"_s);
    const auto start = [this] {
        desktop::FolderClaim claim(home());
        return claimHome(claim);
    };
    {
        desktop::FolderClaim first(home());
        ASSERT_TRUE(claimHome(first));
        MDIMain::instance().showMinimized();
        EXPECT_FALSE(start());
        EXPECT_FALSE(MDIMain::instance().isMinimized());
    }
    EXPECT_TRUE(start()) << "the first has ended";
    const QString here = QSysInfo::machineHostName();
    const QString where = u"Gaugewell already runs in the folder '"_s + home() + u"' on the computer '"_s;
    writeFile(lock, "2147483646\ngaugewell\n" + here.toUtf8() + "\n\n\n");
    EXPECT_TRUE(start()) << "it has died";
    {
        QLockFile silent(lock);
        ASSERT_TRUE(silent.tryLock(0));
        messages.expect(where + here + u"' (process "_s +
                            QString::number(QCoreApplication::applicationPid()) +
                            u") and does not answer. End it there before you start it again.",
                        style::critical);
        EXPECT_FALSE(start());
    }
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        writeFile(lock, "1\ngaugewell\nelsewhere\nmachine\nboot\n");
        messages.expect(where +
                            u"elsewhere'. Two programs in one folder can lose what the other one writes.\r\n"
                            "Has it ended there, and is this one to start?"_s,
                        4 + 256, {}, answer);
        EXPECT_EQ(start(), answer == Answer::Yes);
    }
}

TEST_F(MainWindowTest, anUnwritableRegistryIsReportedOnlyForALocatedStore) {
    QDir(path(u"config"_s)).removeRecursively(); // a file where the registry's folder should be
    writeFile(path(u"config"_s), {});
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found)) << "silent: the connection reports it";
    messages.expect(u"Error :-1907\r\nData source name 'gwl' not found."_s);
    toOpenConnection();
    EXPECT_EQ(cnnMain->State(), ado::StateClosed);
    removeStore();
    picked = path(u"moved.mdb"_s);
    EXPECT_TRUE(locate(Answer::Ok, u"DSN Creation Failed"_s)) << "the program continues";
}

TEST_F(MainWindowTest, theTimerClosesTheSplashForm) {
    MDIMain::instance().hide();
    frmSplash& splash = frmSplash::instance();
    control<QTimer>(splash, "Timer1")->setInterval(1);
    splash.showWhile(u"Updating the database..."_s, [] { QTest::qWait(20); }); // as while it shows a message
    EXPECT_FALSE(MDIMain::isShown());
    splash.Show();
    EXPECT_TRUE(QTest::qWaitFor([] { return MDIMain::isShown(); }));
    EXPECT_EQ(frmSplash::loaded(), nullptr);
}

TEST_F(MainWindowTest, theTwoCataloguesExcludeEachOtherAndCloseEndsTheFormsOfTheToolbar) {
    shortcut(Qt::Key_U);
    shortcut(Qt::Key_P);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    press(MDIMain::instance(), "Customer");
    EXPECT_NE(frmParameter::loaded(), nullptr) << "the toolbar does not exclude";
    shortcut(Qt::Key_N);
    press(MDIMain::instance(), "Close");
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    EXPECT_EQ(frmParameter::loaded(), nullptr);
    EXPECT_NE(frmSelectSurvey::loaded(), nullptr) << "not one of its forms";
    expectIdle();
}

TEST_F(MainWindowTest, aShortcutPrecedesTheEditingKeysOfATextBox) {
    shortcut(Qt::Key_P);
    QAction command(&MDIMain::instance());
    command.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_A)); // selects all in a text box
    QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_A, Qt::ControlModifier);
    asked.ignore(); // sent before shortcuts are tried; if accepted, the key edits
    QCoreApplication::sendEvent(frmParameter::instance().txtParameterDtls(), &asked);
    EXPECT_FALSE(asked.isAccepted());
}

/// Runs a function in an event handler.
struct Step : QObject {
    explicit Step(std::function<void()> toRun) : run(std::move(toRun)) {}
    bool event(QEvent* happened) override {
        run();
        return QObject::event(happened);
    }
    void deliver() {
        QEvent happened(QEvent::User);
        QCoreApplication::sendEvent(this, &happened);
    }
    std::function<void()> run;
};

TEST_F(MainWindowTest, aFailureThatLeavesAHandlerIsShownAndTheProgramContinues) {
    Step fails([] {
        const Busy form(frmCustomer::instance(), u"Opening Form..."_s);
        const Busy window;
        throw Failure::ofSubscript();
    });
    const auto expectShown = [&] { messages.expect(u"Subscript out of range"_s, style::critical); };
    expectShown();
    fails.deliver();
    expectIdle();
    Step nested([&] { // in a nested event loop, as of a dialog
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] { fails.run(); });
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
        run(u"delete * from customer where custid=0"_s); // the handler continues
    });
    expectShown();
    nested.deliver();
    expectIdle();
    Step holder([&] { // the transaction ends before the message
        const Transaction transaction;
        fails.deliver();
        ADD_FAILURE() << "the exception has not reached the holder";
    });
    expectShown();
    holder.deliver();
    expectIdle();
    const Replaced<forms::messageHook> again([&](const forms::Message&) {
        fails.deliver(); // the window behind the message fails again
        return Answer::Ok;
    });
    fails.deliver();
}

TEST_F(MainWindowTest, sizePositionAndMaximisedStateAreRestoredOnScreen) {
    const Replaced<endHook> stays([] {});
    const auto reopenWindow = [] {
        MDIMain::destroy();
        MDIMain::instance().show();
    };
    const QRect chosen(40, 50, 610, 420);
    MDIMain::instance().setGeometry(chosen);
    MDIMain::instance().showMaximized();
    MDIMain::instance().close();
    reopenWindow();
    EXPECT_TRUE(MDIMain::instance().isMaximized());
    EXPECT_EQ(MDIMain::instance().normalGeometry(), chosen);
    MDIMain::instance().showNormal();
    const auto isInSight = [](const QWidget& window) {
        return window.screen()->geometry().contains(
            window.geometry().adjusted(0, -window.style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0));
    };
    for (const QRect& lost :
         {chosen.translated(9000, 9000), chosen.translated(-600, -60), QRect(0, 0, 5000, 4000)}) {
        MDIMain::instance().setGeometry(lost);
        reopenWindow();
        EXPECT_TRUE(isInSight(MDIMain::instance())) << lost.x();
    }
    QWidget neverRemembered;
    neverRemembered.resize(5000, 4000);
    desktop::restoreWindow(neverRemembered);
    EXPECT_LT(neverRemembered.height(), neverRemembered.screen()->geometry().height());
}

TEST_F(MainWindowTest, theHelpWindowShowsTheTopic) {
    const QString file = QStringLiteral(GAUGEWELL_SOURCE "/home/GWL HELP 2.1.HLP");
    EXPECT_FALSE(desktop::HelpWindow::show(home() + u"/none.hlp", 1));
    ASSERT_TRUE(desktop::HelpWindow::show(file, 11));
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow()->objectName() == u"HelpWindow"; }));
    QWidget* window = QApplication::activeWindow();
    auto* contents = window->findChild<QListWidget*>();
    EXPECT_EQ(contents->currentItem()->text(), u"Satisfaction Index"_s);
    auto* sought = window->findChild<QLineEdit*>();
    const auto answerTo = [&](const QString& word) {
        sought->setText(word);
        QTest::keyClick(sought, Qt::Key_Return);
        return control<QLabel>(*window, "found")->text();
    };
    EXPECT_EQ(answerTo(u"no such word"_s), u"\u201cno such word\u201d is not in the help"_s);
    EXPECT_EQ(answerTo(u"sha-256"_s), u"1 of 1, in Readings"_s);
    EXPECT_EQ(contents->currentItem()->text(), u"Readings"_s) << "the contents follow the text";
    window->close();
}

TEST_F(MainWindowTest, aPresentationThatCannotBeOpenedIsReported) {
    const QString show = path(u"gettingstarted.pps"_s);
    const Replaced<desktop::openFileHook> opens([](const QString&) { return desktop::SmallestSuccess - 1; });
    messages.expect(u"Error running "_s + show +
                        u"...\r\nPlease ensure that you have MS PowerPoint installed.",
                    style::information, u"Gaugwell"_s);
    control<QAction>(MDIMain::instance(), "mnuGettingStarted")->trigger();
}
} // namespace
