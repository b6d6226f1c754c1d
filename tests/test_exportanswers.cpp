// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmExportAnswers.h"
#include "tests/support/surveytest.h"

namespace {
struct ExportAnswers : SurveyTest {
    /// Ann's questionnaire has the questions 4, 0 and 2, and she has answered 3 before it was taken out.
    /// Brown's respondent has answered on an earlier date. What nobody can see any more is stored, too.
    void SetUp() override {
        SurveyTest::SetUp();
        const int brown = addCustomer(u"Ärger, \"Brown\""_s);
        const int cora = addRespondent(brown, u"Cora"_s, {});
        const int gone = addRespondent(addCustomer(u"Gone"_s), u"Dan"_s);
        const int dropped = addQuestion(addParameter(u"Dropped"_s), u"Why?"_s);
        addStored(ann, today, {4, 0, 2});
        for (const auto& [respondent, asked, weightage, score] :
             {std::tuple(ann, 3, 2, 9), {ann, 2, 0, 0}, {ann, 0, 5, 8}, {bob, 1, 4, 0}, {bob, 4, 1, 1}})
            addScore(respondent, question[asked], 1, today, weightage, score);
        addScore(cora, question[0], 2, today.addDays(-9), 3, 10);
        addScore(gone, question[0], 3, today, 1, 1);
        addScore(ann, dropped, 1, today, 1, 1);
        addWords(ann, question[4], 1, today, u"=A,\nbut"_s + QString(3000, u'ö'), 3);
        addWords(bob, question[4], 1, today, {}, 3);
        addSurvey(brown, today.addDays(30));
        run(u"delete * from customer where custname='Gone'"_s);
        run(u"delete * from parameter where parametername='Dropped'"_s);
        frmExportAnswers::instance().Show();
    }
    static QString done() { return control<QLabel>(frmExportAnswers::instance(), "lblDone")->text(); }
    QString written() const { return QString::fromUtf8(contentOf(path(u"out.csv"_s))); }
};

const QString head =
    u"Customer,Respondent,Designation,Survey Date,Parameter,Question,Kind,Weightage,Score,Answer\r\n"_s;
const QString annsAndBobs = u"Acme,Ann,Buyer,05/03/2024,Quality,What else?,Descriptive,3,,\"'=A,\nbut"_s +
                            QString(3000, u'ö') +
                            u"\"\r\nAcme,Ann,Buyer,05/03/2024,Delivery,On time?,Score,5,8,\r\n"
                            "Acme,Ann,Buyer,05/03/2024,Quality,Overall?,Score,,,\r\n"
                            "Acme,Ann,Buyer,05/03/2024,Quality,Sturdy?,Score,2,9,\r\n"
                            "Acme,Bob,Buyer,05/03/2024,Delivery,Overall?,Score,4,,\r\n"
                            "Acme,Bob,Buyer,05/03/2024,Quality,What else?,Descriptive,3,,\r\n"_s;
const QString coras = u"\"Ärger, \"\"Brown\"\"\",Cora,,25/02/2024,Delivery,On time?,Score,3,10,\r\n"_s;

TEST_F(ExportAnswers, aRowForEachAnswerInOrder) {
    frmExportAnswers& form = frmExportAnswers::instance();
    auto* customers = control<forms::ListBox>(form, "lstCustomers");
    EXPECT_EQ(control<forms::DTPicker>(form, "dtTo")->Value(), today.addDays(30)) << "the latest survey";
    const struct {
        const char* about;
        int entry; ///< in the list; -1: all
        QDate first, last;
        QString expected; ///< empty: nothing is written
    } cases[] = {
        {"all", -1, today.addDays(-9), today, head + annsAndBobs + coras},
        {"one customer", 1, today.addDays(-9), today, head + coras},
        {"one day", -1, today, today, head + annsAndBobs},
        {"a customer without answers then", 1, today, today, {}},
    };
    named = path(u"out.csv"_s);
    for (const auto& given : cases) {
        SCOPED_TRACE(given.about);
        writeFile(path(u"out.csv"_s), "old");
        if (given.entry < 0)
            press(form, "cmdAll");
        else
            clickEntry(form, "lstCustomers", given.entry);
        control<forms::DTPicker>(form, "dtFrom")->setValue(given.first);
        control<forms::DTPicker>(form, "dtTo")->setValue(given.last);
        if (given.expected.isEmpty())
            messages.expectInformation(
                u"There are no answers of these customers in this period. Nothing has been written."_s);
        customers->setFocus();
        key(Qt::Key_Return);
        EXPECT_EQ(written(), given.expected.isEmpty() ? u"old"_s : given.expected);
        const auto answers = given.expected.count(u"\r\n"_s) - 1;
        EXPECT_EQ(done(), answers < 1    ? QString()
                          : answers == 1 ? u"1 answer written to out.csv"_s
                                         : u"%1 answers written to out.csv"_s.arg(answers));
        expectIdle();
    }
    named = path(u"out"_s);
    press(form, "cmdAll");
    press(form, "cmdExport");
    EXPECT_TRUE(contentOf(path(u"out.xlsx"_s)).startsWith("PK"));
}

TEST_F(ExportAnswers, whatDoesNotEndLeavesTheOlderFile) {
    // More answers than a server hands over at once.
    runRaw(
        u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, weightage, score) "
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 900) "
        "select 1, 1, 1, '2024-03-05', 1, 1 from n, (select 1 union select 2 union select 3) as times"_s);
    frmExportAnswers& form = frmExportAnswers::instance();
    named = path(u"out.csv"_s);
    writeFile(path(u"out.csv"_s), "old");
    cancelAt({}, [&] { press(form, "cmdExport"); });
    EXPECT_EQ(done(), u"Cancelled. Nothing has been written."_s);
    EXPECT_EQ(written(), u"old"_s);
    whileLocked([&] { press(form, "cmdExport"); });
    EXPECT_EQ(written(), u"old"_s);
    press(form, "cmdExport");
    EXPECT_EQ(written().count(u"\r\n"_s), 2700 + 7);
    named = path(u"absent/out.csv"_s);
    messages.expectBeginning(u"The table could not be saved as "_s + named);
    press(form, "cmdExport");
    control<forms::ListBox>(form, "lstCustomers")->clearSelection();
    messages.expectInformation(u"Choose the customers whose answers are to be exported."_s);
    press(form, "cmdExport");
    expectIdle();
}
} // namespace
