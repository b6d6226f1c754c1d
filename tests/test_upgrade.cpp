// SPDX-License-Identifier: GPL-3.0-or-later
// Backups of the store. One of version 1 becomes one of version 2, with all its rows, or stays as it is.
#include "core/base/backup.h"
#include "core/storecheck.h"
#include "core/storeupgrade.h"
#include "platform/ado/store.h"
#include "tests/support/files.h"
#include "tests/support/killed.h"
#include "tests/support/storecompare.h"
#include "tests/support/storetest.h"

#include <sys/fsuid.h>
#include <sys/stat.h>

namespace {
struct BackupTest : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        addCustomer(u"Acme"_s);
        addParameter(u"Price"_s);
        ASSERT_TRUE(QDir(home()).mkpath(u"backup"_s)); // as made by an older version
    }
};

TEST_F(BackupTest, storeAndBackupsAreOwnerOnlyAndAnEmptyStoreIsNotCopied) {
    backUpBeforeLoss();
    for (const QString& file : QStringList{strDatabasePath, path(u"backup"_s)} + listBackups(strDatabasePath))
        EXPECT_FALSE(QFile::permissions(file) & QFileDevice::Permissions(0x0077)) << file;
    for (const char* table : {"parameter", "customer"}) {
        forgetBackup();
        backUpBeforeLoss();
        run(u"delete * from "_s + QLatin1StringView(table));
    }
    forgetBackup();
    backUpBeforeLoss();
    EXPECT_EQ(listBackups(strDatabasePath).size(), 3);
}

TEST_F(BackupTest, newestBackupsAreKeptDespiteClockChanges) {
    const QString withoutNumber = u"-2023-01-01-101500.mdb"_s, notOurs = u"-of my own.mdb"_s,
                  killedWhileCopied = u"-2024-01-01-101500-1.mdb.part"_s;
    for (const QString& name : {withoutNumber, notOurs, killedWhileCopied})
        ASSERT_TRUE(QFile::copy(strDatabasePath, path(u"backup/Tallywell"_s + name)));
    QStringList expected;
    for (const int year : {2024, 2024, 2094, 1970, 2024, 1970, 1970, 2024, 2024, 2024, 2094, 1970}) {
        const Replaced<forms::nowHook> clock([year] { return QDateTime({year, 3, 5}, {10, 15}); });
        addCustomer(u"Customer"_s);
        forgetBackup();
        backUpBeforeLoss();
        expected.prepend(
            path(u"backup/Tallywell-%1-03-05-101500-%2.mdb"_s).arg(year).arg(expected.size() + 1));
    }
    EXPECT_NE(forms::nowHook().date().year(), 1970) << "each clock is restored after its round";
    EXPECT_EQ(listBackups(strDatabasePath), expected.first(10));
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList(QDir::Files).size(), 11);
    EXPECT_TRUE(QFile::exists(path(u"backup/Tallywell"_s + notOurs)));
    ado::Connection copy;
    copy.OpenReadOnly(expected[1], u"kvtwpa"_s);
    EXPECT_EQ(storeRows(copy, u"customer"_s).size(), 12) << "Acme and eleven";
}

struct UpgradeTest : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        fresh = definitions();
        makeVersion1();
    }
    /// Puts a used database of version 1 into the home.
    void makeVersion1() {
        cnnMain->Close();
        const QByteArray script =
            contentOf(QStringLiteral(GAUGEWELL_SOURCE "/tests/data/schema1.sql")) +
            "drop index log_customer; create index log_customer on log (custname, respid, sdate);"
            "drop view scatter; create view scatter as select custname from objquery;"
            "insert into customer (custname) values ('Acme'), ('Caf\xC3\xA9');"
            "insert into parameter (parametername) values ('Delivery');"
            "insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage)"
            " values (1, 2, 3, '2024-03-05', 7, 8);"
            "insert into log (custname, xlsfilename, Status) values ('Acme', 'a.xls', -1);";
        ado::createStore(strDatabasePath, script, u"kvtwpa"_s);
        toOpenConnection();
        old = definitions();
        given = storeRows(*cnnMain);
        cnnMain->Close();
    }
    static void reopen() {
        cnnMain->Close();
        toOpenConnection();
    }
    static QString version() { return ado::Recordset(u"pragma user_version"_s, *cnnMain).FieldAt(0).Text(); }
    /// Each table, index and saved query by its statement, without comments and line breaks.
    static QStringList definitions() {
        static const QRegularExpression comment(u"--[^\\n]*"_s);
        QStringList result;
        ado::Recordset records(u"select name, sql from sqlite_master where sql is not null order by name"_s,
                               *cnnMain);
        for (; !records.Eof(); records.MoveNext())
            result << records["name"].Text() + u": "_s + records["sql"].Text().remove(comment).simplified();
        return result;
    }

    QStringList fresh; ///< definitions of a new database
    QStringList old;
    QStringList given; ///< rows of the database of version 1
};

TEST_F(UpgradeTest, anUpgradedStoreIsLikeANewOneAndKeepsItsRows) {
    ASSERT_NE(old, fresh);
    EXPECT_EQ(checkStore(strDatabasePath), StoreState::Good);
    EXPECT_TRUE(needsUpgrade());
    upgradeStore(strDatabasePath);
    EXPECT_FALSE(needsUpgrade());
    reopen();
    EXPECT_EQ(version(), u"2"_s);
    EXPECT_EQ(definitions(), fresh);
    EXPECT_EQ(removedRows(given, storeRows(*cnnMain)), QStringList());
    EXPECT_EQ(value(u"select score from feedbackobjective"_s), u"7"_s);

    const QStringList copies = listBackups(strDatabasePath);
    ASSERT_EQ(copies.size(), 1);
    ado::Connection copy;
    copy.OpenReadOnly(copies.first(), u"kvtwpa"_s);
    EXPECT_EQ(storeRows(copy), given);
}

TEST_F(UpgradeTest, aStoreThatCannotBeUpgradedStaysAsItIs) {
    const auto expectUnchanged = [&] {
        reopen();
        EXPECT_EQ(definitions(), old);
        EXPECT_EQ(storeRows(*cnnMain), given);
        EXPECT_EQ(version(), u"1"_s);
        cnnMain->Close();
    };
    const auto expectRefused = [&] {
        messages.expectBeginning(
            u"The file '"_s + strDatabasePath +
                u"' could not be updated to this version of the program and is used as it "
                u"is. The next start tries again.\r\n\r\n",
            style::critical);
        upgradeStore(strDatabasePath);
    };
    {
        ado::Connection other;
        other.ConnectionString = connectionText();
        other.Open();
        other.BeginTrans();
        expectRefused();
        EXPECT_EQ(listBackups(strDatabasePath), QStringList()) << "no copy without an upgrade";
    }
    expectUnchanged();

    writeFile(home() + u"/backup"_s, "in the way of the folder of copies");
    expectRefused();
    ASSERT_TRUE(QFile::remove(home() + u"/backup"_s));
    expectUnchanged();

    chmod(home().toUtf8().constData(), 0755);
    chmod(strDatabasePath.toUtf8().constData(), 0444);
    setfsuid(65534);
    upgradeStore(strDatabasePath); // can only be read: no message
    setfsuid(geteuid());
    chmod(strDatabasePath.toUtf8().constData(), 0600);
    expectUnchanged();
}

TEST_F(UpgradeTest, killedAtAnyStatementItIsVersion1Or2Whole) {
    int killed = 0;
    for (bool lives = false; !lives; ++killed) {
        SCOPED_TRACE(killed);
        lives = survivesKillAt(killed + 1, [] { upgradeStore(strDatabasePath); });
        reopen();
        const bool isNew = version() == u"2"_s;
        ASSERT_EQ(definitions(), isNew ? fresh : old);
        ASSERT_EQ(removedRows(given, storeRows(*cnnMain)), QStringList());
        ASSERT_EQ(ado::Recordset(u"pragma integrity_check"_s, *cnnMain).FieldAt(0).Text(), u"ok"_s);
        ASSERT_TRUE(isNew || !lives);
        if (isNew && !lives)
            makeVersion1();
        cnnMain->Close();
    }
    EXPECT_GT(killed, 38) << "the statements of the scripts";
}
} // namespace
