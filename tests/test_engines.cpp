// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/enginestest.h"

#include <QRegularExpression>

#include <functional>

using Lock = ado::Recordset::Lock;

namespace {
TEST_F(EnginesTest, theScriptsMakeTheSameTables) {
    QStringList names;
    for (const QString& name : file.Tables()) {
        if (file.session()->columnsOf(name).empty() || name.startsWith(u"sqlite_") ||
            name.contains(u"password"))
            continue; // an index, or what a file keeps for itself
        SCOPED_TRACE(name);
        names << name;
        onBoth([&](ado::Connection& store) {
            const ado::Recordset records(u"select * from [" + name + u']', store);
            QStringList found{QString::number(records.FieldCount()),
                              QString::number(store.session()->isTable(name))};
            for (const ado::Column& column : store.session()->columnsOf(name))
                found << column.name + u' ' + QString::number(static_cast<int>(column.type));
            return found;
        });
    }
    EXPECT_EQ(names.size(), 38);
    for (ado::Connection* store : {&file, &server})
        EXPECT_EQ(store->SchemaVersion(), 2);
}

TEST_F(EnginesTest, fieldsKeepWhatIsWritten) {
    QStringList texts = u" |trailing  |O'Hara said \"no\" \\ %_|Zoë, Ærø, Straße, ΣΊΣΥΦΟΣ, İstanbul|Grüße 😀 "
                        "👩‍🔧|e\u0301 is not composed|a\r\nb\tc\x01\x1f\x7f|"_s.split(u'|');
    texts << QString(100000, u'ß'); // after the empty one
    for (const QString& text : texts) {
        for (ado::Connection* store : {&file, &server})
            add(*store, u"standardmessage"_s, {{"customerid", 7}, {"standardmessage", text}});
    }
    const QStringList kept = found(u"select standardmessage from standardmessage where customerid=7"_s);
    EXPECT_EQ(kept.size(), 9);
    EXPECT_EQ(kept, texts.replaceInStrings(QRegularExpression(u"^"_s), u"QString "_s));
    for (ado::Connection* store : {&file, &server}) {
        add(*store, u"reportlinktable"_s, {{"sdate", QDate(1000, 1, 1)}, {"Type", true}, {"score", -32768}});
        add(*store, u"reportlinktable"_s,
            {{"sdate", QDate(9999, 12, 31)}, {"Type", false}, {"weightage", u"2.5"_s}});
        add(*store, u"reportlinktable"_s,
            {{"sdate", u"29/02/2004"_s}, {"custid", 2147483647}, {"Type", ado::Null}});
        add(*store, u"scattertable"_s, {{"wt", 3.456}, {"sc", u"1234567.125"_s}});
        add(*store, u"linetable"_s, {{"sindex", 0.1F}, {"sdate", ado::Null}});
        add(*store, u"linetable"_s, {{"sindex", 1.0 / 3}});
        add(*store, u"log"_s, {});
    }
    const QStringList marks = found(u"select * from reportlinktable"_s);
    EXPECT_EQ(marks[0], u"-|-|-|-|QDate 01/01/1000|-|-|-|-|bool True|qlonglong -32768|-"_s);
    EXPECT_EQ(found(u"select wt,sc from scattertable"_s), QStringList{u"double 3.456|double 1234567.125"_s});
    EXPECT_EQ(found(u"select sindex from linetable"_s)[0], u"float 0.1"_s);
    EXPECT_EQ(found(u"select * from log"_s)[0], u"-|-|-|-|-|-|bool False"_s);
    found(
        u"select count(*), sum(score), max(sdate), avg(score), min(type), max(weightage)+1 from reportlinktable"_s);
}

TEST_F(EnginesTest, textsCompareWithoutCaseAndWithAccents) {
    const char16_t* names[] = {u"Émile",  u"éMILE",   u"Emile",   u"emile ", u"Straße", u"Strasse",
                               u"STRAẞE", u"σίσυφος", u"ΣΊΣΥΦΟΣ", u"İzmir",  u"izmir",  u"Izmir",
                               u"ızmir",  u"a_b",     u"a%b",     u"a\\b",   u"aXb",    u"😀",
                               u"😁",      u"",        u" ",       u"Ærø",    u"ÆRØ"};
    for (const char16_t* name : names) {
        for (ado::Connection* store : {&file, &server})
            add(*store, u"customer"_s, {{"custname", QString::fromUtf16(name)}});
    }
    int equal = 0;
    for (const char16_t* name : names) {
        const QString text = QString::fromUtf16(name);
        equal +=
            static_cast<int>(found(u"select custid from customer where custname='"_s + text + u"'").size());
        for (const QString& like :
             QStringList{text, u"%"_s + text + u'%', u"_"_s + text.mid(1), text.left(2) + u'%'})
            found(u"select custid from customer where custname like '"_s + like + u"' order by custid");
    }
    EXPECT_EQ(equal, 33) << "five pairs, twice each, and the others once";
    EXPECT_EQ(found(u"select custid from customer where custname like 'ÆRØ'"_s).size(), 2);
    EXPECT_EQ(found(u"select count(*) from (select distinct(custname) from customer) as names"_s),
              QStringList{u"qlonglong 18"_s});
    // The order of letters with and without accents is the engine's own.
    runOnBoth(u"delete * from customer where custid>2 and custid<100"_s);
    for (const QString& name :
         {u"beta"_s, u"Alpha"_s, u"alpha 2"_s, u"Beta"_s, u"10"_s, u"9"_s, u""_s, u"gamma"_s})
        runOnBoth(u"insert into customer (custname, address) values ('"_s + name + u"', 'new')");
    EXPECT_EQ(found(u"select custname from customer where address='NEW' order by custname desc, custid"_s),
              QStringList({u"QString gamma"_s, u"QString beta"_s, u"QString Beta"_s, u"QString alpha 2"_s,
                           u"QString Alpha"_s, u"QString 9"_s, u"QString 10"_s, u"QString "_s}));
    EXPECT_EQ(
        found(u"select custid from customer where custname < 'BETA' and address='new' order by custid"_s)
            .size(),
        5);
}

TEST_F(EnginesTest, recordsAreWrittenWhileOthersAreRead) {
    const auto numbered = [](ado::Connection& store) {
        QStringList steps;
        store.BeginTrans();
        ado::Recordset settings(u"select * from programsetting"_s, store, Lock::Optimistic);
        for (int i = 1; i <= 40; ++i) {
            settings.AddNew();
            settings["name"] = u"n%1"_s.arg(i);
            settings.Update();
        }
        store.CommitTrans();
        ado::Recordset all(u"select * from Programsetting"_s, store, Lock::Optimistic);
        for (; !all.Eof(); all.MoveNext()) { // two more are open in each turn
            ado::Recordset same(u"select * from programsetting where name='"_s + all["name"].Text() + u"'",
                                store, Lock::Optimistic);
            add(store, u"protocol"_s, {{"what", all["name"].Text()}});
            for (int twice = 0; twice < 2; ++twice) { // a record that is not altered is met as well
                same["content"] = u"c"_s + all["name"].Text();
                same.Update();
            }
            all["content"] = same["content"].Text() + u'!';
            all.Update();
            steps << all["content"].Text();
        }
        store.BeginTrans();
        store.Execute(u"delete * from programsetting where name<>'n7'"_s);
        steps << failureOf([&] {
            all.MoveFirst();
            all["content"] = u"late"_s;
            all.Update();
        });
        add(store, u"protocol"_s, {{"what", u"undone"_s}});
        store.RollbackTrans();
        steps << QString::number(store.InTransaction());
        return steps;
    };
    const QStringList steps = onBoth(numbered);
    EXPECT_EQ(steps[39], u"cn40!"_s);
    EXPECT_EQ(steps[40], u"The record has been deleted meanwhile."_s);
    EXPECT_EQ(found(u"select * from programsetting"_s).size(), 40);
    EXPECT_EQ(found(u"select * from protocol"_s).size(), 40);
}

/// The steps of a batch that was written within a transaction: what a look says while it is under way, the
/// failure, and what the transaction keeps.
QStringList batchOf(ado::Connection& store, const QStringList& names,
                    const std::function<void()>& meanwhile) {
    QStringList steps;
    ado::Recordset settings(u"select * from programsetting order by name"_s, store, Lock::BatchOptimistic);
    settings.RecordCount();
    store.BeginTrans();
    meanwhile();
    steps << failureOf([&] {
        for (; !settings.Eof(); settings.MoveNext()) {
            const bool wasNew = settings["content"].IsNull();
            settings["content"] = wasNew ? QVariant(u"new"_s) : ado::Null;
            settings.Update();
            EXPECT_NE(settings["content"].IsNull(), wasNew);
        }
        for (const QString& name : names) {
            settings.AddNew();
            settings["name"] = name;
            if (name.size() > 1)
                settings["content"] = u"x"_s.repeated(300000);
            settings.Update();
        }
        steps << rows(store, u"select count(*) from programsetting"_s);
        store.UpdateBatch();
    });
    store.CommitTrans();
    return steps + rows(store, u"select name, length(content) from programsetting order by name"_s);
}

TEST_F(EnginesTest, recordsOfABatchAreWrittenInOrder) {
    const auto run = [&](const QStringList& names, const QString& deletion = {}) {
        return onBoth([&](ado::Connection& store) {
            QStringList steps = batchOf(store, names, [&] {
                if (!deletion.isEmpty())
                    store.Execute(deletion);
            });
            return steps.replaceInStrings(QRegularExpression(u"^(UNIQUE|Duplicate).*"_s), u"twice"_s);
        });
    };
    EXPECT_EQ(run(u"a b1 c d1 e1 f"_s.split(u' ')).join(u' '),
              u"qlonglong 6  QString a|- QString b1|qlonglong 300000 QString c|- QString d1|qlonglong 300000 "
              "QString e1|qlonglong 300000 QString f|-"_s);
    EXPECT_EQ(run({u"x"_s, u"y1"_s, u"A"_s, u"z"_s}).filter(u"twice"_s).size(), 1);
    EXPECT_EQ(rows(server, u"select name from programsetting where name>'e2'"_s),
              (QStringList{u"QString f"_s, u"QString x"_s, u"QString y1"_s}));
    EXPECT_TRUE(run({u"z"_s}, u"delete * from programsetting where name='c'"_s)
                    .contains(u"The record has been deleted meanwhile."_s));
    EXPECT_EQ(found(u"select content from programsetting where name<'c' or name='d1' order by name"_s),
              (QStringList{u"-"_s, u"QString new"_s, u"-"_s}));
}

TEST_F(EnginesTest, failuresLeaveTheConnectionUsable) {
    for (const QString& sql :
         QStringList{u"selct 1"_s, u"select * from nowhere"_s, u"select nothing from log"_s,
                     u"insert into respondent (custid) values (99)"_s, u"update customer set custid=1"_s,
                     u"insert into programsetting (name) values ('A'), ('a')"_s,
                     u"insert into parameter (parametername) values ('"_s + QString(256, u'é') + u"')"}) {
        runOnBoth(u"insert into customer (custname) values ('x'), ('y')"_s);
        for (ado::Connection* store : {&file, &server}) {
            EXPECT_NE(failureOf([&] { store->Execute(sql); }), QString()) << sql;
            EXPECT_EQ(store->Errors().Count(), 1);
        }
        found(u"select * from customer"_s);
    }
    runOnBoth(u"insert into parameter (parametername) values ('"_s + QString(255, u'é') + u"')");
    EXPECT_EQ(found(u"select * from programsetting"_s).size(), 0);
    const auto refused = [](ado::Connection& store) {
        ado::Recordset open(u"select * from customer"_s, store);
        QStringList said{failureOf([&] { ado::Recordset(u"delete * from log"_s, store); }), failureOf([&] {
                             ado::Recordset(u"select * from param"_s, store, Lock::Optimistic);
                         })};
        store.Close();
        return said << failureOf([&] { store.Execute(u"select 1"_s); }) << QString::number(store.State());
    };
    EXPECT_EQ(onBoth(refused)[2], u"Operation is not allowed when the object is closed."_s);
}
} // namespace
