// SPDX-License-Identifier: GPL-3.0-or-later
// How often a command waits for a server: as often for ten times as many rows.
#include "analysis/frmCompareGroups.h"
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "exchange/files/readingundo.h"
#include "exchange/frmResponses.h"
#include "exchange/handover.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/datasources.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "reference/frmSegments.h"
#include "survey/frmEditExistingSurvey.h"
#include "tests/support/gridform.h"
#include "tests/support/relay.h"
#include "tests/support/surveyfile.h"

namespace {
/// Before the fixtures look for it.
const bool isOnServer = qputenv("GAUGEWELL_TEST_STORE", "server");

const QDate day{2024, 3, 5};

struct RoundTripsTest : StoreTest {
    void SetUp() override {
        ASSERT_TRUE(isOnServer);
        StoreTest::SetUp();
        addCustomer(u"Acme"_s);
        addRespondent(1, u"Ann"_s);
        addParameter(u"Delivery"_s);
        addSurvey(1, day);
        relay = std::make_unique<Relay>(ado::dataSource(u"gwl"_s)[u"SOCKET"_s]);
        cnnMain->ConnectionString = u"SOCKET="_s + relay->socket() + u";DATABASE=tally;UID=member;PWD=kvtwpa";
        cnnMain->Open();
    }
    void TearDown() override {
        StoreTest::TearDown();
        relay.reset();
    }
    /// Gives the catalogue and each list and grid that many rows.
    void growTo(int count) {
        cnnMain->BeginTrans();
        while (rowsNow < count) {
            const QString number = QString::number(++rowsNow);
            int asked = addQuestion(1, u"Question "_s + number);
            if (rowsNow > 1) {
                addCustomer(u"Customer "_s + number);
                addQuestionnaire(addRespondent(1, u"Respondent "_s + number), 1, {1});
                const bool isScore = rowsNow % 2 != 0;
                asked = addQuestion(addParameter(u"Parameter "_s + number), u"Other "_s + number, isScore);
                if (isScore)
                    addScore(1, asked, 1, day, 5, 7);
            }
            add(u"responquesindex"_s,
                {{"respondentid", 1}, {"questionid", asked}, {"surveyid", 1}, {"Order", rowsNow}});
        }
        cnnMain->CommitTrans();
    }
    /// Of the third run: in the first two the server compiles the statements that add and that change.
    long tripsOf(const std::function<void()>& command) const {
        command();
        command();
        const long before = relay->roundTrips();
        command();
        return relay->roundTrips() - before;
    }
    /// Other texts in all cells of a column.
    void change(QWidget& form, const char* grid, int column, const QString& text = {}) {
        auto* cells = control<forms::MSHFlexGrid>(form, grid);
        ASSERT_GE(cells->Rows(), rowsNow + 1);
        ++turn;
        for (int row = 1; row < cells->Rows(); ++row)
            cells->setTextMatrix(row, column,
                                 text.isEmpty() ? QString::number(1 + (row + turn) % 9)
                                                : text.arg(row).arg(turn));
    }
    void readFiles(int files, int questions) {
        std::vector<ReturnedFile> paths;
        SurveyFile file;
        int row = 14;
        for (int i = 1; i <= questions; ++i) {
            file.questions.emplace_back(i, true);
            file.entered[u'C' + QString::number(row)] = 1 + (i + ++turn) % 9;
            row += 2;
        }
        for (int i = 1; i <= files; ++i) {
            file.respondentid = i;
            paths.emplace_back(path(u"%1.xls"_s.arg(i)));
            file.saveAs(paths.back().path);
        }
        EXPECT_EQ(readSurveyFiles(paths).bad, QStringList());
    }

    std::unique_ptr<Relay> relay;
    int rowsNow = 0, turn = 0;
};

template <class... Forms> void unload() {
    (Forms::unload(), ...);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(RoundTripsTest, doNotGrowWithTheRows) {
    const auto reload = [](auto& form) -> auto& {
        using Form = std::remove_reference_t<decltype(form)>;
        unload<Form>();
        Form::instance().Show();
        return Form::instance();
    };
    const auto index = []() -> frmSatisfactionIndex& { return frmSatisfactionIndex::instance(); };
    const std::tuple<const char*, long, std::function<void()>> commands[] = {
        {"open customers", 2, [&] { reload(frmCustomer::instance()); }},
        {"save customers", 8,
         [&] {
             change(frmCustomer::instance(), "grdCustomerDtls", 3);
             press(frmCustomer::instance(), "cmdSaveCustomer");
         }},
        {"open parameters", 2, [&] { reload(frmParameter::instance()); }},
        {"save questions", 8,
         [&] {
             change(frmParameter::instance(), "grdQuestionDtls", 1, u"Question %1 (%2)"_s);
             press(frmParameter::instance(), "cmdSaveQuestion");
         }},
        {"open a questionnaire", 20, [&] { reload(frmEditExistingSurvey::instance()); }},
        {"save a questionnaire", 18,
         [&] {
             auto* grid = control<forms::MSHFlexGrid>(frmEditExistingSurvey::instance(), "grdParamAndQuest");
             for (const int column : {1, 2}) {
                 const QString first = grid->TextMatrix(1, column);
                 grid->setTextMatrix(1, column, grid->TextMatrix(2, column));
                 grid->setTextMatrix(2, column, first);
             }
             frmEditExistingSurvey::instance().toSaveParamAndQuest();
         }},
        {"open answers", 22, [&] { reload(frmFeedBackObj::instance()); }},
        {"save answers", 13,
         [&] {
             change(frmFeedBackObj::instance(), "grdDtls", 2);
             frmFeedBackObj::instance().toSaveDtls();
         }},
        {"read a file", 14, [&] { readFiles(1, rowsNow); }},
        {"read files", 14, [&] { readFiles(rowsNow, 1); }},
        {"undo a reading", 18,
         [&] {
             undoReading(value(u"select max(readingid) from reading where undone is null"_s).toInt(),
                         QDateTime(day, {12, 0}));
         }},
        {"open responses", 6, [&] { reload(frmResponses::instance()); }},
        {"hand over", 10,
         [&] {
             const std::vector<Response> all = findResponses({.from = day, .to = day});
             EXPECT_EQ(int(all.size()), rowsNow);
             EXPECT_TRUE(writeHandOver(all, {day, day.addDays(++turn)}));
         }},
        {"index", 20,
         [&] {
             reload(index());
             control<forms::DTPicker>(index(), "dtFrom")->setValue({2020, 1, 1});
             control<forms::ListBox>(index(), "lstParameter")->selectAll();
             EXPECT_EQ(control<forms::ListBox>(index(), "lstParameter")->SelCount(), rowsNow);
             press(index(), "cmdView");
         }},
        {"matrix", 21,
         [&] {
             auto& form = reload(frmPerformanceMatrix::instance());
             control<forms::ListBox>(form, "lstSurveyDates")->setListIndex(0);
             press(form, "cmdView");
         }},
        {"open and save groups", 23,
         [&] {
             auto& form = reload(frmSegments::instance());
             control<QTreeView>(form, "lsvRows")->selectAll();
             control<QComboBox>(form, "cboGroup")->setEditText(u"Group %1"_s.arg(++turn));
             press(form, "cmdSet");
             press(form, "cmdSave");
         }},
        {"compare groups", 11, [&] { press(reload(frmCompareGroups::instance()), "cmdView"); }},
    };
    constexpr int few = 5;
    std::vector<long> tripsOfFew;
    for (const int count : {few, 10 * few}) {
        growTo(count);
        // A form that is left becomes active again, and then asks the store as well.
        unload<frmCustomer, frmParameter, frmEditExistingSurvey, frmFeedBackObj, frmResponses,
               frmSatisfactionIndex, frmPerformanceMatrix, frmSegments, frmCompareGroups>();
        for (std::size_t i = 0; i < std::size(commands); ++i) {
            const auto& [name, most, command] = commands[i];
            SCOPED_TRACE(name);
            const long trips = tripsOf(command);
            EXPECT_LE(trips, most);
            if (count == few)
                tripsOfFew.push_back(trips);
            else
                EXPECT_EQ(trips, tripsOfFew[i]);
        }
    }
    // More answers than a server hands over at once, most of which a cancelled comparison does not fetch.
    run(u"delete * from segment"_s);
    run(u"insert into segment (custid, kind, name) values (1, 'Region', 'North')"_s);
    runRaw(
        u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, weightage, score) "
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 900) "
        "select respondentid, 1, 1, '2024-03-05', 1, 1 from n, respondent"_s);
    const GroupChoice choice{u"Region"_s, {u"North"_s}, {1}, day, day, Period::Year, false, false};
    const auto compare = [&](bool isToEnd) { readGroupPoints(choice, [=](int, int) { return isToEnd; }); };
    EXPECT_LT(tripsOf([&] { compare(false); }), tripsOf([&] { compare(true); }));
}
} // namespace
