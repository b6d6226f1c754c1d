// SPDX-License-Identifier: GPL-3.0-or-later
// A random walk through the running program: 20 seeds of 1,000 events, fewer on a server. Set
// GAUGEWELL_WALK_SEED (the first), GAUGEWELL_WALK_SEEDS (how many) and GAUGEWELL_WALK_EVENTS (per seed) to
// change it. A failure prints the seed, the step and the last events; the same seed fails again at the same
// step.
#include "core/MDIMain.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"
#include "tests/walk/walker.h"

#include <QDir>
#include <QHashFunctions>

using namespace Qt::StringLiterals;

namespace {

/// Three customers with respondents, surveys, answers, actions and survey files.
class RandomWalk : public SurveyTest, public ::testing::WithParamInterface<int> {
protected:
    Replaced<forms::nowHook> time{[] { return QDateTime({2024, 3, 5}, {12, 0}); }};

    void SetUp() override {
        QHashSeed::setDeterministicGlobalSeed();
        SurveyTest::SetUp();
        copyHomeFile(u"template.xls"_s);
        for (const QString& layout : QDir(QStringLiteral(GAUGEWELL_SOURCE "/home")).entryList({u"*.rpt"_s}))
            copyHomeFile(layout);
        const int brown = addCustomer(u"Brown"_s);
        const int cora = addRespondent(brown, u"Cora"_s);
        run(u"insert into respondent (custid, respondentdesignation, emailid) values (%1, 'Nameless', '')"_s
                .arg(brown));
        addCustomer(u"Empty"_s);
        addParameter(u"Unused"_s);
        addStored(ann, today, {0, 1, 2, 3, 4});
        addStored(bob, today, {3, 4, 0});
        addStored(ann, today.addMonths(-6), {0, 2});
        addQuestionnaire(cora, addSurvey(brown, today), question);
        for (const int respondent : {ann, bob}) {
            for (const int asked : {question[0], question[3]})
                addScore(respondent, asked, 1, today, 4 + asked, 12 - respondent);
        }
        runRaw(
            u"insert into actionplan (customerid, Date, Action, targetdate, Status) "
            "select custid, planned, 'Call', '2024-03-05', 0 from customer, "
            "(select '2024-01-10' as planned union select '2024-02-10') as days where custname <> 'Empty'"_s);
        for (const int respondent : {ann, bob}) {
            SurveyFile{.respondentid = respondent,
                       .date = today,
                       .questions = {{question[0], true}, {question[4], false}},
                       .entered = {{u"C14"_s, 7}, {u"D14"_s, 9}}}
                .saveAs(path(u"file%1.xls"_s.arg(respondent)));
        }
        runRaw(
            u"insert into log (custname, respname, respid, xlsfilename, sdate, surveyid) "
            "select 'Acme', respondentname, respondentid, 'file' || respondentid || '.xls', '2024-03-05', 1 "
            "from respondent where custid = 1"_s);
    }
};

int setting(const char* variable, int otherwise) {
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : otherwise;
}

TEST_P(RandomWalk, everyRowKeepsItsOwner) {
    const int events = setting("GAUGEWELL_WALK_EVENTS", 1000); // after more, little is left in the store
    const QString fault = walk::Walker(GetParam()).run(events);
    EXPECT_TRUE(fault.isEmpty()) << fault.toStdString();
}

const int firstSeed = setting("GAUGEWELL_WALK_SEED", 1);
INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalk,
                         ::testing::Range(firstSeed, firstSeed + setting("GAUGEWELL_WALK_SEEDS", 20)));

} // namespace
