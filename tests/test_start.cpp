// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "core/frmSplash.h"
#include "platform/ado/datasources.h"
#include "platform/forms/commondialog.h"
#include "reference/frmCustomer.h"
#include "tests/support/storetest.h"

#include <QDir>
#include <QFile>
#include <QTimer>

using namespace Qt::StringLiterals;
using forms::Answer;

namespace {

class StartTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        forms::openFileSeat = [this](const forms::CommonDialog& dialog) {
            askedWith = dialog.Filter;
            return located;
        };
    }
    void removeStore() { ASSERT_TRUE(QFile::rename(path(u"Tallywell.mdb"_s), path(u"moved.mdb"_s))); }
    void expectNotFound(Answer answer) {
        messages.expect(u"Database not found in the current directory,...Locate the database to connect"_s, 1,
                        u"Brackwell"_s, answer);
    }
    QString located;
    QString askedWith;
    QString found;
};

TEST_F(StartTest, theStoreBesideTheProgramWinsOverAnOlderDataSource) {
    ado::SQLConfigDataSource(4, u"d"_s, u"DSN=gwl"_s + QChar(0) + u"DBQ=/nowhere/other.mdb");
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found));
    EXPECT_EQ(found, path(u"Tallywell.mdb"_s));
    EXPECT_EQ(ado::dataSourcePath(u"gwl"_s), found);
}

TEST_F(StartTest, withoutAStoreOneIsLocatedOrTheProgramEnds) {
    removeStore();
    expectNotFound(Answer::Cancel);
    EXPECT_FALSE(toCreateDSN(u"gwl"_s, found));
    expectNotFound(Answer::Ok);
    messages.expect(u"Must choose the database"_s);
    EXPECT_FALSE(toCreateDSN(u"gwl"_s, found));
    EXPECT_EQ(forms::qtFilter(askedWith), u"All Files (Tallywell.mdb);;Mdb Files (Tallywell.mdb)"_s);
    located = path(u"moved.mdb"_s);
    expectNotFound(Answer::Ok);
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found));
    EXPECT_EQ(found, located);
    EXPECT_EQ(homeDirectory(), home());
    toOpenConnection();
    EXPECT_EQ(cnnMain->State(), 1);
}

TEST_F(StartTest, aRegistryThatCannotBeWrittenIsToldOnlyOfALocatedStore) {
    QDir(path(u"config"_s)).removeRecursively(); // a file where the registry's folder should be
    ASSERT_TRUE(QFile(path(u"config"_s)).open(QIODevice::WriteOnly));
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found)) << "silent: the connection tells it";
    messages.expect(u"Error :-1907\r\nData source name 'gwl' not found."_s);
    toOpenConnection();
    EXPECT_EQ(cnnMain->State(), 0);
    removeStore();
    located = path(u"moved.mdb"_s);
    expectNotFound(Answer::Ok);
    messages.expect(u"DSN Creation Failed"_s);
    EXPECT_TRUE(toCreateDSN(u"gwl"_s, found)) << "the program goes on";
}

TEST_F(StartTest, aStoreThatIsNoDatabaseIsReportedByEachProcedureAndTheProgramLivesOn) {
    cnnMain->Close();
    QFile store(path(u"Tallywell.mdb"_s));
    ASSERT_TRUE(store.open(QIODevice::WriteOnly | QIODevice::Truncate));
    store.write(QByteArray(4096, '?'));
    store.close();
    messages.expect(u"Error :26\r\nThe file is not a database."_s);
    toOpenConnection();
    for (int procedure = 0; procedure < 3; ++procedure) // load, customers, respondents
        messages.expect(u"Error :26\r\nThe file is not a database."_s);
    frmCustomer::instance().Show();
    EXPECT_EQ(messages.left(), 0);
    frmCustomer::unload();
    EXPECT_TRUE(MDIMain::isShown());
}

TEST_F(StartTest, aClosedConnectionIsOpenedSilentlyBeforeTheNextUse) {
    const int custid = addCustomer(u"Acme"_s);
    cnnMain->Close();
    EXPECT_EQ(toGetCustID(u"aCmE"_s), custid);
    EXPECT_EQ(toGetCustID(u"nobody"_s), 0);
    messages.expectBeginning(u"Error : -3100\r\nSyntax error in string"_s);
    EXPECT_EQ(toGetCustID(u"O'Hara"_s), 0) << "the name is not filtered here";
}

TEST_F(StartTest, timerAndFrameLeadOnFromTheSplashFormAndAKeyDoesNot) {
    strCompanyName = u"Larkmoor"_s;
    MDIMain::instance().hide();
    frmSplash::instance().Show();
    EXPECT_EQ(control<QLabel>(frmSplash::instance(), "lblCompanyName")->text(), strCompanyName);
    QTest::keyClick(&frmSplash::instance(), Qt::Key_A);
    EXPECT_EQ(frmSplash::loaded(), nullptr);
    EXPECT_FALSE(MDIMain::isShown());

    frmSplash::instance().Show();
    QTest::mouseClick(control<QFrame>(frmSplash::instance(), "Frame1"), Qt::LeftButton);
    EXPECT_EQ(frmSplash::loaded(), nullptr);
    EXPECT_TRUE(MDIMain::isShown());

    MDIMain::instance().hide();
    frmSplash::instance().Show();
    auto* timer = control<QTimer>(frmSplash::instance(), "Timer1");
    EXPECT_EQ(timer->interval(), 4000);
    timer->setInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([] { return MDIMain::isShown(); }));
    EXPECT_EQ(frmSplash::loaded(), nullptr);
}

} // namespace
