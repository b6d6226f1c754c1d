// SPDX-License-Identifier: GPL-3.0-or-later
// Faults of the environment: full disk, read-only home, locked store, damaged or newer store.
#include "core/base/backup.h"
#include "core/storecheck.h"
#include "exchange/files/homefile.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/sqlitesession.h"
#include "reference/frmCustomer.h"
#include "tests/support/agreed.h"
#include "tests/support/surveytest.h"

#include <QElapsedTimer>
#include <csignal>
#include <sqlite3.h>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {
const QString copyFails = u"The copy of the database"_s;
/// Limits the size of this process's files, as on a full disk.
void limitFiles(rlim_t bytes) {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// The disk is full once the register's row of a survey file is stored; the workbook is written next.
int fillAfterRegister(unsigned, void*, void* statement, void*) {
    const QByteArray sql = sqlite3_sql(static_cast<sqlite3_stmt*>(statement));
    if (!sql.startsWith("select") && sql.contains("\"log\"") && sql.contains("\"xlsfilename\""))
        limitFiles(2000);
    return 0;
}

/// Ann has the questions 0 and 4 of the catalogue today; filled.xls is her answer.
struct FaultsTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        copyHomeFile(u"template.xls"_s);
        fill(u"filled.xls"_s, 30000);
        file = u"The file '"_s + strDatabasePath + u"' ";
    }
    void fill(const QString& name, int letters) const {
        saveFile(name, ann, {{"C14", 7}, {"D14", 9}, {"D16", 3}, {"B17", QString(letters, u'w')}});
    }
    /// The same with the files opened as the user nobody if the test runs as root.
    static QStringList messagesWithoutRights(const std::function<void()>& work) {
        constexpr uid_t nobody = 65534;
        cnnMain->Close();
        setfsuid(nobody);
        const QStringList result = messagesAgreedTo(work);
        setfsuid(geteuid());
        cnnMain->Close();
        toOpenConnection();
        return result;
    }
    /// The store cannot grow.
    static void fillStore() {
        ado::Connection other; // of a connection with own tables, SQLite cannot vacuum the store
        other.ConnectionString = cnnMain->ConnectionString;
        other.Open();
        other.Execute(u"vacuum"_s);
        runRaw(u"pragma max_page_count = 1"_s);
    }

    // The commands under test; they need showForms().
    static void saveAnswers() {
        auto* grid = control<forms::MSHFlexGrid>(frmFeedBackObj::instance(), "grdDtls");
        grid->setTextMatrix(1, 3, u"8"_s);
        grid->setTextMatrix(2, 4, QString(50000, u'd'));
        frmFeedBackObj::instance().toSaveDtls();
    }
    static void readFile() { readSurveyFile(homePath(u"filled.xls"_s)); }
    static void deleteRespondent() { press(frmCustomer::instance(), "cmdDeleteRespondent"); }
    static void exportSurvey() { press(frmNewSurvey::instance(), "cmdExport"); }
    void showForms() {
        frmFeedBackObj::instance().Show();
        open();
        frmCustomer::instance().Show();
    }

    QString file; ///< how messages about the store begin
    const QString goBackTo = u"\r\n\r\nTo go back to a copy of it, put one of these in its "
                             "place, the newest first:\r\n"_s;
    // Answers that were read from a file while Feedback was not active have changed under it.
    Replaced<changedHook> mine{[](const ChangedRow&) { return Keep::Mine; }};
};

TEST_F(FaultsTest, aFullDiskIsReportedAndChangesNeitherStoreNorFiles) {
    showForms();
    std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(messagesAgreedTo(readFile), QStringList()); // also makes the backup of this session
    const QStringList before = storeRows(*cnnMain);
    fillStore();
    EXPECT_EQ(messagesAgreedTo(saveAnswers),
              QStringList{u"Error : 13\r\nThe disk is full. Nothing of this step has been saved."_s});
    runRaw(u"pragma max_page_count = 100000000"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_EQ(messagesAgreedTo(saveAnswers), QStringList());
    EXPECT_NE(storeRows(*cnnMain), before);

    // The survey file is the old one or none; its row is in the register already. There is no message.
    QByteArray former = "none";
    for (int round = 0; round < 2; ++round) {
        sqlite3* store = ado::databaseOf(*cnnMain);
        sqlite3_trace_v2(store, SQLITE_TRACE_PROFILE, fillAfterRegister, nullptr);
        EXPECT_EQ(messagesAgreedTo(exportSurvey).filter(exported), QStringList());
        sqlite3_trace_v2(store, 0, nullptr, nullptr);
        limitFiles(RLIM_INFINITY);
        EXPECT_EQ(rows(u"select xlsfilename from log"_s), QStringList{u"111.xls"_s});
        EXPECT_EQ(QFile::exists(path(u"111.xls"_s)) ? contentOf(path(u"111.xls"_s)) : "none", former);
        EXPECT_EQ(messagesAgreedTo(exportSurvey).filter(exported).size(), 1);
        former = contentOf(path(u"111.xls"_s));
    }
    EXPECT_EQ(QDir(home()).entryList({u"111.xls*"_s}), QStringList{u"111.xls"_s});
    EXPECT_FALSE(QFile::permissions(path(u"111.xls"_s)) & QFileDevice::Permissions(0x0077)) << "of others";

    forgetBackup();
    ASSERT_TRUE(QDir(path(u"backup"_s)).removeRecursively());
    limitFiles(40000);
    const QStringList reported = messagesAgreedTo(deleteRespondent);
    limitFiles(RLIM_INFINITY);
    ASSERT_EQ(reported.size(), 1);
    EXPECT_TRUE(reported[0].contains(copyFails) && reported[0].contains(u"Nothing has been changed"))
        << reported[0];
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"2"_s);
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList(QDir::Files), QStringList());
    EXPECT_EQ(messagesAgreedTo(deleteRespondent), QStringList());
    EXPECT_EQ(listBackups(strDatabasePath).size(), 1);
}

TEST_F(FaultsTest, aReadOnlyHomeIsReportedByEachCommand) {
    showForms();
    const QString readOnly =
        u"Error : 8\r\nThe database cannot be changed: the file or its folder is read-only."_s;
    const QStringList before = storeRows(*cnnMain);
    const auto chmod = [this](const QString& mode) {
        EXPECT_EQ(QProcess::execute(u"chmod"_s, {u"-R"_s, mode, home()}), 0);
    };
    chmod(u"a+rX,a-w"_s);
    EXPECT_EQ(messagesWithoutRights(saveAnswers), QStringList{readOnly});
    for (void (*command)() : {readFile, deleteRespondent}) // both make a backup first
        EXPECT_TRUE(messagesWithoutRights(command).value(0).startsWith(u"Error : 14\r\n"_s + copyFails));
    EXPECT_EQ(messagesWithoutRights(exportSurvey).filter(readOnly).size(), 1); // the row; marks are its own
    chmod(u"u+w"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_FALSE(QFile::exists(path(u"111.xls"_s)));
}

TEST_F(FaultsTest, aLockedStoreIsReportedAfterAWait) {
    showForms();
    other.lock();
    QElapsedTimer waiting;
    waiting.start();
    EXPECT_EQ(messagesAgreedTo(saveAnswers), QStringList{messageOf(Locked)});
    EXPECT_GT(waiting.elapsed(), 1500); // milliseconds; another program is usually done sooner
}

TEST_F(FaultsTest, anUnusableStoreIsReportedAtStartAndANewerOneRefused) {
    const auto reported = [](StoreState state) {
        return messagesAgreedTo([&] { EXPECT_EQ(checkStore(strDatabasePath), state); }).value(0);
    };
    runRaw(u"pragma user_version = 3"_s);
    EXPECT_EQ(reported(StoreState::Newer),
              file + u"was made by a newer version of this program and needs that version."_s);
    runRaw(u"pragma user_version = 0"_s);
    EXPECT_EQ(reported(StoreState::Good), QString());
    for (int copy = 0; copy < 2; ++copy, forgetBackup())
        backUpBeforeLoss();
    const QStringList copies = listBackups(strDatabasePath);
    ASSERT_EQ(copies.size(), 2);
    cnnMain->Close();

    const QByteArray whole = contentOf(strDatabasePath);
    for (const QByteArray& damaged :
         QByteArrayList{QByteArray(100, '\xA5') + whole.mid(100),
                        whole.first(100) + QByteArray(4000, '\xA5') + whole.mid(4100)}) {
        writeFile(strDatabasePath, damaged);
        EXPECT_EQ(reported(StoreState::Faulty),
                  file + u"is damaged or no database." + goBackTo + copies.join(u"\r\n"_s));
    }
    writeFile(strDatabasePath, {}); // a store without any table
    EXPECT_TRUE(reported(StoreState::Faulty).contains(u"It lacks: customer, respondent, "_s));
}

TEST_F(FaultsTest, damageInsideTheStoreIsReportedMeanwhileAndNeverCopied) {
    showForms();
    backUpBeforeLoss();
    forgetBackup();
    const QStringList copies = listBackups(strDatabasePath);
    const int size = value(u"pragma page_size"_s).toInt();
    const int page = value(u"select rootpage from sqlite_master where name='standardmessage'"_s).toInt();
    cnnMain->Close();
    const QByteArray whole = contentOf(strDatabasePath);
    writeFile(strDatabasePath,
              whole.first((page - 1) * size) + QByteArray(size, '\xA5') + whole.mid(page * size));
    toOpenConnection();
    EXPECT_EQ(checkStore(strDatabasePath), StoreState::Good) << "the start reads no rows";
    QStringList shown = messagesAgreedTo([] { const StoreInspection ends(strDatabasePath); });
    shown += messagesAgreedTo([] {
        const StoreInspection inspection(strDatabasePath);
        cnnMain->BeginTrans();
        QTest::qWait(500); // no message while a transaction is open
        cnnMain->RollbackTrans();
        QTest::qWait(500);
    });
    EXPECT_EQ(shown, QStringList(file + u"is damaged inside: what is saved now can be lost." + goBackTo +
                                 copies[0]));
    const QString refusal = messagesAgreedTo(deleteRespondent).value(0);
    EXPECT_TRUE(refusal.startsWith(u"Error : 11\r\nThe database is damaged, and so would be its copy '"_s));
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"2"_s);
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList(QDir::Files).size(), 1);
}

TEST_F(FaultsTest, aMissingOrReplacedStoreIsReported) {
    showForms();
    for (const bool replaced : {true, false}) {
        ASSERT_TRUE(QFile::rename(strDatabasePath, path(u"away.mdb"_s)));
        EXPECT_EQ(replaced && QFile::copy(path(u"away.mdb"_s), strDatabasePath), replaced);
        EXPECT_EQ(
            messagesAgreedTo(saveAnswers),
            QStringList{u"Error : 8\r\nThe database file has been moved, deleted or replaced meanwhile. "
                        "Close the program and start it again."_s});
        QFile::remove(strDatabasePath);
        ASSERT_TRUE(QFile::rename(path(u"away.mdb"_s), strDatabasePath));
    }
    EXPECT_EQ(messagesAgreedTo(saveAnswers), QStringList());
}

/// The files before the one that does not fit share its transaction: all are rolled back and reported.
TEST_F(FaultsTest, readingManyFilesUntilTheDiskIsFull) {
    QStringList files, titles;
    for (const QString& name : {u"1.xls"_s, u"2.xls"_s, u"3.xls"_s, u"4.xls"_s}) {
        fill(name, files.size() == 2 ? 30000 : 5);
        addToRegister(name);
        files << path(name);
        titles << name;
    }
    QStringList bad;
    EXPECT_EQ(messagesAgreedTo([&] { bad = readSurveyFiles({files.first()}).bad; }), QStringList());
    fillStore();
    const auto readOthers = [&] { bad += readSurveyFiles({files.begin() + 1, files.end()}).bad; };
    EXPECT_EQ(messagesAgreedTo(readOthers).size(), 1);
    runRaw(u"pragma max_page_count = 100000000"_s);
    EXPECT_EQ(bad, titles.mid(1));
    EXPECT_EQ(rows(u"select xlsfilename from log where Status=True"_s), titles.first(1));
}
} // namespace
