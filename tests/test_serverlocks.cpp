// SPDX-License-Identifier: GPL-3.0-or-later
// Two programs change the same records of a server's store.
#include "tests/support/enginestest.h"

#include <QElapsedTimer>

#include <future>

using Lock = ado::Recordset::Lock;

namespace {
struct ServerLocksTest : EnginesTest {
    void SetUp() override {
        EnginesTest::SetUp();
        other.ConnectionString = server.ConnectionString;
        other.Open();
    }
    ado::Connection other;
};

TEST_F(ServerLocksTest, theWaitForALockIsShortAndTold) {
    server.Execute(u"insert into customer (custname) values ('a'), ('b')"_s);
    other.BeginTrans();
    other.Execute(u"update customer set custname='B' where custid=2"_s);
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(failureOf([&] { server.Execute(u"delete * from customer where custid=2"_s); }),
              u"The same records are being changed by someone else. Try again in a moment."_s);
    EXPECT_LT(waited.elapsed(), 4000);
    other.CommitTrans();
}

TEST_F(ServerLocksTest, aTransactionWaitsForTheOneBeforeAndSeesWhatItWrote) {
    for (ado::Connection* store : {&server, &other})
        store->LockedFirst = u"setting"_s;
    server.BeginTrans();
    EXPECT_EQ(failureOf([&] { other.BeginTrans(); }),
              u"The same records are being changed by someone else. Try again in a moment."_s);
    EXPECT_FALSE(other.InTransaction());
    other.BeginOwnTrans();
    other.RollbackTrans();
    server.Execute(u"insert into customer (custname) values ('a')"_s);
    std::future<QStringList> seen = std::async(std::launch::async, [&] {
        other.BeginTrans();
        return rows(other, u"select custname from customer"_s);
    });
    EXPECT_EQ(seen.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    server.CommitTrans();
    EXPECT_EQ(seen.get(), QStringList(u"QString a"_s));
}

TEST_F(ServerLocksTest, aDeadlockEndsOneOfTwoTransactions) {
    server.Execute(u"insert into customer (custname) values ('a'), ('b')"_s);
    server.BeginTrans();
    server.Execute(u"update customer set custname='mine' where custid=1"_s);
    other.BeginTrans();
    other.Execute(u"update customer set custname='other' where custid=2"_s);
    std::future<QString> others = std::async(std::launch::async, [&] {
        return failureOf([&] { other.Execute(u"update customer set custname='other' where custid=1"_s); });
    });
    const QString mine = failureOf([&] { server.Execute(u"update customer set custname='mine'"_s); });
    EXPECT_EQ(mine + others.get(), u"The same records have been changed by someone else at the same time. "
                                   "Nothing of this step has been saved. Try again."_s);
    EXPECT_NE(server.InTransaction(), other.InTransaction());
    ado::Connection& winner = server.InTransaction() ? server : other;
    winner.CommitTrans();
    const QString name = mine.isEmpty() ? u"QString mine"_s : u"QString other"_s;
    EXPECT_EQ(rows(winner, u"select custname from customer"_s), QStringList({name, name}));
}

TEST_F(ServerLocksTest, aRecordChangedSinceItWasReadIsNotOverwritten) {
    server.Execute(u"insert into customer (custname) values ('a')"_s);
    server.BeginTrans();
    add(server, u"protocol"_s, {{"what", u"undone"_s}});
    ado::Recordset record(u"select * from customer where custid=1"_s, server, Lock::Optimistic);
    other.Execute(u"update customer set custname='theirs'"_s);
    record["custname"] = u"mine"_s;
    EXPECT_EQ(failureOf([&] { record.Update(); }),
              u"The same records have been changed by someone else at the same time. "
              "Nothing of this step has been saved. Try again."_s);
    EXPECT_FALSE(server.InTransaction());
    EXPECT_EQ(rows(other, u"select custname from customer"_s), QStringList(u"QString theirs"_s));
    EXPECT_EQ(rows(other, u"select * from protocol"_s), QStringList());
    EXPECT_EQ(rows(server, u"select * from protocol"_s), QStringList()) << "the server has rolled back";
}
} // namespace
