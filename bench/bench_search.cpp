// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword search over 1,000,000 answers of 2,000 customers, 100,000 answers in words and 100,000 actions:
// a keyword without a hit, one with 100,000 hits, and several keywords. Bound: the same select read to its
// end by the SQLite C API. Usage: bench_search [CUSTOMERS]
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "platform/ado/casefold.h"
#include "platform/forms/listview.h"
#include "search/frmSearch.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

QString numbers(int count) {
    return u"with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) "_s.arg(count);
}

void buildStore(int customers) {
    const QString statements[] = {
        u"insert into customer (custid, custname, Address) "_s + numbers(customers) +
            u"select i, 'Customer ' || i, ' ' from n",
        u"insert into respondent (respondentid, custid, respondentname) "_s + numbers(2) +
            u"select custid * 10 + i, custid, 'Respondent ' || i from customer, n",
        u"insert into parameter (paramid, parametername) values (1, 'Delivery')"_s,
        u"insert into questions (questionid, paramid, question, Type) "_s + numbers(50) +
            u"select i, 1, 'How satisfied are you with matter ' || i || ' of our deliveries?', True from n",
        u"insert into feedbackobjective (respondentid, questionid, surveydate, score, weightage) "_s +
            numbers(5) +
            u"select respondentid, questionid, date('2020-01-01', '+' || i || ' months'), 7, 3 from n, "
            u"respondent, questions",
        u"insert into feedbackdescriptive (respondentid, questionid, surveydate, Description) "_s +
            numbers(25) +
            u"select respondentid, i, '2020-02-01', 'The van of ' || respondentname || ' came on day ' || i "
            u"from n, respondent",
        u"insert into actionplan (customerid, Date, Action, targetdate) "_s + numbers(50) +
            u"select custid, date('2020-01-01', '+' || i || ' days'), 'Call on the buyer, visit ' || i || "
            u"' of ' || custname, '2020-06-01' from customer, n",
    };
    cnnMain->BeginTrans();
    for (const QString& statement : statements)
        cnnMain->Execute(statement);
    cnnMain->CommitTrans();
}

/// The best of several runs, in milliseconds.
template <class Work> double timeOf(Work work) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

/// Reads the hits of all three sources.
int likePass(sqlite3* database, const QStringList& keywords) {
    int hits = 0;
    for (const SearchPass pass : {SearchPass::Objective, SearchPass::Descriptive, SearchPass::Action}) {
        const QByteArray sql = searchSql(pass, keywords).toUtf8();
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, sql.constData(), -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            ++hits;
        sqlite3_finalize(statement);
    }
    return hits;
}

void measure(sqlite3* database, const QString& words) {
    frmSearch& form = frmSearch::instance();
    form.Show();
    form.findChild<QLineEdit*>(u"txtKeyword"_s)->setText(words);
    auto* list = form.findChild<forms::ListView*>(u"lsvDtls"_s);
    int hits = 0;
    const double pass = timeOf([&] { hits = likePass(database, keywordsOf(words)); });
    const double search = timeOf([&] { form.toSplitKeywords(); });
    const double fill = timeOf([&] { form.toFillListView(); });
    std::vector<QStringList> rows;
    for (int row = 0; row < list->ListCount(); ++row)
        rows.push_back({list->Text(row), list->Text(row, 1), list->Text(row, 2), list->Text(row, 3)});
    const double show = timeOf([&] {
        list->Clear();
        list->setItems(rows);
        list->grab();
    });
    std::printf("%-24s %8d %9.1f %9.1f %6.2f %9.1f %9.1f\n", qPrintable(words), hits, pass, search,
                search / pass, fill, show);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir home;
    const QString path = home.filePath(u"Tallywell.mdb"_s);
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), path);
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    buildStore(argc > 1 ? std::atoi(argv[1]) : 2000);
    cnnMain->Execute(u"pragma synchronous = off"_s);
    sqlite3* database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    ado::registerTextRules(database);
    std::printf("milliseconds, best of 5, without waiting for the disk\n"
                "pass: the hits selected; search: work table filled (goal: 100,000 hits in 300)\n"
                "fill: list filled from the work table; show: rows set in the view and drawn\n\n"
                "keywords                     hits      pass    search  ratio      fill      show\n");
    for (const QString& words : {u"unheard"_s, u"buyer"_s, u"17 buyer"_s, u"unheard lorry goods"_s})
        measure(database, words);
    sqlite3_close(database);
    frmSearch::unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    cnnMain.reset();
    return 0;
}
