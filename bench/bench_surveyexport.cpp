// SPDX-License-Identifier: GPL-3.0-or-later
// Exports a survey of 100 questions, each with marks of five earlier surveys, from the question about
// overwriting to the file and its row in the register. Bound: one synced write of the same bytes. Writes the
// survey file to SURVEYFILE, for exportpeers.py.
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "exchange/surveyexport.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int surveys = 6;
constexpr int questions = 100;

void buildStore() {
    const auto run = [](const QString& sql) { cnnMain->Execute(sql); };
    const QString numbers =
        u"with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) "_s;
    cnnMain->BeginTrans();
    run(u"insert into customer (custid, custname, Address) values (1, 'Acme', ' ')"_s);
    run(u"insert into respondent (respondentid, custid, respondentname) values (1, 1, 'Ann')"_s);
    run(numbers.arg(10) +
        u"insert into parameter (paramid, parametername) select i, 'Parameter ' || i from n");
    run(numbers.arg(questions) +
        u"insert into questions (questionid, paramid, question, Type) select i, i % 10 + "
        u"1, i || '. How satisfied are you with the time our deliveries take?', -1 from n");
    run(numbers.arg(surveys) +
        u"insert into survey (surveyid, custid, sdate) select i, 1, date('2020-01-01', '+' "
        u"|| i || ' months') from n");
    run(u"insert into responquesindex select 1, questionid, surveyid, questionid from survey, questions"_s);
    run(u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage) "
        u"select 1, questionid, surveyid, sdate, 1 + questionid % 10, 1 + surveyid from survey, questions"_s);
    cnnMain->CommitTrans();
}

template <class Work> double bestOf(int rounds, Work work) {
    double best = 1e9;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), home.filePath(u"Tallywell.mdb"_s));
    if (argc < 2 || !QFile::copy(QString::fromLocal8Bit(argv[1]), home.filePath(u"template.xls"_s))) {
        std::fputs("usage: bench_surveyexport TEMPLATE [SURVEYFILE]\n", stderr);
        return 2;
    }
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    buildStore();
    forms::messageHook = [](const forms::Message&) { return forms::Answer::Yes; }; // overwrites
    ExportResult result;
    const SurveyContext survey{u"Acme"_s, u"Ann"_s, u"01/07/2020"_s};
    const double whole = bestOf(25, [&] { result = exportSurvey({.survey = survey}); });
    const double marks =
        bestOf(25, [&] { toGetTheLastScoreAndWeightage(findSurveyKey(survey), HistoryOrder::OldestFirst); });
    QFile written(home.filePath(result.fileName));
    if (!result.isFinished || !written.open(QIODevice::ReadOnly)) {
        std::fputs("the export has failed\n", stderr);
        return 1;
    }
    const QByteArray bytes = written.readAll();
    const double bound = bestOf(25, [&] {
        QSaveFile plain(home.filePath(u"plain"_s));
        if (plain.open(QIODevice::WriteOnly) && plain.write(bytes) == bytes.size())
            plain.commit();
    });
    std::printf("milliseconds, best of 25 (goal: the export under 4)\n"
                "write of the same %lld bytes, synced %8.2f\n"
                "last marks                          %8.2f\n"
                "export of 100 questions             %8.2f\n",
                static_cast<long long>(bytes.size()), bound, marks, whole);
    return argc < 3 || QFile::copy(written.fileName(), QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}
