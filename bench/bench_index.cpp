// SPDX-License-Identifier: GPL-3.0-or-later
// The Satisfaction Index of one customer, 10 parameters on 20 dates (4,000 answers), and the Performance
// Matrix of one of these dates (200 answers), in a small store and in one of 2,000 customers and 1,000,000
// answers. Bound: one pass of the SQLite C API over the same answers. Saving a questionnaire of 50 questions;
// bound: the same delete and inserts by the C API.
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "bench/bigstore.h"
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "platform/ado/casefold.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "survey/questionnaires/questionnaire.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// The best of 25 runs, in milliseconds.
template <class Work> double timeOf(Work work) {
    double best = 1e9;
    for (int i = 0; i < 25; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

class Bound {
public:
    Bound(const QString& path, const QByteArray& sql) {
        sqlite3_open(path.toUtf8().constData(), &database);
        ado::registerTextRules(database);
        sqlite3_prepare_v2(database, sql.constData(), -1, &statement, nullptr);
    }
    Bound(const Bound&) = delete;
    Bound& operator=(const Bound&) = delete;
    ~Bound() {
        sqlite3_finalize(statement);
        sqlite3_close(database);
    }

    /// Reads all answers and returns their number.
    int pass() {
        int rows = 0;
        for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
            for (int column = 0; column < 3; ++column)
                read += sqlite3_column_bytes(statement, column);
            read += sqlite3_column_int64(statement, 3) + sqlite3_column_int64(statement, 4);
        }
        sqlite3_reset(statement);
        return rows;
    }

private:
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    qlonglong read = 0;
};

frmSatisfactionIndex& chosen() {
    frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
    form.findChild<forms::ComboBox*>(u"cmdCustomerName"_s)->setListIndex(measured - 1);
    form.findChild<forms::DTPicker*>(u"dtFrom"_s)->setValue({2020, 1, 1});
    form.findChild<forms::DTPicker*>(u"dtTo"_s)->setValue({2029, 12, 31});
    form.findChild<forms::ListBox*>(u"lstParameter"_s)->selectAll();
    return form;
}

QString storeSize() {
    ado::Recordset all(u"select count(*) from feedbackobjective"_s, *cnnMain);
    return all.FieldAt(0).Text();
}

/// Rewrites the questionnaire of the customer's first respondent and survey: a delete and 50 inserts,
/// prepared, in one transaction.
class SavingBound {
public:
    explicit SavingBound(const QString& path) {
        sqlite3_open(path.toUtf8().constData(), &database);
        ado::registerTextRules(database);
        sqlite3_exec(database, "pragma synchronous = off", nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(database, "delete from responquesindex where respondentid=71 and surveyid=701", -1,
                           &remove, nullptr);
        sqlite3_prepare_v2(database,
                           "insert into responquesindex (respondentid, questionid, surveyid, \"Order\") "
                           "values (71, ?1, 701, ?1)",
                           -1, &insert, nullptr);
    }
    SavingBound(const SavingBound&) = delete;
    SavingBound& operator=(const SavingBound&) = delete;
    ~SavingBound() {
        sqlite3_finalize(remove);
        sqlite3_finalize(insert);
        sqlite3_close(database);
    }
    void save() {
        sqlite3_exec(database, "begin", nullptr, nullptr, nullptr);
        sqlite3_step(remove);
        sqlite3_reset(remove);
        for (int i = 1; i <= 50; ++i) {
            sqlite3_bind_int(insert, 1, i);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_exec(database, "commit", nullptr, nullptr, nullptr);
    }

private:
    sqlite3* database = nullptr;
    sqlite3_stmt* remove = nullptr;
    sqlite3_stmt* insert = nullptr;
};

void measureSaving(const QString& path) {
    const SurveyContext survey{u"Customer 7"_s, u"Respondent 1"_s, u"31/01/2020"_s};
    std::vector<ChosenQuestion> questions;
    for (int i = 0; i < 50; ++i)
        questions.push_back({u"Parameter %1"_s.arg(i / 5 + 1),
                             u"Question %1 of Parameter %2"_s.arg(i % 5 + 1).arg(i / 5 + 1)});
    const double saved = timeOf([&] {
        cnnMain->BeginTrans();
        SurveyKey key = requireSurveyKey(survey);
        key.surveyid = addSurvey(survey).surveyid;
        rewriteQuestionnaire(key, questions);
        cnnMain->CommitTrans();
    });
    SavingBound bound(path);
    const double least = timeOf([&] { bound.save(); });
    std::printf("%9s %8s %8d %7.3f %7.3f %6.2f\n", "saving", "", 50, least, saved, saved / least);
}

/// From View to the painted matrix, without and with all reading aids.
void measureAids(frmPerformanceMatrix& matrix) {
    matrix.Show();
    const auto click = [&] {
        matrix.findChild<QAbstractButton*>(u"cmdView"_s)->click();
        QCoreApplication::processEvents();
    };
    const auto toggle = [&] {
        for (const auto* box : {"chkNames", "chkGaps", "chkDiagonal"})
            matrix.findChild<QAbstractButton*>(QLatin1StringView(box))->click();
    };
    const double painted = timeOf(click);
    toggle();
    auto* compared = matrix.findChild<QComboBox*>(u"cmbCompared"_s);
    compared->setCurrentIndex(1);
    Q_EMIT compared->activated(1);
    const double withAids = timeOf(click);
    toggle();
    std::printf("%9s %41.2f ms from View to the painted matrix, with all reading aids %.2f times that\n",
                "painted", painted, withAids / painted);
}

void measure(int customers) {
    const QTemporaryDir home;
    const QString path = home.filePath(u"Tallywell.mdb"_s);
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), path);
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return;
    toOpenConnection();
    buildStore(customers);

    int answers = 0;
    const QByteArray answersOf = "select custname, parametername, surveydate, weightage, score from objquery "
                                 "where custname = 'Customer 7' and surveydate ";
    Bound bound(path, answersOf + "between '2020-01-01' and '2029-12-31'");
    const double pass = timeOf([&] { answers = bound.pass(); });
    frmSatisfactionIndex& form = chosen();
    const double fill = timeOf([&] { form.toFillTable(); });
    run(u"pragma synchronous = off"_s);
    const double work = timeOf([&] { form.toFillTable(); });
    const double view = timeOf([&] {
        form.toFillTable();
        form.toCheckIndexRecords();
        form.toFillSurveyDateOrder();
        form.toPrepareChartRows();
        form.toDrawChart();
    });
    form.Show();
    chosen();
    const auto click = [&] {
        form.findChild<QAbstractButton*>(u"cmdView"_s)->click();
        QCoreApplication::processEvents();
    };
    auto* basisSwitch = form.findChild<QAbstractButton*>(u"chkBasis"_s);
    const double painted = timeOf(click);
    basisSwitch->setChecked(true);
    const double withBasis = timeOf(click);
    basisSwitch->setChecked(false);
    run(u"insert into target (paramid, target) select paramid, 5.5 from parameter"_s);
    auto* targetSwitch = form.findChild<QAbstractButton*>(u"chkTargets"_s);
    targetSwitch->setChecked(true);
    const double withTargets = timeOf(click);
    targetSwitch->setChecked(false);
    const double names = timeOf([&] { form.toFillParameterName(); });
    std::printf("%9d %8s %8d %7.2f %7.2f %6.2f %7.2f %7.2f %7.2f\n", customers, qPrintable(storeSize()),
                answers, pass, work, work / pass, fill, view, names);
    std::printf(
        "%9s %41.2f ms from View to the painted chart, with its basis %.2f times that, with targets %.2f\n",
        "painted", painted, withBasis / painted, withTargets / painted);
    frmSatisfactionIndex::unload();

    Bound oneDate(path, answersOf + "= '2020-01-31'");
    const double datePass = timeOf([&] { answers = oneDate.pass(); });
    frmPerformanceMatrix& matrix = frmPerformanceMatrix::instance();
    matrix.findChild<forms::ComboBox*>(u"cmdCustomerName"_s)->setListIndex(measured - 1);
    matrix.findChild<forms::ListBox*>(u"lstSurveyDates"_s)->setListIndex(0);
    const double matrixFill = timeOf([&] { matrix.toFillTable(); });
    std::printf("%9s %8s %8d %7.3f %7.3f %6.2f\n", "matrix", "", answers, datePass, matrixFill,
                matrixFill / datePass);
    measureAids(matrix);
    frmPerformanceMatrix::unload();
    measureSaving(path);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    cnnMain.reset();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::printf("milliseconds, best of 25; all but 'synced' without waiting for the disk\n"
                "pass: all answers read once; fill: linetable filled (goal: ratio at most 2, and flat)\n"
                "view: fill, dates, chart; names: the list of parameters; matrix: scattertable filled (1.5); "
                "saving: 50 questions (2)\n\n"
                "customers    store  answers    pass    fill  ratio  synced    view   names\n");
    if (argc > 1) { // numbers of customers, for profiling
        for (int i = 1; i < argc; ++i)
            measure(std::atoi(argv[i]));
        return 0;
    }
    measure(20);
    measure(2000);
    return 0;
}
