// SPDX-License-Identifier: GPL-3.0-or-later
// The server, or the connection to it, is lost between commands and amid them.
#include "analysis/frmSatisfactionIndex.h"
#include "core/store/storecopy.h"
#include "core/store/transaction.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/datasources.h"
#include "platform/forms/commondialog.h"
#include "tests/support/agreed.h"
#include "tests/support/certificates.h"
#include "tests/support/enginestest.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

#include <dlfcn.h>
#include <mysql.h>

using namespace Qt::StringLiterals;

namespace {

int statementsSeen = 0;
int failingStatement = 0; ///< before it the fault happens; 0: never
std::function<void()> fault;

void countStatement() {
    if (++statementsSeen == failingStatement)
        fault();
}

template <class Function> Function libraryFunction(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The client library's functions by which a program's commands reach the server.
extern "C" int STDCALL mysql_stmt_execute(MYSQL_STMT* statement) {
    countStatement();
    static const auto original = libraryFunction<int (*)(MYSQL_STMT*)>("mysql_stmt_execute");
    return original(statement);
}
extern "C" int STDCALL mysql_real_query(MYSQL* connection, const char* text, unsigned long length) {
    countStatement();
    static const auto original =
        libraryFunction<int (*)(MYSQL*, const char*, unsigned long)>("mysql_real_query");
    return original(connection, text, length);
}

namespace {

/// Ann has the questions 0 and 4 of the catalogue today; three files hold her answers. The data source leads
/// to two hosts, of which one runs at a time on the same data.
class ServerLossTest : public SurveyTest {
protected:
    static void SetUpTestSuite() {
        certificates = std::make_unique<Certificates>();
        ports = {freePort(), freePort()};
        host = std::make_unique<PrivateServer>(options(0));
    }
    static void TearDownTestSuite() { host.reset(); }
    static QStringList options(std::size_t port) {
        return certificates->options(ports.at(port)) + QStringList{u"--innodb-flush-log-at-trx-commit=2"_s};
    }
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addScore(ann, question[0], surveyOf(u"Acme"_s, today), today, 5, 6);
        copyHomeFile(u"template.xls"_s);
        SurveyFile filled{.respondentid = ann, .questions = {{question[0], true}, {question[4], false}}};
        for (const int number : {1, 2, 3}) {
            filled.entered = {
                {u"C14"_s, 7}, {u"D14"_s, 9}, {u"D16"_s, 3}, {u"B17"_s, u"word %1"_s.arg(number)}};
            filled.saveAs(path(u"%1.xls"_s.arg(number)));
            add(u"log"_s,
                {{"custname", u"Acme"_s}, {"respid", ann}, {"xlsfilename", u"%1.xls"_s.arg(number)}});
        }
        ASSERT_TRUE(host->isRunning()) << host->log().toStdString();
        root.ConnectionString = host->connection({});
        root.Open();
        root.Execute(u"drop database if exists tally"_s);
        root.Execute(u"create database tally"_s);
        root.ConnectionString = host->connection(u"tally"_s);
        root.Open();
        ado::runScript(root, homeScript(u"schema"_s) + homeScript(u"version2"_s) + homeScript(u"queries"_s));
        copyAllRows(*cnnMain, root);
        const QStringList source{u"DSN=gwl"_s,
                                 u"SERVER=127.0.0.1:%1,127.0.0.1:%2"_s.arg(ports[0]).arg(ports[1]),
                                 u"SSLCA="_s + certificates->file(u"authority"_s),
                                 u"DATABASE=tally"_s,
                                 u"UID=member"_s,
                                 {}};
        ASSERT_EQ(ado::SQLConfigDataSource(ado::AddSystemSource, u"server"_s + QChar(), source.join(QChar())),
                  1);
        toOpenConnection();
        ASSERT_FALSE(cnnMain->IsFile());
    }
    void TearDown() override {
        failingStatement = 0;
        SurveyTest::TearDown();
    }
    /// Runs `work` and returns its messages; `fault` happens before its nth statement.
    static QStringList messagesDuring(const std::function<void()>& work, int statement = 0) {
        statementsSeen = 0;
        failingStatement = statement;
        QStringList result = messagesAgreedTo(work);
        failingStatement = 0;
        result.removeAll(exported);
        return result;
    }
    int idOfProgram() {
        return ::rows(root, u"select id from information_schema.processlist where user='member'"_s)
            .value(0)
            .section(u' ', 1)
            .toInt();
    }
    void endConnection() {
        failingStatement = 0;
        root.Execute(u"kill %1"_s.arg(idOfProgram()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return idOfProgram() == 0; }));
    }
    /// Kills the server and starts it again at the other host.
    void killServer() {
        failingStatement = 0;
        host->kill();
        std::swap(ports[0], ports[1]); // options() names the one that runs
        host->start(options(0));
        ASSERT_TRUE(host->isRunning()) << host->log().toStdString();
        root.Open();
    }

    // The commands under test
    static void saveAnswers() {
        auto* grid = control<forms::MSHFlexGrid>(frmFeedBackObj::instance(), "grdDtls");
        grid->setTextMatrix(1, 3, u"8"_s);
        grid->setTextMatrix(2, 4, u"said"_s);
        frmFeedBackObj::instance().toSaveDtls();
    }
    void readFiles() {
        unread.clear();
        unread = readSurveyFiles({path(u"1.xls"_s), path(u"2.xls"_s), path(u"3.xls"_s)}).bad;
    }
    void exportSurvey() const {
        QFile::remove(path(u"111.xls"_s));
        press(frmNewSurvey::instance(), "cmdExport");
    }

    /// Makes the fault happen at statements of the command until it survives; expects each time that it is
    /// told and that the store is as before or as after the whole command.
    void loseDuring(const std::function<void()>& command, const std::function<void()>& loss, int step,
                    const std::function<void(const QStringList& before)>& check) {
        const QString copy = path(u"before.mdb"_s);
        ASSERT_TRUE(QFile::copy(strDatabasePath, copy));
        ado::Connection before;
        before.ConnectionString = u"DBQ="_s + copy + u";PWD=" + storePassword();
        before.Open();
        copyAllRows(root, before);
        const QStringList rowsBefore = storeRows(root);
        fault = loss;
        for (int statement = 1; statement < 200; statement += step) {
            SCOPED_TRACE(statement);
            copyAllRows(before, root);
            const QStringList said = messagesDuring(command, statement);
            if (statementsSeen < statement) { // it was done before
                EXPECT_EQ(said, QStringList());
                EXPECT_GT(statement, 1);
                break;
            }
            EXPECT_TRUE(!said.isEmpty() &&
                        said[0].contains(u"The connection to the database server is lost."_s))
                << said.join(u'\n').toStdString();
            check(rowsBefore);
            EXPECT_EQ(messagesDuring(command), QStringList()) << "on the next host";
        }
        copyAllRows(before, root);
        before.Close();
        QFile::remove(copy);
    }

    inline static std::unique_ptr<Certificates> certificates;
    inline static std::array<int, 2> ports;
    inline static std::unique_ptr<PrivateServer> host;
    ado::Connection root;
    QStringList unread; ///< files that a reading has named
    const Replaced<forms::saveFileHook> unnamed{[](const forms::CommonDialog&) { return QString(); }};
    Replaced<changedHook> mine{[](const ChangedRow&) { return Keep::Mine; }};
};

TEST_F(ServerLossTest, anIdleConnectionThatHasEndedIsOpenedAgainSilently) {
    frmFeedBackObj::instance().Show();
    frmSatisfactionIndex::instance().Show();
    const int former = idOfProgram();
    endConnection();
    EXPECT_EQ(messagesDuring(saveAnswers), QStringList());
    EXPECT_NE(idOfProgram(), former);
    EXPECT_EQ(::rows(root, u"select description from feedbackdescriptive"_s), QStringList{u"QString said"_s});
    killServer();
    EXPECT_EQ(messagesDuring([] { guarded([] { cnnMain->Execute(u"delete * from report"_s); }); }),
              QStringList())
        << "its own work tables are there on the next host";
    control<QWidget>(frmSatisfactionIndex::instance(), "cmdPrint")->show();
    EXPECT_EQ(messagesDuring([] { press(frmSatisfactionIndex::instance(), "cmdPrint"); }),
              QStringList{u"The connection to the database has been opened again meanwhile, and the rows of "
                          "this report are gone. View it again, then print it."_s});

    const Transaction step;
    host->kill();
    EXPECT_THROW(guarded([] { cnnMain->Execute(u"delete * from customer"_s); }), Failure);
    host->start(options(0));
    EXPECT_THROW(guarded([] { cnnMain->Execute(u"delete * from customer"_s); }), Failure)
        << "not alone on another connection";
    root.Open();
    EXPECT_EQ(::rows(root, u"select custname from customer"_s).size(), 1);
}

TEST_F(ServerLossTest, aSaveIsWholeOrNotAtAll) {
    frmFeedBackObj::instance().Show();
    const auto unchanged = [this](const QStringList& before) { EXPECT_EQ(storeRows(root), before); };
    loseDuring(
        saveAnswers, [this] { endConnection(); }, 1, unchanged);
    loseDuring(
        saveAnswers, [this] { killServer(); }, 5, unchanged);
}

TEST_F(ServerLossTest, filesAreReadWhollyOrNamed) {
    const auto whole = [this](const QStringList&) {
        const QStringList read = ::rows(root, u"select xlsfilename from log where status=true"_s);
        EXPECT_EQ(read.size() + unread.size(), 3) << unread.join(u' ').toStdString();
        EXPECT_EQ(::rows(root, u"select * from readingfile"_s).size(), read.size());
        EXPECT_EQ(::rows(root, u"select * from feedbackdescriptive"_s).size(), read.isEmpty() ? 0 : 1);
    };
    loseDuring([this] { readFiles(); }, [this] { endConnection(); }, 3, whole);
    loseDuring([this] { readFiles(); }, [this] { killServer(); }, 20, whole);
}

TEST_F(ServerLossTest, anExportLeavesNoFileWithoutQuestions) {
    open();
    const auto complete = [this](const QStringList& before) {
        EXPECT_EQ(removedRows(before, storeRows(root)).filter(u"log|"_s).size(),
                  removedRows(before, storeRows(root)).size())
            << "only the register is written";
        if (QFile::exists(path(u"111.xls"_s))) {
            const excel::Application application;
            EXPECT_EQ(application.Workbooks()
                          .Open(path(u"111.xls"_s))
                          .Worksheets(cellmap::sheetName.toString())
                          .Range(u"B14"_s)
                          .Value()
                          .text(),
                      u"On time?"_s);
        }
    };
    loseDuring([this] { exportSurvey(); }, [this] { endConnection(); }, 2, complete);
    loseDuring([this] { exportSurvey(); }, [this] { killServer(); }, 15, complete);
}

} // namespace
