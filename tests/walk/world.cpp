// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/world.h"

#include <QHashFunctions>

namespace walk {
void World::SetUp() {
    QHashSeed::setDeterministicGlobalSeed();
    SurveyTest::SetUp();
    copyHomeFile(u"template.xls"_s);
    for (const QString& layout : QDir(QStringLiteral(GAUGEWELL_SOURCE "/home")).entryList({u"*.rpt"_s}))
        copyHomeFile(layout);
    const int brown = addCustomer(u"Brown"_s);
    const int cora = addRespondent(brown, u"Cora"_s);
    run(u"insert into respondent (custid, respondentdesignation, emailid) values (%1, 'Nameless', '')"_s.arg(
        brown));
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
    runRaw(u"insert into actionplan (customerid, Date, Action, targetdate, Status) "
           "select custid, planned, 'Call', '2024-03-05', 0 from customer, "
           "(select '2024-01-10' as planned union select '2024-02-10') as days where custname <> 'Empty'"_s);
    for (const char* group : {"null, 'Region', 'North'", "2, 'Role', 'Buyer'"})
        runRaw(u"insert into segment (custid, respondentid, kind, name) values (1, "_s +
               QLatin1StringView(group) + u')');
    for (const int respondent : {ann, bob})
        saveFile(u"file%1.xls"_s.arg(respondent), respondent, {{"C14", 7}, {"D14", 9}});
    runRaw(u"insert into log (custname, respname, respid, xlsfilename, sdate, surveyid) "
           "select 'Acme', respondentname, respondentid, 'file' || respondentid || '.xls', '2024-03-05', 1 "
           "from respondent where custid = 1"_s);
}
} // namespace walk
