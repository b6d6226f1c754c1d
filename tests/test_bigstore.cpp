// SPDX-License-Identifier: GPL-3.0-or-later
// A store of many records: saving is fast, and a save killed part way leaves the store as it was.
#include "exchange/files/homefile.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/sqlitesession.h"
#include "reference/frmCustomer.h"
#include "tests/support/surveytest.h"

#include <QElapsedTimer>

#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr int many = 250;
int changesLeft = 0;

void dieAtChange(void*, int, const char*, const char*, sqlite3_int64) {
    if (--changesLeft == 0)
        std::raise(SIGKILL);
}

struct BigStoreTest : SurveyTest {
    void fill(int customers, int questions) const {
        cnnMain->BeginTrans();
        for (int i = 1; i < customers; ++i)
            addRespondent(addCustomer(u"Customer "_s + QString::number(i)), u"Someone"_s);
        const int survey = addSurvey(acme, today);
        const int price = addParameter(u"Price"_s);
        std::vector<int> all;
        SurveyFile filled{ann, survey, today, {}, {}};
        for (int i = 0; i < questions; ++i) {
            all.push_back(addQuestion(price, u"Question "_s + QString::number(i)));
            addScore(ann, all.back(), survey, today, 5, 5);
            filled.questions.emplace_back(all.back(), true);
            filled.entered[u'C' + QString::number(cellmap::firstRow + 2 * i)] = 7;
        }
        addQuestionnaire(ann, survey, all);
        cnnMain->CommitTrans();
        filled.saveAs(path(u"filled.xls"_s));
    }

    static void changeColumn(QWidget& form, const char* name, int column, const QString& text) {
        auto* changed = control<forms::MSHFlexGrid>(form, name);
        for (int row = 1; row < changed->Rows(); ++row)
            changed->setTextMatrix(row, column, text);
    }
    static void saveCustomers() {
        changeColumn(frmCustomer::instance(), "grdCustomerDtls", 2, u"New address"_s);
        frmCustomer::instance().toSaveCustomerDtls();
    }
    static void saveFeedback() {
        changeColumn(frmFeedBackObj::instance(), "grdDtls", 3, u"9"_s);
        frmFeedBackObj::instance().toSaveDtls();
    }
    static void saveQuestionnaire() {
        frmNewSurvey::instance().toRefreshGrid();
        grid()->RemoveItem(1);
        frmNewSurvey::instance().toSaveParamAndQuest();
    }
    static void readSurveyFile() { ::readSurveyFile(homePath(u"filled.xls"_s)); }
    /// Whether a child process that runs `save` was killed at its `atChange`-th row change (0: never).
    static bool killedWhile(void (*save)(), int atChange = 0) {
        cnnMain->Close();
        const pid_t child = fork();
        if (child == 0) {
            toOpenConnection();
            // Forces writes to the disk long before the commit, as a big save would.
            sqlite3_exec(ado::databaseOf(*cnnMain), "pragma cache_size = 2", nullptr, nullptr, nullptr);
            changesLeft = atChange;
            sqlite3_update_hook(ado::databaseOf(*cnnMain), dieAtChange, nullptr);
            save();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        toOpenConnection();
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }
};

TEST_F(BigStoreTest, formsOpenAndSaveQuickly) {
    fill(2000, 500);
    for (void (*save)() : {saveCustomers, saveFeedback, saveQuestionnaire}) {
        QElapsedTimer clock;
        clock.start();
        save();
        EXPECT_LT(clock.elapsed(), 5000);
    }
}

TEST_F(BigStoreTest, aKilledSaveIsAllOrNothing) {
    fill(many, many);
    const std::tuple<const char*, void (*)(), QString> table[] = {
        {"customers", saveCustomers, u"select custid, custname, Address from customer order by custid"_s},
        {"feedback", saveFeedback, u"select questionid, score from feedbackobjective order by questionid"_s},
        {"survey file", readSurveyFile,
         u"select questionid, score from feedbackobjective order by questionid"_s},
        {"questionnaire", saveQuestionnaire,
         u"select questionid, responquesindex.order from responquesindex order by responquesindex.order"_s},
    };
    for (const auto& [name, save, content] : table) {
        SCOPED_TRACE(name);
        const QStringList before = rows(content);
        ASSERT_GE(before.size(), many);
        for (const int atChange : {1, many / 2, many - 1}) {
            EXPECT_TRUE(killedWhile(save, atChange)) << "at " << atChange;
            EXPECT_EQ(rows(content), before) << "at " << atChange;
            EXPECT_EQ(value(u"pragma integrity_check"_s), u"ok"_s);
        }
        EXPECT_FALSE(killedWhile(save));
        EXPECT_NE(rows(content), before) << "the save itself";
    }
}
} // namespace
