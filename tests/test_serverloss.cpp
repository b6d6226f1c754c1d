// SPDX-License-Identifier: GPL-3.0-or-later
// The server, or the connection to it, is lost between commands and amid them.
#include "analysis/frmSatisfactionIndex.h"
#include "core/store/storecopy.h"
#include "core/store/transaction.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/datasources.h"
#include "tests/support/agreed.h"
#include "tests/support/certificates.h"
#include "tests/support/enginestest.h"
#include "tests/support/surveytest.h"

#include <dlfcn.h>
#include <mysql.h>

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
struct ServerLossTest : SurveyTest {
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
        for (const QString& name : {u"1.xls"_s, u"2.xls"_s, u"3.xls"_s}) {
            files.emplace_back(saveFile(
                name, ann, {{"C14", 7}, {"D14", 9}, {"D16", 3}, {"B17", QString(u"word "_s + name)}}));
            add(u"log"_s, {{"custname", u"Acme"_s}, {"respid", ann}, {"xlsfilename", name}});
        }
        ASSERT_TRUE(host->isRunning()) << host->log();
        makeStore(root, *host);
        copyAllRows(*cnnMain, root);
        const QString source =
            u"DSN=gwl;SERVER=127.0.0.1:%1,127.0.0.1:%2;SSLCA=%3;DATABASE=tally;UID=member;"_s.arg(ports[0])
                .arg(ports[1])
                .arg(certificates->file(u"authority"_s))
                .replace(u';', QChar());
        ASSERT_EQ(ado::SQLConfigDataSource(ado::AddSystemSource, u"server"_s + QChar(), source), 1);
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
        ASSERT_TRUE(host->isRunning()) << host->log();
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
        unread = readSurveyFiles(files).bad;
    }
    void exportSurvey() const {
        QFile::remove(path(u"111.xls"_s));
        press(frmNewSurvey::instance(), "cmdExport");
    }
    /// Ends the connection, and then the server, at every nth statement of the command until it survives;
    /// expects each time that it is told and that the check finds the store as it may be.
    void loseDuring(const std::function<void()>& command, int endEach, int killEach,
                    const std::function<void(const QStringList& before)>& check) {
        loseDuring(
            command, [this] { endConnection(); }, endEach, check);
        loseDuring(
            command, [this] { killServer(); }, killEach, check);
    }
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
                << said.join(u'\n');
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
    std::vector<ReturnedFile> files;
    QStringList unread; ///< files that a reading has named
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
    const auto deletion = [] { guarded([] { cnnMain->Execute(u"delete * from customer"_s); }); };
    EXPECT_THROW(deletion(), Failure);
    host->start(options(0));
    EXPECT_THROW(deletion(), Failure) << "not alone on another connection";
    root.Open();
    EXPECT_EQ(::rows(root, u"select custname from customer"_s).size(), 1);
}

TEST_F(ServerLossTest, aSaveIsWholeOrNotAtAll) {
    frmFeedBackObj::instance().Show();
    loseDuring(saveAnswers, 1, 5, [this](const QStringList& before) { EXPECT_EQ(storeRows(root), before); });
}

TEST_F(ServerLossTest, filesAreReadWhollyOrNamed) {
    loseDuring([this] { readFiles(); }, 3, 20,
               [this](const QStringList&) {
                   const QStringList read = ::rows(root, u"select xlsfilename from log where status=true"_s);
                   EXPECT_EQ(read.size() + unread.size(), 3) << unread.join(u' ');
                   EXPECT_EQ(::rows(root, u"select * from readingfile"_s).size(), read.size());
                   EXPECT_EQ(::rows(root, u"select * from feedbackdescriptive"_s).size(),
                             read.isEmpty() ? 0 : 1);
               });
}

TEST_F(ServerLossTest, anExportLeavesNoFileWithoutQuestions) {
    open();
    loseDuring([this] { exportSurvey(); }, 2, 15,
               [this](const QStringList& before) {
                   const QStringList removed = removedRows(before, storeRows(root));
                   EXPECT_EQ(removed.filter(u"log|"_s), removed) << "only the register is written";
                   if (QFile::exists(path(u"111.xls"_s))) {
                       const excel::Application application;
                       const excel::Workbook exported = application.Workbooks().Open(path(u"111.xls"_s));
                       EXPECT_EQ(
                           exported.Worksheets(cellmap::sheetName.toString()).Range(u"B14"_s).Value().text(),
                           u"On time?"_s);
                   }
               });
}
} // namespace
