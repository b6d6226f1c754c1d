// SPDX-License-Identifier: GPL-3.0-or-later
// Backups of the store.
#include "core/base/backup.h"
#include "platform/forms/clock.h"
#include "tests/support/storecompare.h"
#include "tests/support/storetest.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

class BackupTest : public StoreTest {
protected:
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
        EXPECT_FALSE(QFile::permissions(file) & QFileDevice::Permissions(0x0077)) << file.toStdString();
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
    const QString withoutNumber = u"-2023-01-01-101500.mdb"_s, notOurs = u"-of my own.mdb"_s;
    const QString killedWhileCopied = u"-2024-01-01-101500-1.mdb.part"_s;
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

} // namespace
