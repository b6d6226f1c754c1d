// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed in the middle of a save; what was saved before stands whole when the store is opened
// again.
#include "feedback/frmFeedBackObj.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "reference/frmCustomer.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/storetest.h"

#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int many = 250;
const QDate date{2024, 3, 5};

int changesLeft = 0;

void dieAtChange(void*, int, const char*, const char*, sqlite3_int64) {
    if (--changesLeft == 0)
        std::raise(SIGKILL);
}

class KilledTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        cnnMain->BeginTrans();
        const int acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int survey = addSurvey(acme, date);
        const int price = addParameter(u"Price"_s);
        std::vector<int> questions;
        for (int i = 0; i < many; ++i) {
            addCustomer(u"Customer "_s + QString::number(i));
            questions.push_back(addQuestion(price, u"Question "_s + QString::number(i)));
            addScore(ann, questions.back(), survey, date, 5, 5);
        }
        addQuestionnaire(ann, survey, questions);
        cnnMain->CommitTrans();
    }

    static void changeColumn(QWidget& form, const char* name, int column, const QString& text) {
        auto* grid = control<forms::MSHFlexGrid>(form, name);
        for (int row = 1; row < grid->Rows(); ++row)
            grid->setTextMatrix(row, column, text);
    }
    static void saveCustomers() {
        changeColumn(frmCustomer::instance(), "grdCustomerDtls", 2, u"New address"_s);
        frmCustomer::instance().toSaveCustomerDtls();
    }
    static void saveFeedback() {
        frmFeedBackObj& form = frmFeedBackObj::instance();
        changeColumn(form, "grdDtls", 3, u"9"_s);
        form.toSaveDtls();
    }
    static void saveQuestionnaire() {
        frmSelectSurvey::instance().dtSDate()->setValue(date);
        frmNewSurvey& editor = frmNewSurvey::instance();
        editor.toRefreshGrid();
        control<forms::MSHFlexGrid>(editor, "grdParamAndQuest")->RemoveItem(1);
        editor.toSaveParamAndQuest();
    }

    /// Saves in a process of its own that is killed at that change of a row, or lives on with 0. True when it
    /// was killed.
    static bool killedWhile(void (*save)(), int atChange) {
        cnnMain->Close();
        const pid_t child = fork();
        if (child == 0) {
            toOpenConnection();
            // So small a cache writes to the disk long before the commit, as a big save would.
            sqlite3_exec(cnnMain->session()->handle(), "pragma cache_size = 2", nullptr, nullptr, nullptr);
            changesLeft = atChange;
            sqlite3_update_hook(cnnMain->session()->handle(), dieAtChange, nullptr);
            save();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        toOpenConnection();
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }
};

TEST_F(KilledTest, aSaveIsThereAsAWholeOrNotAtAll) {
    struct Row {
        const char* name;
        void (*save)();
        const char16_t* content;
    };
    const Row table[] = {
        {"customers", saveCustomers, u"select custid, custname, Address from customer order by custid"},
        {"feedback", saveFeedback, u"select questionid, score from feedbackobjective order by questionid"},
        {"questionnaire", saveQuestionnaire,
         u"select questionid, responquesindex.order from responquesindex order by responquesindex.order"},
    };
    for (const Row& row : table) {
        const QString content = QString::fromUtf16(row.content);
        const QStringList before = rows(content);
        ASSERT_GE(before.size(), many) << row.name;
        for (const int atChange : {1, many / 2, many - 1}) {
            EXPECT_TRUE(killedWhile(row.save, atChange)) << row.name << " at " << atChange;
            EXPECT_EQ(rows(content), before) << row.name << " at " << atChange;
            EXPECT_EQ(value(u"pragma integrity_check"_s), u"ok"_s) << row.name;
        }
        EXPECT_FALSE(killedWhile(row.save, 0)) << row.name;
        EXPECT_NE(rows(content), before) << row.name << ": the save itself";
    }
}

} // namespace
