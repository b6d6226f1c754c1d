// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/casefold.h"
#include "platform/ado/connection.h"
#include "platform/ado/datasources.h"
#include "platform/ado/dialect.h"
#include "platform/ado/recordset.h"
#include "platform/ado/store.h"
#include "platform/ado/value.h"
#include "tests/support/text.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using Lock = ado::Recordset::Lock;

namespace {
/// The number of the failure that `step` throws; 0 if none.
template <class Step> int failureNumber(Step step) {
    try {
        step();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

TEST(Dialect, refusesAnythingButOneWholeStatement) {
    for (const QString& text : {u"a='O'Hara'"_s, u"d=##"_s, u"d=#13/45/2002#"_s, u"d=#03/15/2002"_s,
                                u"1 -- 2"_s, u"1 /* all */"_s, u"[a"_s})
        EXPECT_EQ(failureNumber([&] { ado::translate(u"select * from t where "_s + text); }),
                  ado::number::syntax)
            << text;
    EXPECT_EQ(failureNumber([] { ado::translate(u"select * from t where custid=5;drop table t"_s); }),
              ado::number::afterEnd);
}

TEST(Dialect, likeAndCollationIgnoreCaseForAllOfUnicode) {
    const std::tuple<const char*, const char*, bool> likes[] = {{"%ÉCOLE%", "les écoles", true},
                                                                {"Ø_gård", "øLGÅRD", true},
                                                                {"%a%b%", "xxAyyBzz", true},
                                                                {"%ab", "aab", true},
                                                                {"a%", "ba", false},
                                                                {"%%", "", true},
                                                                {"_", "", false},
                                                                {"abc", "abcd", false},
                                                                {"%50 %%", "by 50 percent", true}};
    for (const auto& [pattern, text, matches] : likes)
        EXPECT_EQ(ado::LikePattern(pattern).matches(text), matches) << pattern << " ~ " << text;
    EXPECT_EQ(ado::compareFolded("Émile", "éMILE"), 0);
    EXPECT_GT(ado::compareFolded("b", "A"), 0);
    EXPECT_NE(ado::compareFolded("\xff\xfe", "a"), 0);
}

TEST(Values, wholeNumbersRoundHalfEvenAndOverflowIsRefused) {
    const std::pair<QVariant, int> fits[] = {{u"2.5"_s, 2},    {u"3.5"_s, 4}, {u" 7 "_s, 7},        {-0.5, 0},
                                             {32767.4, 32767}, {true, -1},    {u"-32768"_s, -32768}};
    for (const auto& [value, whole] : fits)
        EXPECT_EQ(ado::toWhole(value), whole) << value.toString();
    const std::pair<QVariant, int> refused[] = {
        {32767.5, Failure::overflow},      {u"1e9"_s, Failure::overflow},
        {u"ten"_s, Failure::typeMismatch}, {u""_s, Failure::typeMismatch},
        {u"nan"_s, Failure::typeMismatch}, {u"5 apples"_s, Failure::typeMismatch}};
    for (const auto& [value, number] : refused)
        EXPECT_EQ(failureNumber([&] { ado::toWhole(value); }), number) << value.toString();
}

/// A store of two tables and a view, registered as data source "test".
struct AdoTest : ::testing::Test {
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", directory.filePath(u"config"_s).toUtf8());
        path = directory.filePath(u"store.mdb"_s);
        ado::createStore(
            path,
            "create table person (id integer primary key autoincrement, name TEXT collate UNICODE_CI,\n"
            " born DATE, keen YESNO, mark SMALLINT default 7, share SINGLE);\n"
            "create table note (\"Order\" INTEGER);\n"
            "create view people as select name, born, keen from person;",
            u"secret"_s);
        const QChar end(0);
        const QString source = u"DSN=test"_s + end + u"DBQ="_s + path + end;
        ASSERT_EQ(ado::SQLConfigDataSource(ado::AddSystemSource, u"driver"_s + end, source), 1);
        connection.ConnectionString = u"DSN=test;UID=;PWD=secret;"_s;
        connection.Open();
    }
    QTemporaryDir directory;
    QString path;
    ado::Connection connection;
};

TEST_F(AdoTest, fieldsConvertByDeclaredTypeAndUnwrittenFieldsStay) {
    ado::Recordset person(u"select * from person where name='Zoë'"_s, connection, Lock::Optimistic);
    ASSERT_TRUE(person.Eof());
    person.AddNew();
    person["NAME"] = u"Zoë"_s;
    person["born"] = u"05/03/1999"_s;
    person["keen"] = u"True"_s;
    person["share"] = 0.1;
    person.Update();
    EXPECT_EQ(person["mark"].Value(), 7) << "the table's default";

    person.Open(u"select * from person where name='ZOË'"_s, connection, Lock::Optimistic);
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
    EXPECT_EQ(failureNumber([&] { person["mark"] = u"many"_s; }), Failure::typeMismatch);
}

TEST_F(AdoTest, onlyTheRecordsOfOneTableAreWritten) {
    connection.Execute(u"insert into person (name) values ('Zoë')"_s);
    ado::Recordset records;
    for (const QString& text : {u"select name from person"_s, u"select * from person, note"_s,
                                u"select * from people"_s, u"select count(*) from person"_s})
        EXPECT_NE(failureNumber([&] { records.Open(text, connection, Lock::Optimistic); }), 0) << text;
    EXPECT_NE(failureNumber([&] { records.Open(u"delete * from person"_s, connection); }), 0);
    records.Open(u"select * from person"_s, connection);
    EXPECT_EQ(failureNumber([&] { records["name"] = u"x"_s; }), ado::number::notWritable);
    records.Open(u"select * from person"_s, connection, Lock::Optimistic);
    records["name"] = u"late"_s;
    connection.Execute(u"delete * from person"_s);
    EXPECT_EQ(failureNumber([&] { records.Update(); }), ado::number::noCurrentRecord);
}

TEST_F(AdoTest, aValueInBracesHoldsAnyCharacter) {
    for (const QString& password : {u"a;b}c"_s, u"}"_s, u"{x}=;;'\""_s, u" "_s}) {
        ado::createStore(path, "create table note (a INTEGER);", password);
        connection.ConnectionString = u";PWD="_s + ado::braced(password) + u"; DBQ =" + path;
        EXPECT_EQ(failureNumber([&] { connection.Open(); }), 0) << password;
    }
}
} // namespace
