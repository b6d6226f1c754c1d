// SPDX-License-Identifier: GPL-3.0-or-later
// A server's store becomes a file and a file's store a server's, with all that they hold.
#include "core/base/backup.h"
#include "core/store/storecopy.h"
#include "tests/support/enginestest.h"
#include "tests/support/storecompare.h"

namespace {
struct StoreCopyTest : EnginesTest {
    static void fill(ado::Connection& store) {
        for (const QString& name : {u"Gone"_s, u"Zoë & “Söhne” 😀"_s, u"Gone"_s})
            add(store, u"customer"_s, {{"custname", name}, {"Address", u"a\r\nb"_s}});
        store.Execute(u"delete * from customer where custname='Gone'"_s); // their keys are not used again
        add(store, u"parameter"_s, {{"parametername", u"Delivery"_s}});
        add(store, u"questions"_s, {{"question", u"On time?"_s}, {"Type", true}, {"paramid", 1}});
        add(store, u"respondent"_s, {{"custid", 2}, {"respondentname", u""_s}});
        for (const QVariant& score : {QVariant(7), QVariant(0), ado::Null})
            add(store, u"feedbackobjective"_s,
                {{"respondentid", 1}, {"surveydate", QDate(2024, 2, 29)}, {"score", score}});
        add(store, u"actionplan"_s, {{"customerid", 2}, {"Status", true}});
        add(store, u"log"_s, {{"xlsfilename", u"b.xls"_s}});
        add(store, u"log"_s, {{"xlsfilename", u"a.xls"_s}}); // after b, the order of entry
        store.Execute(u"update setting set checkeduser=True"_s);
        add(store, u"search"_s, {{"Id", 1}});
    }
    /// The rows of all tables that are copied.
    static QStringList kept(ado::Connection& store) {
        QStringList all = storeRows(store);
        all.removeIf([](const QString& row) {
            return row.startsWith(u"search|") || row.startsWith(u"database_password|");
        });
        return all;
    }
};

TEST_F(StoreCopyTest, allRowsArriveInBothDirections) {
    fill(server);
    copyAllRows(server, file);
    EXPECT_EQ(kept(file), kept(server));
    EXPECT_EQ(kept(file).size(), 11);
    EXPECT_EQ(rows(file, u"select * from search"_s), QStringList());
    found(u"select xlsfilename, status from log"_s);
    found(u"select score, surveydate from feedbackobjective"_s);
    EXPECT_FALSE(file.InTransaction() || server.InTransaction());

    file.Execute(u"update customer set custname='Acme'"_s);
    file.Execute(u"delete * from log"_s);
    add(file, u"customer"_s, {{"custname", u"Old"_s}});
    file.Execute(u"delete * from customer where custname='Old'"_s);
    copyAllRows(file, server);
    EXPECT_EQ(kept(server), kept(file));
    add(server, u"customer"_s, {{"custname", u"New"_s}});
    EXPECT_EQ(rows(server, u"select custid from customer order by custid"_s),
              (QStringList{u"qlonglong 2"_s, u"qlonglong 5"_s}));
}

TEST_F(StoreCopyTest, aFailureLeavesTheTargetAsItWas) {
    fill(server);
    add(file, u"customer"_s, {{"custname", u"Mine"_s}});
    const QStringList before = kept(file);
    server.Execute(u"drop table protocol"_s);
    EXPECT_NE(failureOf([&] { copyAllRows(server, file); }), QString());
    EXPECT_EQ(kept(file), before);
    EXPECT_FALSE(file.InTransaction() || server.InTransaction());
}

TEST_F(StoreCopyTest, theBackupOfAServersStoreIsAFile) {
    fill(server);
    const QString beside = folder.filePath(u"home.mdb"_s);
    copyStore(server, beside);
    ASSERT_EQ(listBackups(beside).size(), 1);
    ado::Connection backup;
    backup.OpenReadOnly(listBackups(beside)[0], u"kvtwpa"_s);
    EXPECT_EQ(kept(backup), kept(server));
    EXPECT_EQ(QFile::permissions(listBackups(beside)[0]) & QFileDevice::Permissions(0x0077),
              QFile::Permissions());

    server.Execute(u"drop table protocol"_s);
    EXPECT_TRUE(failureOf([&] { copyStore(server, beside); }).contains(u"nothing has been changed"_s));
    EXPECT_EQ(server.Errors().Count(), 1);
    EXPECT_EQ(QDir(folder.filePath(u"backup"_s)).entryList(QDir::Files).size(), 1);
}
} // namespace
