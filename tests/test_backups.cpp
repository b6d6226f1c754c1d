// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/backup.h"
#include "core/frmBackups.h"
#include "core/restart.h"
#include "platform/ado/restore.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

namespace {
struct BackupsTest : SurveyTest {
    static frmBackups& form() { return show<frmBackups>(); }
    static const forms::ListView& list() { return *control<forms::ListView>(form(), "lsvCopies"); }
    /// Makes a copy, a minute after the last one.
    void backUp() {
        now = now.addSecs(60);
        press(form(), "cmdBackUp");
    }
    /// The customers that the copies hold; the newest copy first.
    static QStringList customersInCopies() {
        QStringList found;
        for (const QString& path : listBackups(strDatabasePath)) {
            ado::Connection copy;
            copy.OpenReadOnly(path, storePassword());
            found << ado::Recordset(u"select count(*) from customer"_s, copy).FieldAt(0).Text();
        }
        return found;
    }
    void expectQuestion(const QString& end = {}, Answer answer = Answer::Yes) {
        messages.expectTitled(
            u"Go back to the copy of %1? What has been saved since is not in it. The present "
            "store is copied before. Then the program ends and starts again."_s.arg(
                list().Text(list().SelectedRows().front())) +
                end,
            style::yesNo + style::critical + style::secondButton, answer);
    }
    /// Restores the chosen copy; the program has then been started again.
    void restore(int expectedStarts) {
        press(form(), "cmdRestore");
        EXPECT_EQ(messages.left(), 0);
        startAgainIfWanted();
        EXPECT_EQ(starts, expectedStarts);
        if (!cnnMain)
            toOpenConnection();
    }

    int starts = 0;
    QDateTime now{{2024, 3, 5}, {10, 0}};
    Replaced<forms::nowHook> clock{[this] { return now; }};
    Replaced<endHook> ending{[] {}};
    Replaced<startHook> starting{[this] { return ++starts > 0; }};
};

TEST_F(BackupsTest, goesBackToTheOldestCopyAndStartsAgain) {
    if (!cnnMain->IsFile())
        GTEST_SKIP();
    backUp();
    const QStringList before = storeRows(*cnnMain);
    for (int i = 1; i < 10; ++i) { // all that are kept
        addCustomer(u"C%1"_s.arg(i));
        backUp();
    }
    run(u"insert into protocol values ('2024-03-05T10:30:00', 'Respondent 7 erased: all')"_s);
    EXPECT_EQ(list().ListCount(), 10);
    ::clickRow(list(), 9);
    const QString erasures = u"\r\n\r\nPersons erased since then: 1. They come back and have to be erased "
                             "again; the folder protocols has their numbers."_s;
    expectQuestion(erasures, Answer::No);
    restore(0);
    EXPECT_EQ(listed(list()).at(9), u"05/03/2024 10:01:00|0.3 MB|good|Tallywell-2024-03-05-100100-1.mdb"_s);
    expectQuestion(erasures);
    restore(1);
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_EQ(customersInCopies().first(), u"10"_s); // of the moment before
    EXPECT_EQ(QDir(home()).entryList({u"*.restore"_s}), QStringList());
}

TEST_F(BackupsTest, staysWithTheStoreWhenThatFails) {
    if (!cnnMain->IsFile())
        GTEST_SKIP();
    backUp();
    addCustomer(u"New"_s);
    const QStringList before = storeRows(*cnnMain);
    ado::Connection reader; // the copy before can be made, the store cannot be replaced
    reader.ConnectionString = connectionText();
    reader.Open();
    {
        const ado::Recordset reading(u"select * from respondent"_s, reader);
        expectQuestion();
        messages.expectCritical(
            u"The database is in use by another program. Close that program and try again."_s);
        restore(0);
    }
    EXPECT_EQ(storeRows(*cnnMain), before);
}

TEST_F(BackupsTest, aCancelledCopyOrReturnLeavesAllAsItWas) {
    if (!cnnMain->IsFile())
        GTEST_SKIP();
    run(u"insert into protocol with recursive n(i) as (select 1 union all select i + 1 from n where i < 16) "
        "select '2024', hex(zeroblob(600000)) from n"_s); // several steps
    backUp();
    addCustomer(u"New"_s);
    const QStringList before = storeRows(*cnnMain);
    const QStringList copies = listBackups(strDatabasePath);
    EXPECT_FALSE(copyStore(*cnnMain, strDatabasePath, [](const QString&) { return false; }));
    EXPECT_EQ(QFileInfo(copies.first()).dir().entryList(QDir::Files).size(), copies.size());
    addCustomer(u"Newer"_s); // the store is not locked
    run(u"delete from customer where custname='Newer'"_s);
    cnnMain->Close();
    EXPECT_FALSE(ado::restoreStore(strDatabasePath, copies.first(), [] { return false; }));
    toOpenConnection();
    EXPECT_EQ(storeRows(*cnnMain), before);
}

TEST_F(BackupsTest, checksCopies) {
    for (int i = 0; i < 3; ++i)
        backUp();
    const QStringList paths = listBackups(strDatabasePath);
    writeFile(paths[0], "no database at all");
    QByteArray content = contentOf(paths[1]);
    writeFile(paths[1], content.fill('x', 20'000).append(contentOf(paths[1]).sliced(20'000)));
    const QStringList expected{u"damaged"_s, u"damaged"_s, u"good"_s};
    for (int row = 0; row < 3; ++row) {
        ::clickRow(list(), row);
        press(form(), "cmdCheck");
        EXPECT_EQ(list().Text(row, 2), expected[row]) << row;
    }
    ::clickRow(list(), 0);
    if (cnnMain->IsFile()) {
        messages.expectCritical(u"This copy cannot be used: damaged."_s);
        restore(0);
    } else {
        EXPECT_FALSE(control<QPushButton>(form(), "cmdRestore")->isEnabled());
        EXPECT_TRUE(control<QLabel>(form(), "lblServer")->isVisible());
    }
}

TEST_F(BackupsTest, takesTheCopyInPlaceOfADamagedStore) {
    if (!cnnMain->IsFile())
        GTEST_SKIP();
    backUp();
    const QStringList before = storeRows(*cnnMain);
    cnnMain.reset();
    QByteArray content = contentOf(strDatabasePath);
    writeFile(strDatabasePath, content.replace(4096, 60'000, QByteArray(60'000, 'x')));
    toOpenConnection();
    expectQuestion();
    messages.expectTitledBeginning(u"The present store is damaged and cannot be copied."_s,
                                   style::yesNo + style::critical + style::secondButton, Answer::Yes);
    restore(1);
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_EQ(contentOf(home() + u"/backup/damaged-2024-03-05-100100.mdb"), content);
    EXPECT_EQ(QFile::permissions(strDatabasePath) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}
} // namespace
