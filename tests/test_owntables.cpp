// SPDX-License-Identifier: GPL-3.0-or-later
// Two programs on one store fill the same work tables, and a third sees neither.
#include "platform/ado/session.h"
#include "platform/crystal/crystalreport.h"
#include "platform/crystal/output.h"
#include "tests/support/enginestest.h"
#include "tests/support/pdftext.h"
#include "tests/support/replaced.h"

#include <sys/wait.h>

namespace {
struct OwnTablesTest : EnginesTest {
    /// A connection to that store with its own tables; the last name is of no table.
    static void open(ado::Connection& mine, const ado::Connection& store) {
        mine.ConnectionString = store.ConnectionString;
        mine.OwnTables = {u"ReportLinkTable"_s, u"search"_s, u"nothing"_s};
        mine.Open();
    }
    static void fill(ado::Connection& mine, const QString& question) {
        mine.BeginOwnTrans();
        for (const int score : {3, 4})
            add(mine, u"reportlinktable"_s,
                {{"question", question}, {"sdate", QDate(2024, 3, 5)}, {"Type", true}, {"score", score}});
        mine.CommitTrans();
    }
};

TEST_F(OwnTablesTest, eachProgramSeesItsOwnRows) {
    const QString all = u"select * from reportlinktable order by score"_s;
    onBoth([&](ado::Connection& store) {
        ado::Connection one, other;
        open(one, store);
        open(other, store);
        store.BeginTrans();
        store.Execute(u"insert into customer (custname) values ('Acme')"_s); // holds its lock
        fill(one, u"mine"_s);
        fill(other, u"theirs"_s);
        store.RollbackTrans();
        other.Execute(u"delete * from reportlinktable where score=4"_s);

        ado::Recordset row(u"select * from reportlinktable where score=4"_s, one,
                           ado::Recordset::Lock::Optimistic);
        row["score"] = 9;
        row.Update();
        one.BeginOwnTrans();
        one.Execute(u"delete * from reportlinktable"_s);
        one.RollbackTrans();
        EXPECT_EQ(rows(store, all), QStringList());
        EXPECT_EQ(rows(other, all).size(), 1);
        one.Execute(u"insert into search (Id) values (7)"_s);
        one.Close();
        one.Open();
        EXPECT_EQ(rows(one, all), QStringList()) << "of the connection before";
        fill(one, u"again"_s);
        return rows(one, all) + rows(other, all);
    });
}

/// Adds one to a stored number, 50 times, each time after reading it as a save does. Returns 0 when each
/// refusal named the other program and the rows of the own table were never another's.
int countUp(const QString& connection, int own) {
    ado::Connection store;
    store.ConnectionString = connection;
    store.OwnTables = {u"search"_s};
    store.Open();
    for (int done = 0; done < 50;) {
        const QString failure = failureOf([&] {
            store.BeginTrans();
            ado::Recordset number(u"select * from programsetting"_s, store, ado::Recordset::Lock::Optimistic);
            number["content"] = QString::number(number["content"].Text().toInt() + 1);
            number.Update();
            store.CommitTrans();
        });
        if (failure.isEmpty())
            ++done;
        else if (!failure.startsWith(u"The same records "_s))
            return 1;
        store.RollbackTrans();
        store.Execute(u"insert into search (Id) values (%1)"_s.arg(own));
        if (rows(store, u"select distinct Id from search"_s) != QStringList{u"qlonglong %1"_s.arg(own)})
            return 2;
    }
    return 0;
}

TEST_F(OwnTablesTest, twoProcessesLoseNoEdit) {
    runOnBoth(u"insert into programsetting (name, content) values ('n', '0')"_s);
    for (ado::Connection* store : {&file, &server}) {
        const QString connection = store->ConnectionString;
        store->Close(); // no connection may be open across a fork
        std::vector<pid_t> programs;
        for (const int own : {1, 2}) {
            programs.push_back(fork());
            if (programs.back() == 0)
                _exit(countUp(connection, own));
        }
        for (const pid_t program : programs) {
            int status = 0;
            waitpid(program, &status, 0);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        }
        store->Open();
        EXPECT_EQ(rows(*store, u"select content from programsetting"_s), QStringList{u"QString 100"_s});
    }
}

TEST_F(OwnTablesTest, ownTablesHaveTheStoredColumnsAndIndexes) {
    onBoth([&](ado::Connection& store) {
        ado::Connection mine;
        open(mine, store);
        const ado::Columns stored = store.session()->columnsOf(u"reportlinktable"_s);
        const ado::Columns own = mine.session()->columnsOf(u"reportlinktable"_s);
        EXPECT_EQ(own.size(), stored.size());
        for (std::size_t i = 0; i < own.size(); ++i)
            EXPECT_TRUE(own[i].name == stored[i].name && own[i].type == stored[i].type) << i;
        return QStringList(QString::number(own.size()));
    });
    ado::Connection mine;
    open(mine, file);
    EXPECT_EQ(rows(mine, u"select name from sqlite_temp_master where type='index' order by name"_s),
              QStringList({u"QString reportlinktable_parameter"_s, u"QString reportlinktable_question"_s,
                           u"QString reportlinktable_respondent"_s, u"QString search_hit"_s}));
    ado::Connection onServer;
    open(onServer, server);
    const QString made = rows(onServer, u"show create table reportlinktable"_s).value(0);
    EXPECT_TRUE(made.contains(u"TEMPORARY") && made.contains(u"KEY \"reportlinktable_question\"")) << made;
}

TEST_F(OwnTablesTest, aReadOnlyFileHasThemToo) {
    const QString path = folder.filePath(u"tally.mdb"_s);
    ado::Connection mine;
    mine.OwnTables = {u"reportlinktable"_s};
    mine.OpenReadOnly(path, u"secret"_s);
    fill(mine, u"mine"_s);
    EXPECT_EQ(rows(mine, u"select count(*) from reportlinktable"_s), QStringList{u"qlonglong 2"_s});
    EXPECT_THROW(mine.Execute(u"delete * from customer"_s), Failure);
}

TEST_F(OwnTablesTest, aReportPrintsTheRowsOfItsConnection) {
    onBoth([&](ado::Connection& store) {
        ado::Connection one, other;
        open(one, store);
        open(other, store);
        fill(one, u"mine"_s);
        fill(other, u"theirs"_s);
        std::shared_ptr<const crystal::Report> run;
        const Replaced<crystal::previewHook> preview(
            [&](const auto& shown, const QString&, int) { run = shown; });
        crystal::CrystalReport report;
        report.Connection = &one;
        report.Password = u"\n"_s;
        report.ReportFileName = QStringLiteral(GAUGEWELL_SOURCE) + u"/home/rptrating.rpt";
        report.Formulas(0) = u"CompanyName='Larkmoor'"_s;
        report.SelectionFormula = u"{reportlinktable.sdate}=date(2024,03,05)"_s;
        report.setAction(crystal::RunReport);
        const QString pdf = folder.filePath(u"out.pdf"_s);
        crystal::savePdf(*run, pdf);
        QStringList pages = pdfPages(pdf);
        EXPECT_TRUE(pages.value(0).contains(u"05/03/2024"_s) && pages[0].contains(u"mine Score"_s))
            << pages.value(0);
        EXPECT_FALSE(pages[0].contains(u"theirs"_s));
        return pages;
    });
}
} // namespace
