// SPDX-License-Identifier: GPL-3.0-or-later
// A store of many records: its forms open and save without a wait, and a save, a reading and an export that
// are killed part way leave what was saved before.
#include "exchange/reader.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "reference/frmCustomer.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/smalldisk.h"
#include "tests/support/storetest.h"
#include "tests/support/surveyfile.h"

#include <QElapsedTimer>

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

class BigStoreTest : public StoreTest {
protected:
    void fill(int customers, int questions) const {
        cnnMain->BeginTrans();
        const int acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        for (int i = 1; i < customers; ++i)
            addRespondent(addCustomer(u"Customer "_s + QString::number(i)), u"Someone"_s);
        const int survey = addSurvey(acme, date);
        const int price = addParameter(u"Price"_s);
        std::vector<int> all;
        SurveyFile filled{ann, survey, date, {}, {}};
        for (int i = 0; i < questions; ++i) {
            all.push_back(addQuestion(price, u"Question "_s + QString::number(i)));
            addScore(ann, all.back(), survey, date, 5, 5);
            filled.questions.emplace_back(all.back(), true);
            filled.entered[u'C' + QString::number(cellmap::firstRow + 2 * i)] = 7;
        }
        addQuestionnaire(ann, survey, all);
        cnnMain->CommitTrans();
        filled.saveAs(path(u"filled.xls"_s));
        bring(u"template.xls"_s);
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
        changeColumn(frmFeedBackObj::instance(), "grdDtls", 3, u"9"_s);
        frmFeedBackObj::instance().toSaveDtls();
    }
    static frmNewSurvey& editor() {
        frmSelectSurvey::instance().dtSDate()->setValue(date);
        frmNewSurvey::instance().toRefreshGrid();
        return frmNewSurvey::instance();
    }
    static void saveQuestionnaire() {
        control<forms::MSHFlexGrid>(editor(), "grdParamAndQuest")->RemoveItem(1);
        frmNewSurvey::instance().toSaveParamAndQuest();
    }
    static void readSurveyFile() { SurveyReader().read(homeDirectory() + u"/filled.xls"); }
    static void exportSurvey() {
        forms::messageSeat = [](const forms::Message& message) {
            return message.text.contains(u"overwrite") ? forms::Answer::Yes : forms::Answer::No;
        };
        editor().toWriteToExcelSheet();
    }
    static void exportUntilHalfWritten() {
        const SmallDisk disk(cnnMain->session()->handle());
        exportSurvey();
    }

    /// Saves in a process of its own that is killed at that change of a row or by its disk, or lives on.
    static bool killedWhile(void (*save)(), int atChange = 0) {
        cnnMain->Close();
        const pid_t child = fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_DFL);
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
        return WIFSIGNALED(status) && (WTERMSIG(status) == SIGKILL || WTERMSIG(status) == SIGXFSZ);
    }
};

TEST_F(BigStoreTest, formsOpenAndSaveWithoutAWait) {
    fill(2000, 500);
    const auto inTime = [](const char* what, int limit, const std::function<void()>& work) {
        QElapsedTimer clock;
        clock.start();
        work();
        QCoreApplication::processEvents();
        EXPECT_LT(clock.elapsed(), limit) << what;
    };
    inTime("customers open", 1500, [] { frmCustomer::instance().Show(); });
    inTime("customers save", 4000, saveCustomers);
    inTime("feedback opens", 2000, [] { frmFeedBackObj::instance().Show(); });
    inTime("feedback saves", 4000, saveFeedback);
    inTime("selection opens", 2000, [] { frmSelectSurvey::instance().Show(); });
    inTime("editor opens", 2000, [] { frmNewSurvey::instance().Show(); });
    inTime("editor saves", 4000, saveQuestionnaire);
}

TEST_F(BigStoreTest, aSaveIsThereAsAWholeOrNotAtAll) {
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

TEST_F(BigStoreTest, aHalfWrittenSurveyFileNeverStandsUnderItsName) {
    fill(many, many);
    const auto content = [this] {
        QFile file(path(u"111.xls"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    };
    EXPECT_TRUE(killedWhile(exportUntilHalfWritten));
    EXPECT_EQ(content(), "none");
    EXPECT_EQ(rows(u"select xlsfilename from log"_s), QStringList{u"111.xls"_s});
    EXPECT_FALSE(killedWhile(exportSurvey));
    const QByteArray whole = content();
    EXPECT_GT(whole.size(), many * 10);
    EXPECT_TRUE(killedWhile(exportUntilHalfWritten));
    EXPECT_EQ(content(), whole);
}

} // namespace
