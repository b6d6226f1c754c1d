// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"
#include "platform/ado/datasources.h"
#include "platform/ado/recordset.h"
#include "platform/ado/store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

/// A store of two tables and a view, registered as data source "test".
class AdoTest : public ::testing::Test {
protected:
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", directory.filePath(u"config"_s).toUtf8());
        path = directory.filePath(u"store.mdb"_s);
        ado::createStore(
            path,
            "create table person (id integer primary key autoincrement, name TEXT collate UNICODE_CI,\n"
            " born DATE, keen YESNO, mark SMALLINT default 7, share SINGLE);\n"
            "create table note (\"Order\" INTEGER, \"Desc\" TEXT);\n"
            "create view people as select name, born, keen from person;",
            u"secret"_s);
        registerSource(path);
        connection = opened();
    }

    static void registerSource(const QString& file) {
        ASSERT_EQ(ado::SQLConfigDataSource(4, u"driver"_s + QChar(0),
                                           u"DSN=test"_s + QChar(0) + u"DBQ="_s + file + QChar(0)),
                  1);
    }
    static std::unique_ptr<ado::Connection> opened(const QString& password = u"secret"_s) {
        auto result = std::make_unique<ado::Connection>();
        result->ConnectionString = u"DSN=test;UID=;PWD="_s + password + u";";
        result->Open();
        return result;
    }
    void insert(int count) {
        ado::Recordset person;
        person.Open(u"select * from person"_s, *connection, Lock::Optimistic);
        for (int i = 0; i < count; ++i) {
            person.AddNew();
            person["name"] = u"N"_s + QString::number(i);
            person.Update();
        }
    }
    template <class Step> static int numberOf(Step step) {
        try {
            step();
        } catch (const ado::Failure& failure) {
            return failure.cause().Number;
        }
        return 0;
    }

    QTemporaryDir directory;
    QString path;
    std::unique_ptr<ado::Connection> connection;
};

TEST_F(AdoTest, fieldsConvertByTheirDeclaredTypeAndKeepWhatIsNotWritten) {
    ado::Recordset person;
    person.Open(u"select * from person where name='Zoë'"_s, *connection, Lock::Optimistic);
    ASSERT_TRUE(person.Eof());
    person.AddNew();
    person["NAME"] = u"Zoë"_s;
    person["born"] = u"05/03/1999"_s;
    person["keen"] = u"True"_s;
    person["share"] = 0.1;
    person.Update();
    EXPECT_EQ(person["id"].Value(), 1);
    EXPECT_EQ(person["mark"].Value(), 7) << "the table's default";
    person.Close();

    person.Open(u"select * from person where name='ZOË'"_s, *connection, Lock::Optimistic);
    EXPECT_EQ(person["born"].Value(), QDate(1999, 3, 5));
    EXPECT_EQ(person["born"].Text(), u"05/03/1999"_s);
    EXPECT_EQ(person["keen"].Value(), true);
    EXPECT_EQ(person["share"].Value(), QVariant(0.1F));
    person["mark"] = u"9.5"_s;
    person["born"] = ado::Null;
    person.Update();
    EXPECT_EQ(person["mark"].Value(), 10);
    EXPECT_TRUE(person["born"].IsNull());
    EXPECT_EQ(person["name"].Text(), u"Zoë"_s);
    EXPECT_EQ(numberOf([&] { person["mark"] = u"many"_s; }), ado::number::typeMismatch);
    EXPECT_EQ(connection->Errors().Item(0).Description, u"Type mismatch"_s);

    ado::Recordset view;
    view.Open(u"select distinct(name), keen from people"_s, *connection);
    EXPECT_EQ(view["keen"].Value(), true) << "a view keeps the declared types";
}

TEST_F(AdoTest, recordsAreFetchedAsTheyAreAskedFor) {
    insert(3);
    ado::Recordset person;
    person.Open(u"select * from person"_s, *connection);
    person.MoveNext();
    EXPECT_EQ(person.RecordCount(), 3);
    EXPECT_EQ(person["name"].Text(), u"N1"_s) << "counting does not move";
    person.MoveLast();
    EXPECT_EQ(person["name"].Text(), u"N2"_s);
    person.MoveNext();
    EXPECT_TRUE(person.Eof());
    EXPECT_EQ(numberOf([&] { person.MoveNext(); }), ado::number::noCurrentRecord);
    person.MoveFirst();
    EXPECT_EQ(person["name"].Text(), u"N0"_s);
    EXPECT_EQ(numberOf([&] { person["nmae"]; }), ado::number::itemNotFound);
    ado::Recordset notes;
    notes.Open(u"select * from note"_s, *connection, Lock::Optimistic);
    notes.AddNew();
    notes["Order"] = 1;
    notes["desc"] = u"reserved words"_s;
    notes.Update();
    notes.Close();
    notes.Open(u"select * from note where note.order=1 order by note.desc"_s, *connection);
    EXPECT_EQ(notes["Desc"].Text(), u"reserved words"_s);
}

TEST_F(AdoTest, onlyTheRecordsOfOneTableAreWritten) {
    insert(1);
    ado::Recordset records;
    for (const char16_t* text : {u"select name from person", u"select * from person, note",
                                 u"select * from people", u"select count(*) from person"})
        EXPECT_NE(numberOf([&] { records.Open(QString::fromUtf16(text), *connection, Lock::Optimistic); }), 0)
            << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(numberOf([&] { records.Open(u"delete * from person"_s, *connection); }),
              ado::number::notWritable);
    records.Open(u"select * from person"_s, *connection);
    EXPECT_EQ(numberOf([&] { records["name"] = u"x"_s; }), ado::number::notWritable);
    EXPECT_EQ(numberOf([&] { records.AddNew(); }), ado::number::notWritable);
    records.Close();
    records.Open(u"select * from person"_s, *connection, Lock::Optimistic);
    records["name"] = u"late"_s;
    connection->Execute(u"delete * from person"_s);
    EXPECT_EQ(numberOf([&] { records.Update(); }), ado::number::noCurrentRecord);
}

TEST_F(AdoTest, transactionsHoldOrLeaveNothing) {
    connection->BeginTrans();
    insert(2);
    EXPECT_NE(numberOf([&] { connection->BeginTrans(); }), 0) << "transactions do not nest";
    connection->RollbackTrans();
    connection->RollbackTrans();
    connection->BeginTrans();
    insert(1);
    connection->CommitTrans();
    connection->BeginTrans();
    insert(5);
    connection->Close(); // as when the program is killed: the open transaction goes
    EXPECT_EQ(numberOf([&] { connection->Execute(u"delete * from person"_s); }), ado::number::objectClosed);
    connection = opened();
    ado::Recordset person;
    person.Open(u"select * from person"_s, *connection);
    EXPECT_EQ(person.RecordCount(), 1);
    person.Close();
    insert(1);
    person.Open(u"select * from person order by id"_s, *connection);
    person.MoveLast();
    EXPECT_EQ(person.RecordCount(), 2);
}

TEST_F(AdoTest, keysAreNeverGivenTwice) {
    insert(2);
    connection->Execute(u"delete * from person"_s);
    insert(1);
    ado::Recordset person;
    person.Open(u"select * from person"_s, *connection);
    EXPECT_EQ(person["id"].Value(), 3);
}

TEST_F(AdoTest, storesThatCannotBeUsedSaySo) {
    const auto describe = [this](const QString& file, const QString& password = u"secret"_s) {
        registerSource(file);
        ado::Connection other;
        other.ConnectionString = u"DSN=test;UID=;PWD="_s + password + u";";
        EXPECT_NE(numberOf([&] { other.Open(); }), 0) << file.toStdString();
        EXPECT_EQ(other.State(), 0);
        return other.Errors().Count() == 1 ? other.Errors().Item(0).Description : u"none"_s;
    };
    QFile text(directory.filePath(u"text.mdb"_s));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(3000, 'x'));
    text.close();
    EXPECT_EQ(describe(text.fileName()), u"The file is not a database."_s);
    EXPECT_EQ(describe(path, u"wrong"_s), u"Not a valid password."_s);
    EXPECT_TRUE(describe(directory.filePath(u"none.mdb"_s)).startsWith(u"Could not find the database file"));
    ado::Connection unknown;
    unknown.ConnectionString = u"DSN=nowhere;PWD=;"_s;
    EXPECT_EQ(numberOf([&] { unknown.Open(); }), ado::number::dataSource);
}

TEST_F(AdoTest, aStoreLockedByAnotherProgramIsMetAtTheStartOfATransaction) {
    const auto other = opened();
    other->BeginTrans();
    EXPECT_EQ(numberOf([&] { connection->BeginTrans(); }), 5);
    EXPECT_TRUE(connection->Errors().Item(0).Description.contains(u"in use by another program"));
    other->RollbackTrans();
    connection->BeginTrans();
    connection->CommitTrans();
}

TEST_F(AdoTest, aBackupIsWholeAndReplacesOnlyWhenItIs) {
    insert(4);
    const QString copy = directory.filePath(u"copy.mdb"_s);
    connection->BackupTo(copy);
    connection->BackupTo(copy);
    registerSource(copy);
    const auto restored = opened();
    ado::Recordset person;
    person.Open(u"select * from person"_s, *restored);
    EXPECT_EQ(person.RecordCount(), 4);
    EXPECT_NE(numberOf([&] { connection->BackupTo(directory.filePath(u"no/such/folder.mdb"_s)); }), 0);
}

TEST_F(AdoTest, aScriptThatFailsNamesItsLineAndLeavesNoStore) {
    const QString target = directory.filePath(u"new.mdb"_s);
    try {
        ado::createStore(target, "create table a (b TEXT);\n\ncreate tabel c (d TEXT);", u""_s);
        ADD_FAILURE();
    } catch (const ado::Failure& failure) {
        EXPECT_TRUE(failure.cause().Description.contains(u"line 1") ||
                    failure.cause().Description.contains(u"line 3"))
            << failure.what();
    }
    EXPECT_FALSE(QFile::exists(target));
}

} // namespace
