// SPDX-License-Identifier: GPL-3.0-or-later
// What goes wrong around the program: a full disk, a read-only home, a second program on the store, a damaged
// or newer store, damaged survey files, a clock that jumps.
#include "core/MDIMain.h"
#include "core/backup.h"
#include "core/storecheck.h"
#include "exchange/reader.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/excel/compound_file.h"
#include "reference/frmCustomer.h"
#include "tests/support/storecompare.h"
#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <csignal>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString copyFails = u"The copy of the database"_s;
const QString exported = u"Survey File Exported...Do you want to view the file? "_s;

/// The files of this program take so many bytes and no more, as on a full disk.
void limitFiles(rlim_t bytes) {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// Full from when the register's row of a survey file is stored: the workbook comes next.
int fillAfterRegister(unsigned, void*, void* statement, void*) {
    const QByteArray sql = sqlite3_sql(static_cast<sqlite3_stmt*>(statement));
    if (!sql.startsWith("select") && sql.contains("\"log\"") && sql.contains("\"xlsfilename\""))
        limitFiles(2000);
    return 0;
}

/// Ann has the questions 0 and 4 of the catalogue today; filled.xls is her answer.
class FaultsTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        bring(u"template.xls"_s);
        filled.respondentid = ann;
        filled.questions = {{question[0], true}, {question[4], false}};
        filled.entered = {{u"C14"_s, 7}, {u"D14"_s, 9}, {u"D16"_s, 3}, {u"B17"_s, QString(30000, u'w')}};
        filled.saveAs(path("filled.xls"));
    }
    void TearDown() override {
        forms::nowSeat = [] { return QDateTime::currentDateTime(); };
        SurveyTest::TearDown();
    }
    QString path(const char* name) const { return home() + u'/' + QLatin1StringView(name); }
    static void write(const QString& file, const QByteArray& bytes) {
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly) && opened.write(bytes) == bytes.size());
    }
    /// The first lines of the messages while it works, without "Error : "; all is agreed to but a view.
    static QStringList heard(const std::function<void()>& work) {
        QStringList result;
        const auto old = std::exchange(forms::messageSeat, [&](const forms::Message& message) {
            expectNoTransaction();
            result << message.text;
            if (message.text == exported)
                return forms::Answer::No;
            return message.style & forms::style::yesNo ? forms::Answer::Yes : forms::Answer::Ok;
        });
        work();
        forms::messageSeat = old;
        return result;
    }
    /// The same in a process of its own, as the user nobody where the test is the superuser.
    static QStringList heardAsVisitor(const std::function<void()>& work) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        cnnMain->Close();
        const pid_t child = fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            MDIMain::instance().setUpdatesEnabled(false); // the threads that paint are the parent's
            const bool changed = geteuid() != 0 || setuid(nobody) == 0;
            const QByteArray text = heard(work).join(u'\t').toUtf8();
            _exit(changed && ::write(ends[1], text.constData(), std::size_t(text.size())) >= 0 ? 0 : 1);
        }
        close(ends[1]);
        QFile reading;
        EXPECT_TRUE(reading.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
        const QString text = QString::fromUtf8(reading.readAll());
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        toOpenConnection();
        return text.split(u'\t');
    }

    // The commands that the faults meet; what they need is shown before.
    static void saveAnswers() {
        auto* grid = control<forms::MSHFlexGrid>(frmFeedBackObj::instance(), "grdDtls");
        grid->setTextMatrix(1, 3, u"8"_s);
        grid->setTextMatrix(2, 4, QString(50000, u'd'));
        frmFeedBackObj::instance().toSaveDtls();
    }
    static void readFile() { SurveyReader().read(homeDirectory() + u"/filled.xls"); }
    static void deleteRespondent() { press(frmCustomer::instance(), "cmdDeleteRespondent"); }
    static void exportSurvey() { press(frmNewSurvey::instance(), "cmdExport"); }
    /// Exports in a process of its own that ends in the middle of the file.
    static bool exportIsKilled() {
        cnnMain->Close();
        const pid_t child = fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_DFL);
            toOpenConnection();
            sqlite3_trace_v2(cnnMain->session()->handle(), SQLITE_TRACE_PROFILE, fillAfterRegister, nullptr);
            heard([] { frmNewSurvey::instance().toWriteToExcelSheet(); });
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        toOpenConnection();
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ;
    }
    void showForms() {
        frmFeedBackObj::instance().Show();
        open();
        frmCustomer::instance().Show();
    }

    SurveyFile filled;
};

TEST_F(FaultsTest, aFullDiskIsToldAndLeavesStoreAndFilesAsTheyWere) {
    showForms();
    std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(heard(readFile), QStringList()); // also makes the copy of this run
    for (void (*command)() : {saveAnswers, readFile}) {
        run(u"update feedbackdescriptive set Description='short'"_s);
        runRaw(u"vacuum"_s);
        const QStringList before = storeRows(*cnnMain);
        runRaw(u"pragma max_page_count = 1"_s); // the store grows no more
        EXPECT_EQ(heard(command),
                  QStringList{u"Error : 13\r\nThe disk is full. Nothing of this step has been saved."_s});
        runRaw(u"pragma max_page_count = 100000000"_s);
        EXPECT_EQ(storeRows(*cnnMain), before);
        EXPECT_EQ(value(u"pragma integrity_check"_s), u"ok"_s);
        EXPECT_EQ(heard(command), QStringList());
        EXPECT_NE(storeRows(*cnnMain), before);
    }

    // A survey file: the register has its row before, the file is the old one or none. No message is due.
    QByteArray file = "none";
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(exportIsKilled());
        EXPECT_EQ(rows(u"select xlsfilename from log"_s), QStringList{u"111.xls"_s});
        EXPECT_EQ(contentOf(path("111.xls")), file);
        sqlite3* store = cnnMain->session()->handle();
        sqlite3_trace_v2(store, SQLITE_TRACE_PROFILE, fillAfterRegister, nullptr);
        EXPECT_EQ(heard(exportSurvey).filter(exported), QStringList());
        sqlite3_trace_v2(store, 0, nullptr, nullptr);
        limitFiles(RLIM_INFINITY);
        EXPECT_EQ(contentOf(path("111.xls")), file);
        EXPECT_EQ(heard(exportSurvey).filter(exported).size(), 1);
        file = contentOf(path("111.xls"));
    }
    EXPECT_EQ(QDir(home()).entryList({u"111.xls*"_s}), QStringList{u"111.xls"_s});

    toForgetBackup();
    ASSERT_TRUE(QDir(path("backup")).removeRecursively());
    limitFiles(40000);
    const QStringList told = heard(deleteRespondent);
    limitFiles(RLIM_INFINITY);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains(copyFails) && told[0].contains(u"Nothing has been changed"))
        << told[0].toStdString();
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"2"_s);
    EXPECT_EQ(QDir(path("backup")).entryList(QDir::Files), QStringList());
    EXPECT_EQ(heard(deleteRespondent), QStringList());
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"1"_s);
    EXPECT_EQ(toListBackups(strDatabasePath).size(), 1);
}

TEST_F(FaultsTest, aReadOnlyHomeIsToldByEachCommand) {
    showForms();
    const QString readOnly =
        u"Error : 8\r\nThe database cannot be changed: the file or its folder is read-only."_s;
    const QStringList before = storeRows(*cnnMain);
    const auto chmod = [this](const QString& mode) {
        EXPECT_EQ(QProcess::execute(u"chmod"_s, {u"-R"_s, mode, home()}), 0);
    };
    chmod(u"a+rX,a-w"_s);
    EXPECT_EQ(heardAsVisitor(saveAnswers), QStringList{readOnly});
    for (void (*command)() : {readFile, deleteRespondent}) // each wants a copy before
        EXPECT_TRUE(heardAsVisitor(command).value(0).startsWith(u"Error : 14\r\n"_s + copyFails));
    EXPECT_EQ(heardAsVisitor(exportSurvey).filter(readOnly).size(), 2); // its marks and its row
    chmod(u"u+w"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    EXPECT_FALSE(QFile::exists(path("111.xls")));
}

TEST_F(FaultsTest, aStoreInUseIsToldAfterAWaitAndTheSameCommandWorksLater) {
    showForms();
    other.ConnectionString = toConnectionText();
    other.Open();
    for (void (*command)() : {saveAnswers, readFile, deleteRespondent}) {
        const QStringList before = storeRows(*cnnMain);
        other.session()->prepare({u"begin exclusive"_s, {}}).step();
        QElapsedTimer waiting;
        waiting.start();
        EXPECT_EQ(heard(command).value(0), u"Error : 5\r\nThe database is in use by another program. Close "
                                           "that program and try again."_s);
        EXPECT_GT(waiting.elapsed(), 1500); // milliseconds; the other program mostly lets go sooner
        other.RollbackTrans();
        EXPECT_EQ(storeRows(*cnnMain), before);
        EXPECT_EQ(heard(command), QStringList());
        EXPECT_NE(storeRows(*cnnMain), before);
    }
}

TEST_F(FaultsTest, aStoreThatCannotBeWorkedWithIsToldAtTheStartAndANewerOneRefused) {
    const auto refused = [] {
        return heard([] { EXPECT_EQ(toCheckStore(strDatabasePath), StoreState::Newer); }).value(0);
    };
    const auto told = [] {
        return heard([] { EXPECT_NE(toCheckStore(strDatabasePath), StoreState::Newer); }).value(0);
    };
    const auto isGood = [&] { return told().isEmpty(); };
    const QString file = u"The file '"_s + strDatabasePath + u"' ";
    runRaw(u"pragma user_version = 0"_s);
    runRaw(u"create view searchobjective as select custname from objquery"_s); // as an older store has it
    EXPECT_TRUE(isGood());
    runRaw(u"drop view searchobjective"_s);
    runRaw(u"pragma user_version = 2"_s);
    EXPECT_EQ(refused(), file + u"was made by a newer version of this program and needs that version."_s);
    runRaw(u"pragma user_version = 1"_s);
    EXPECT_TRUE(isGood());
    for (int copy = 0; copy < 2; ++copy, toForgetBackup())
        toBackupBeforeLoss();
    const QStringList copies = toListBackups(strDatabasePath);
    ASSERT_EQ(copies.size(), 2);
    QStringList tables = rows(u"select lower(name) from sqlite_master where type='table' or type='view'"_s);
    cnnMain->Close();

    const QByteArray whole = contentOf(strDatabasePath);
    for (const QByteArray& damaged :
         QByteArrayList{whole.first(whole.size() / 2), QByteArray(100, '\xA5') + whole.mid(100),
                        whole.first(100) + QByteArray(4000, '\xA5') + whole.mid(4100)}) {
        write(strDatabasePath, damaged);
        EXPECT_EQ(told(), file +
                              u"is damaged or no database.\r\n\r\nTo go back to a copy of it, put one of "
                              "these in its place, the newest first:\r\n"_s +
                              copies.join(u"\r\n"_s));
    }
    write(strDatabasePath, {}); // a store without any table
    for (const QString& unused : {u"database_password"_s, u"sqlite_sequence"_s})
        EXPECT_TRUE(tables.removeOne(unused));
    QStringList named = told().section(u"It lacks: "_s, 1).section(u'.', 0, 0).split(u", "_s);
    tables.sort();
    named.sort();
    EXPECT_EQ(named, tables);

    write(strDatabasePath, whole); // these are the connection's to tell
    toOpenConnection();
    run(u"update database_password set hash='other'"_s);
    EXPECT_TRUE(isGood());
    QFile::remove(strDatabasePath);
    EXPECT_TRUE(isGood());
}

TEST_F(FaultsTest, damageInsideTheStoreIsToldBesideTheWorkAndGetsIntoNoCopy) {
    showForms();
    toBackupBeforeLoss();
    toForgetBackup();
    const QStringList copies = toListBackups(strDatabasePath);
    QElapsedTimer watch;
    watch.start();
    ado::Connection writer;
    writer.ConnectionString = toConnectionText();
    writer.Open();
    writer.session()->prepare({u"begin exclusive"_s, {}}).step();
    EXPECT_FALSE(ado::QuickCheck(strDatabasePath).findsDamage());
    EXPECT_LT(watch.elapsed(), 1500) << "waits for a writer, as one would for it";
    writer.Close();

    const qint64 size = value(u"pragma page_size"_s).toLongLong();
    const qint64 page =
        value(u"select rootpage from sqlite_master where name='standardmessage'"_s).toLongLong();
    cnnMain->Close();
    const QByteArray whole = contentOf(strDatabasePath);
    write(strDatabasePath,
          whole.first((page - 1) * size) + QByteArray(size, '\xA5') + whole.mid(page * size));
    toOpenConnection();
    EXPECT_EQ(toCheckStore(strDatabasePath), StoreState::Good) << "the start reads no rows";
    ado::QuickCheck ended(strDatabasePath);
    ended.stop();
    EXPECT_FALSE(ended.findsDamage());
    const QStringList told{u"The file '"_s + strDatabasePath +
                           u"' is damaged inside: what is saved now can be lost.\r\n\r\nTo go back to a copy "
                           "of it, put one of these in its place, the newest first:\r\n"_s +
                           copies[0]};
    QStringList shown = heard([] { const StoreInspection ends(strDatabasePath); });
    shown += heard([] {
        const StoreInspection inspection(strDatabasePath);
        cnnMain->BeginTrans();
        QTest::qWait(500); // no message while it is open
        cnnMain->RollbackTrans();
        QTest::qWait(500);
    });
    EXPECT_EQ(shown, told);
    EXPECT_TRUE(heard(deleteRespondent)
                    .value(0)
                    .startsWith(u"Error : 11\r\nThe database is damaged, and so would be its copy '"_s));
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"2"_s);
    EXPECT_EQ(QDir(path("backup")).entryList(QDir::Files).size(), 1);
}

TEST_F(FaultsTest, aStoreThatIsGoneOrReplacedIsToldAsThat) {
    showForms();
    for (const bool replaced : {true, false}) {
        ASSERT_TRUE(QFile::rename(strDatabasePath, path("away.mdb")));
        EXPECT_EQ(replaced && QFile::copy(path("away.mdb"), strDatabasePath), replaced);
        EXPECT_EQ(
            heard(saveAnswers),
            QStringList{u"Error : 8\r\nThe database file has been moved, deleted or replaced meanwhile. "
                        "Close the program and start it again."_s});
        QFile::remove(strDatabasePath);
        ASSERT_TRUE(QFile::rename(path("away.mdb"), strDatabasePath));
    }
    EXPECT_EQ(heard(saveAnswers), QStringList());
}

constexpr QFileDevice::Permissions ofOthers{0x0077};

TEST_F(FaultsTest, storeAndCopiesAreTheirOwnersAndAnEmptyStoreIsNotCopied) {
    ASSERT_TRUE(QDir(home()).mkpath(u"backup"_s)); // as an older program has made it
    toBackupBeforeLoss();
    for (const QString& file : QStringList{strDatabasePath, path("backup")} + toListBackups(strDatabasePath))
        EXPECT_FALSE(QFile::permissions(file) & ofOthers) << file.toStdString();
    for (const char* table : {"parameter", "customer"}) {
        toForgetBackup();
        toBackupBeforeLoss();
        run(u"delete * from "_s + QLatin1StringView(table));
    }
    toForgetBackup();
    toBackupBeforeLoss();
    EXPECT_EQ(toListBackups(strDatabasePath).size(), 3);
}

QStringList changes; // table and rowid of each row that a statement changed

void noteChange(void*, int, const char*, const char* table, sqlite3_int64 row) {
    changes << QLatin1StringView(table) + u' ' + QString::number(row);
}

/// 200 truncated files, then 2,000 with bytes changed in the file or within its workbook.
QByteArray damagedAs(int round, const QByteArray& whole, QRandomGenerator& random) {
    if (round < 200)
        return whole.first(random.bounded(int(whole.size())));
    auto book = excel::biff::CompoundFile::parse(whole);
    const int stream = book.findStream(u"Workbook");
    QByteArray bytes = round % 4 == 0 ? whole : book.data(stream);
    for (int n = random.bounded(1, 6); n > 0; --n) {
        const quint8 values[] = {
            0, 0xFF, 0x7F, 0x80, quint8('0' + random.bounded(10)), quint8(random.generate())};
        qsizetype at = random.bounded(int(bytes.size()));
        while (round % 8 == 1 && !std::isdigit(quint8(bytes[at]))) // a digit, of a key mostly
            at = (at + 1) % bytes.size();
        bytes[at] = char(values[round % 8 == 1 ? 4 : random.bounded(6)]);
    }
    if (round % 4 == 0)
        return bytes;
    book.setData(stream, bytes);
    return book.serialize();
}

TEST_F(FaultsTest, damagedSurveyFilesWriteTheirOwnAnswersOrNothing) {
    const auto others = [] {
        return storeRows(*cnnMain).filter(QRegularExpression(u"^(?!feedback|log)"_s)) +
               rows(u"select custname, respid, xlsfilename, sdate, surveyid from log"_s);
    };
    add(u"log"_s, {{"custname", u"Acme"_s}, {"respid", ann}, {"xlsfilename", u"filled.xls"_s}});
    filled.entered[u"B17"_s] = u"Good words"_s;
    filled.saveAs(path("filled.xls"));
    const QByteArray whole = contentOf(path("filled.xls"));
    const QStringList before = others();
    runRaw(u"pragma synchronous = off"_s);
    sqlite3_update_hook(cnnMain->session()->handle(), noteChange, nullptr);
    QRandomGenerator random(20240305);
    int good = 0, foreign = 0;
    alarm(120); // seconds until a file that hangs ends the test
    for (int round = 0; round < 2200; ++round) {
        SCOPED_TRACE(round);
        write(path("filled.xls"), damagedAs(round, whole, random));
        changes.clear();
        bool read = false;
        const QStringList told =
            heard([&] { read = SurveyReader().readAll({path("filled.xls")}).isEmpty(); });
        ASSERT_EQ(told.size(), read ? 0 : 1);
        good += read;
        changes.removeIf([](const QString& change) { return change.startsWith(u"log "); });
        if (changes.isEmpty())
            continue;
        const excel::Application application;
        const auto sheet = application.Workbooks().Open(path("filled.xls")).Worksheets(u"Sheet1"_s);
        const auto keyAt = [&](int row) {
            const excel::Value key = sheet.Cells(row, 9).Value();
            return QString::number(qlonglong(key.number().value_or(key.text().toDouble())));
        };
        const QString own = keyAt(2) + u'|' + keyAt(5);
        foreign += own != QString::number(ann) + u"|1"_s;
        for (const QString& change : changes) {
            ASSERT_TRUE(change.startsWith(u"feedback")) << change.toStdString();
            ASSERT_EQ(rows(u"select respondentid, surveyid from "_s + change.section(u' ', 0, 0) +
                           u" where rowid=" + change.section(u' ', 1)),
                      QStringList{own});
        }
    }
    alarm(0);
    sqlite3_update_hook(cnnMain->session()->handle(), nullptr, nullptr);
    EXPECT_EQ(others(), before);
    std::printf("%d read to their end, %d under other keys\n", good, foreign);
    EXPECT_TRUE(good > 300 && good < 1900 && foreign > 3);
}

/// The files before the one that does not fit are in its transaction: none of them stays, all are named.
TEST_F(FaultsTest, manyFilesOfWhichOneFillsTheDisk) {
    QStringList files, titles;
    for (const char* name : {"1.xls", "2.xls", "3.xls", "4.xls"}) {
        filled.entered[u"B17"_s] = QString(files.size() == 2 ? 30000 : 5, u'w');
        filled.saveAs(path(name));
        add(u"log"_s, {{"custname", u"Acme"_s}, {"respid", ann}, {"xlsfilename", QString::fromLatin1(name)}});
        files << path(name);
        titles << QString::fromLatin1(name);
    }
    QStringList bad;
    runRaw(u"alter table log rename to away"_s);
    EXPECT_EQ(heard([&] { bad = SurveyReader().readAll(files); }).size(), 1);
    runRaw(u"alter table away rename to log"_s);
    EXPECT_EQ(bad, titles);
    EXPECT_EQ(heard([&] { bad = SurveyReader().readAll(files.first(1)); }), QStringList());
    runRaw(u"vacuum"_s);
    runRaw(u"pragma max_page_count = 1"_s);
    EXPECT_EQ(heard([&] { bad += SurveyReader().readAll(files.mid(1)); }).size(), 1);
    runRaw(u"pragma max_page_count = 100000000"_s);
    EXPECT_EQ(bad, titles.mid(1));
    EXPECT_EQ(rows(u"select xlsfilename from log where Status=True"_s), titles.first(1));
    EXPECT_EQ(heard([&] { bad = SurveyReader().readAll(files.mid(1)); }), QStringList());
    EXPECT_EQ(bad, QStringList());
    EXPECT_EQ(rows(u"select xlsfilename from log where Status=True"_s), titles);
}

TEST_F(FaultsTest, theNewestCopiesAreKeptWhateverTheClockSays) {
    ASSERT_TRUE(QDir(home()).mkpath(u"backup"_s));
    write(path("backup/Tallywell-2023-01-01-101500.mdb"), "older, without a number");
    write(path("backup/Tallywell-of my own.mdb"), "not ours");
    write(path("backup/Tallywell-2024-01-01-101500-1.mdb.part"), "killed while it copied");
    QStringList expected;
    for (const int year : {2024, 2024, 2094, 1970, 2024, 1970, 1970, 2024, 2024, 2024, 2094, 1970}) {
        forms::nowSeat = [year] { return QDateTime({year, 3, 5}, {10, 15}); };
        addCustomer(u"Customer"_s);
        toForgetBackup();
        toBackupBeforeLoss();
        expected.prepend(path("backup/Tallywell-%1-03-05-101500-%2.mdb").arg(year).arg(expected.size() + 1));
    }
    EXPECT_EQ(toListBackups(strDatabasePath), expected.first(10));
    EXPECT_EQ(QDir(path("backup")).entryList(QDir::Files).size(), 11);
    EXPECT_TRUE(QFile::exists(path("backup/Tallywell-of my own.mdb")));
    ado::Connection copy;
    copy.OpenReadOnly(expected[1], u"kvtwpa"_s);
    EXPECT_EQ(storeRows(copy, u"customer"_s).size(), 12) << "Acme and eleven";
}

TEST_F(FaultsTest, aSurveyOfAnyDayIsExportedAndReadBackUnderItsDay) {
    for (const QDate& day : {QDate(1970, 1, 1), QDate(2099, 12, 31), QDate(9999, 12, 31)}) {
        forms::todaySeat = [day] { return day; };
        addStored(ann, day, {0, 4});
        open();
        EXPECT_EQ(heard(exportSurvey), QStringList{exported});
        frmNewSurvey::unload();
        frmSelectSurvey::unload();
        const QString file = rows(u"select xlsfilename from log"_s).last();
        EXPECT_FALSE(QFile::permissions(path(qPrintable(file))) & ofOthers) << file.toStdString();
        EXPECT_EQ(SurveyReader().readAll({home() + u'/' + file}), QStringList());
    }
    for (const QString& table : {u"feedbackobjective"_s, u"feedbackdescriptive"_s})
        EXPECT_EQ(rows(u"select surveydate from "_s + table),
                  (QStringList{u"01/01/1970"_s, u"31/12/2099"_s, u"31/12/9999"_s}));
}

} // namespace
