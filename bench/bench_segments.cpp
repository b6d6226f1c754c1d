// SPDX-License-Identifier: GPL-3.0-or-later
// The figures of one of two groups of 1,000 customers, 500,000 answers, in a store of 2,000 customers and
// 1,000,000 answers. Bound: one pass of the SQLite C API over the same rows. Opening the windows, also with
// 20,000 respondents, and saving 1,000 groups.
#include "analysis/figures/grouppoints.h"
#include "analysis/figures/performancematrix.h"
#include "analysis/frmCompareGroups.h"
#include "bench/bigstore.h"
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "platform/ado/casefold.h"
#include "platform/forms/lists.h"
#include "reference/frmSegments.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeView>

#include <algorithm>
#include <cstdio>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// The median of an odd number of runs, in milliseconds.
template <class Work> double timeOf(Work work, int runs = 7) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// Reads the rows behind a group by the C API and returns their number.
int pass(sqlite3* database) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(
        database,
        "select feedbackobjective.respondentid, questions.paramid, surveydate, weightage, score from "
        "customer "
        "cross join respondent on respondent.custid=customer.custid "
        "cross join feedbackobjective on feedbackobjective.respondentid=respondent.respondentid "
        "cross join questions on questions.questionid=feedbackobjective.questionid "
        "where exists (select 1 from segment where segment.custid=customer.custid and kind='Region' and name "
        "in ('North')) and surveydate between '2020-01-01' and '2029-12-31' and questions.Type<>0 and "
        "questions.paramid in (1,2,3,4,5,6,7,8,9,10) order by customer.custid, respondent.respondentid, "
        "feedbackobjective.questionid, surveydate",
        -1, &statement, nullptr);
    int rows = 0;
    qlonglong read = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
        for (const int column : {0, 1, 3, 4})
            read += sqlite3_column_int64(statement, column);
        read += sqlite3_column_text(statement, 2)[9];
    }
    sqlite3_finalize(statement);
    return read > 0 ? rows : 0;
}

void build() {
    buildStore(2000);
    cnnMain->BeginTrans();
    run(u"insert into segment (custid, kind, name) select custid, 'Region', "
        "case when custid <= 1000 then 'North' else 'South' end from customer"_s);
    cnnMain->CommitTrans();
}

void measureFigures(const QString& path) {
    GroupChoice choice{.kind = u"Region"_s,
                       .groups = {u"North"_s},
                       .paramids = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                       .first = {2020, 1, 1},
                       .last = {2029, 12, 31}};
    const auto goOn = [](int, int) { return true; };
    sqlite3* database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    ado::registerTextRules(database);
    int rows = 0;
    const double bound = timeOf([&] { rows = pass(database); });
    sqlite3_close(database);
    double sum = 0;
    const double index = timeOf([&] {
        const std::optional<std::vector<GroupPoint>> points = readGroupPoints(choice, goOn);
        for (const GroupPoint& point : *points)
            sum += double(groupIndex(point.answers));
    });
    choice.period = Period::Whole;
    choice.isPerParameter = true;
    const double matrix = timeOf([&] {
        const std::optional<std::vector<GroupPoint>> points = readGroupPoints(choice, goOn);
        for (const GroupPoint& point : *points)
            sum += groupMeans(point.answers)->score;
    });
    choice.isWithAsked = true;
    const double asked = timeOf([&] { sum += double(readGroupPoints(choice, goOn)->size()); });
    std::printf(
        "%d answers: one pass %.0f ms; index %.0f ms, %.2f times; matrix %.0f ms, %.2f times, with who was "
        "asked %.0f ms (%.0f)\n",
        rows, bound, index, index / bound, matrix, matrix / bound, asked, sum);
}

template <class FormClass> double opening() {
    return timeOf([] {
        FormClass::instance().Show();
        QCoreApplication::processEvents();
        FormClass::unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

void measureForms() {
    frmCompareGroups& compare = frmCompareGroups::instance();
    compare.Show();
    QCoreApplication::processEvents();
    const double view = timeOf([&] {
        compare.findChild<QAbstractButton*>(u"cmdView"_s)->click();
        QCoreApplication::processEvents();
    });
    frmCompareGroups::unload();
    std::printf("View of both groups, 1,000,000 answers, to the painted chart: %.0f ms\n", view);
    std::printf("opening with 4,000 respondents: segments %.0f ms, compare groups %.0f ms\n",
                opening<frmSegments>(), opening<frmCompareGroups>());
    run(u"insert into respondent (custid, respondentname) "_s + numbers(8) +
        u"select custid, 'Further ' || i from customer, n");
    std::printf("opening with 20,000 respondents: segments %.0f ms, compare groups %.0f ms\n",
                opening<frmSegments>(), opening<frmCompareGroups>());
    frmSegments& form = frmSegments::instance();
    form.Show();
    auto* find = form.findChild<QLineEdit*>(u"txtFind"_s);
    const double found = timeOf([&] {
        find->setText(find->text() == u"er 1" ? u"er 10"_s : u"er 1"_s);
        QCoreApplication::processEvents();
    });
    find->setText(u"Customer 1"_s);
    auto* list = form.findChild<QTreeView*>(u"lsvRows"_s);
    auto* group = form.findChild<forms::ComboBox*>(u"cboGroup"_s);
    list->selectAll();
    const auto chosen = list->selectionModel()->selectedRows().size();
    bool isEven = false;
    const auto set = [&] {
        group->setEditText(std::exchange(isEven, !isEven) ? u"Even"_s : u"Odd"_s);
        form.findChild<QAbstractButton*>(u"cmdSet"_s)->click();
    };
    const double given = timeOf(set);
    const double saved = timeOf([&] {
        set();
        form.findChild<QAbstractButton*>(u"cmdSave"_s)->click();
    });
    std::printf("searching %.0f ms; giving %lld rows a group %.0f ms, and saving that %.0f ms\n", found,
                qlonglong(chosen), given, saved);
    frmSegments::unload();
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
    build();
    measureFigures(path);
    measureForms();
    cnnMain.reset();
    return 0;
}
