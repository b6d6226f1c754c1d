// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/storetest.h"

#include "core/Main.h"
#include "core/base/backup.h"
#include "core/store/transaction.h"
#include "platform/ado/datasources.h"
#include "tests/support/serverstore.h"

#include <QAbstractButton>

void expectNoTransaction() {
    EXPECT_FALSE(Transaction::isOpen() || (cnnMain && cnnMain->InTransaction()))
        << "the store is locked while the user reads";
}

forms::Answer ExpectedMessages::take(const forms::Message& message) {
    expectNoTransaction();
    if (waiting.empty()) {
        ADD_FAILURE() << "unexpected message: " << message.text;
        return forms::Answer::Cancel;
    }
    const Expected next = waiting.front();
    waiting.pop_front();
    if (next.beginning) {
        EXPECT_EQ(message.text.left(next.message.text.size()), next.message.text);
    } else {
        EXPECT_EQ(message.text, next.message.text);
    }
    EXPECT_EQ(message.style, next.message.style) << message.text;
    EXPECT_EQ(message.title, next.message.title) << message.text;
    return next.answer;
}

ExpectedMessages::~ExpectedMessages() {
    for (const Expected& missing : waiting)
        ADD_FAILURE() << "message never came: " << missing.message.text;
}

namespace {
/// The server of all tests of this program, when the environment asks for tests on a server.
class ServerOfTests : public ::testing::Environment {
public:
    void SetUp() override {
        if (qEnvironmentVariable("GAUGEWELL_TEST_STORE") == u"server")
            host = std::make_unique<PrivateServer>();
    }
    void TearDown() override { host.reset(); }
    inline static std::unique_ptr<PrivateServer> host;
};

const auto* const serverOfTests = ::testing::AddGlobalTestEnvironment(new ServerOfTests);

/// Makes a new store on the server and the data source that leads to it.
void useServer(const PrivateServer& host) {
    ASSERT_TRUE(host.isRunning());
    ado::Connection server;
    makeStore(server, host);
    ASSERT_EQ(
        ado::SQLConfigDataSource(
            ado::AddSystemSource, u"server"_s + QChar(),
            QStringList{u"DSN=gwl"_s, u"SOCKET="_s + host.socket(), u"DATABASE=tally"_s, u"UID=member"_s, {}}
                .join(QChar())),
        1);
}
} // namespace

void StoreTest::SetUp() {
    ASSERT_TRUE(directory.isValid());
    qputenv("XDG_CONFIG_HOME", directory.filePath(u"config"_s).toUtf8());
    ASSERT_TRUE(QFile::copy(QStringLiteral(GAUGEWELL_STORE), directory.filePath(u"Tallywell.mdb"_s)));
    setHomeDirectory(directory.path());
    forgetBackup();
    ASSERT_TRUE(toCreateDSN(u"gwl"_s, strDatabasePath));
    if (ServerOfTests::host)
        useServer(*ServerOfTests::host);
    toOpenConnection();
    ASSERT_EQ(cnnMain->State(), ado::StateOpen);
    MDIMain::instance().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&MDIMain::instance()));
}

void StoreTest::TearDown() {
    MDIMain::destroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "a form has left the hourglass behind";
    cnnMain.reset();
    setHomeDirectory({});
}

void StoreTest::copyHomeFile(const QString& name, const QString& as) const {
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/") + name, path(as.isEmpty() ? name : as)));
}

QString StoreTest::panel() {
    return MDIMain::instance().stsBar->Panels(1).Text();
}

QString StoreTest::activeForm() {
    const QMdiSubWindow* active = MDIMain::instance().findChild<QMdiArea*>()->activeSubWindow();
    return active && active->widget() ? active->widget()->objectName() : QString();
}

void StoreTest::expectIdle() const {
    EXPECT_EQ(messages.left(), 0);
    EXPECT_EQ(panel(), QString());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(cnnMain->InTransaction());
}

QString StoreTest::masterConnection() {
    return ServerOfTests::host ? ServerOfTests::host->connection(u"tally"_s) : QString();
}

QStringList StoreTest::rows(const QString& sql) {
    ado::Recordset records(sql, *cnnMain);
    QStringList result;
    for (; !records.Eof(); records.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < records.FieldCount(); ++i)
            fields << records.FieldAt(i).Text();
        result << fields.join(u'|');
    }
    return result;
}

QString StoreTest::messageOf(Fault fault) {
    static const std::map<Fault, std::pair<QString, QString>> ofFileAndServer{
        {Incomplete, {u"1\r\n"_s, u"1064\r\nYou have an error in your SQL syntax"_s}},
        {NoTable, {u"1\r\nno such table: "_s, u"1146\r\nTable 'tally."_s}},
        {Duplicate, {u"19\r\nUNIQUE constraint failed"_s, u"1062\r\nDuplicate entry"_s}},
        {Locked,
         {u"5\r\nThe database is in use by another program. Close that program and try again."_s,
          u"1205\r\nThe same records are being changed by someone else. Try again in a moment."_s}},
        {Refused, {u"19\r\nno"_s, u"1644\r\nno"_s}}};
    const auto& [file, server] = ofFileAndServer.at(fault);
    return u"Error : "_s + (cnnMain->IsFile() ? file : server);
}

void StoreTest::refuse(const QString& change, const QString& condition) {
    runRaw((cnnMain->IsFile()
                ? u"create trigger refuses before %1 when %2 begin select raise(abort, 'no'); end"_s
                : u"create trigger refuses before %1 for each row if %2 then "
                  "signal sqlstate '45000' set message_text='no'; end if"_s)
               .arg(change, condition));
}

int StoreTest::add(const QString& table, const std::vector<std::pair<const char*, QVariant>>& fields) {
    return ::add(*cnnMain, table, fields).toInt();
}

void StoreTest::addQuestionnaire(int respondentid, int surveyid, const std::vector<int>& questions) {
    int order = 0;
    for (const int questionid : questions) {
        add(u"responquesindex"_s, {{"respondentid", respondentid},
                                   {"questionid", questionid},
                                   {"surveyid", surveyid},
                                   {"Order", ++order}});
    }
}

void StoreTest::addScore(int respondentid, int questionid, int surveyid, const QDate& date,
                         const QVariant& weightage, const QVariant& score) {
    add(u"feedbackobjective"_s, {{"respondentid", respondentid},
                                 {"questionid", questionid},
                                 {"surveyid", surveyid},
                                 {"surveydate", date},
                                 {"weightage", weightage},
                                 {"score", score}});
}

void StoreTest::addWords(int respondentid, int questionid, int surveyid, const QDate& date,
                         const QString& words, int weightage) {
    add(u"feedbackdescriptive"_s, {{"respondentid", respondentid},
                                   {"questionid", questionid},
                                   {"surveyid", surveyid},
                                   {"surveydate", date},
                                   {"weightage", weightage},
                                   {"Description", words}});
}

void press(QWidget& form, const char* button) {
    auto* found = control<QAbstractButton>(form, button);
    ASSERT_TRUE(found && found->isVisible() && found->isEnabled()) << button;
    QTest::mouseClick(found, Qt::LeftButton);
}

void type(const QString& text) {
    for (const QChar c : text) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            Qt::NoModifier);
    }
}

void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), pressed, modifiers);
}

void keyOn(QWidget& form, const char* name, Qt::Key pressed) {
    control<QWidget>(form, name)->setFocus();
    key(pressed);
}

void shortcut(Qt::Key pressed) {
    QWidget* target = QApplication::focusWidget();
    QTest::keyClick(target ? target : &MDIMain::instance(), pressed, Qt::ControlModifier);
}

void clickEntry(QWidget& form, const char* list, int entry, Qt::KeyboardModifiers held) {
    const auto* found = control<QListWidget>(form, list);
    QTest::mouseClick(found->viewport(), Qt::LeftButton, held,
                      found->visualItemRect(found->item(entry)).center());
}
