// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed in the middle of a save, of reading a survey file and of writing one; what was saved
// before stands whole when the store is opened again.
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
        SurveyFile filled{ann, survey, date, {}, {}};
        for (int i = 0; i < many; ++i) {
            addCustomer(u"Customer "_s + QString::number(i));
            questions.push_back(addQuestion(price, u"Question "_s + QString::number(i)));
            addScore(ann, questions.back(), survey, date, 5, 5);
            filled.questions.emplace_back(questions.back(), true);
            filled.entered[u'C' + QString::number(cellmap::firstRow + 2 * i)] = 7;
        }
        addQuestionnaire(ann, survey, questions);
        cnnMain->CommitTrans();
        filled.saveAs(home() + u"/filled.xls");
        ASSERT_TRUE(
            QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"), home() + u"/template.xls"));
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
    static frmNewSurvey& editor() {
        frmSelectSurvey::instance().dtSDate()->setValue(date);
        frmNewSurvey::instance().toRefreshGrid();
        return frmNewSurvey::instance();
    }
    static void saveQuestionnaire() {
        frmNewSurvey& form = editor();
        control<forms::MSHFlexGrid>(form, "grdParamAndQuest")->RemoveItem(1);
        form.toSaveParamAndQuest();
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

    /// Saves in a process of its own that is killed at that change of a row or by its disk, or lives on. True
    /// when it was killed.
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
        EXPECT_EQ(value(u"pragma integrity_check"_s), u"ok"_s);
        return WIFSIGNALED(status) && (WTERMSIG(status) == SIGKILL || WTERMSIG(status) == SIGXFSZ);
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
        {"survey file", readSurveyFile,
         u"select questionid, score from feedbackobjective order by questionid"},
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
        }
        EXPECT_FALSE(killedWhile(row.save)) << row.name;
        EXPECT_NE(rows(content), before) << row.name << ": the save itself";
    }
}

TEST_F(KilledTest, aHalfWrittenSurveyFileNeverStandsUnderItsName) {
    const auto content = [this] {
        QFile file(home() + u"/111.xls");
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
