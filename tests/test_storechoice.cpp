// SPDX-License-Identifier: GPL-3.0-or-later
// A department's way to a shared store: the administrator's script, moving, signing in, and back into a file.
#include "core/frmSignIn.h"
#include "core/frmStore.h"
#include "core/signin.h"
#include "exchange/files/homefile.h"
#include "platform/desktop/secret.h"
#include "reference/frmCustomer.h"
#include "tests/support/privateserver.h"
#include "tests/support/storetest.h"

namespace {
const QString notAccepted = u"The database server does not accept the user 'ann' or the password."_s;

struct StoreChoiceTest : StoreTest {
    static void SetUpTestSuite() { server = std::make_unique<PrivateServer>(); }
    static void TearDownTestSuite() { server.reset(); }
    void TearDown() override {
        useStore({});
        StoreTest::TearDown();
    }
    /// What the administrator's script answers.
    static QString runScript(const QStringList& arguments) {
        qputenv("MARIADB", "mariadb --no-defaults --user=tester --password=secret --socket=" +
                               server->socket().toUtf8());
        qputenv("GAUGEWELL_SQL", GAUGEWELL_SERVER_SQL);
        QProcess script;
        script.setProcessChannelMode(QProcess::MergedChannels);
        script.start(QStringLiteral(GAUGEWELL_SOURCE "/tools/makeserverstore.sh"), arguments);
        script.waitForFinished();
        return QString::fromUtf8(script.readAll());
    }
    /// Makes a database and returns the password of the account for "ann".
    static QString makeDatabase(const QString& name) {
        runAsAdministrator({u"drop database if exists "_s + name, u"drop user if exists ann@localhost"_s});
        const QString said = runScript({name, u"ann@localhost"_s});
        const auto password = QRegularExpression(u"the password is (\\S+)"_s).match(said);
        EXPECT_TRUE(password.hasMatch()) << said;
        return password.captured(1);
    }
    static void runAsAdministrator(const QStringList& statements) {
        ado::Connection administrator;
        administrator.ConnectionString = server->connection({});
        administrator.Open();
        for (const QString& sql : statements)
            administrator.Execute(sql);
    }
    static StoreChoice choiceOf(const QString& database) {
        return {.server = server->socket(), .database = database, .user = u"ann"_s, .authority = {}};
    }
    static void enter(const StoreChoice& choice, const QString& password) {
        frmStore& form = show<frmStore>();
        control<QRadioButton>(form, "opnServer")->click();
        for (const auto& [name, text] : {std::pair{"txtServer", choice.server},
                                         {"txtDatabase", choice.database},
                                         {"txtUser", choice.user},
                                         {"txtPassword", password}})
            control<QLineEdit>(form, name)->setText(text);
    }
    static QStringList customers() { return rows(u"select custname from customer order by custname"_s); }

    QMap<QString, QString> keyring;
    bool hasKeyring = true;
    Replaced<desktop::findSecretHook> find{[this](const desktop::SecretKey& key) -> std::optional<QString> {
        return keyring.contains(key.database) ? std::optional(keyring[key.database]) : std::nullopt;
    }};
    Replaced<desktop::keepSecretHook> keep{
        [this](const desktop::SecretKey& key, const QString&, const QString& password) {
            if (hasKeyring)
                keyring[key.database] = password;
            return hasKeyring;
        }};
    Replaced<desktop::forgetSecretHook> forget{
        [this](const desktop::SecretKey& key) { keyring.remove(key.database); }};
    inline static std::unique_ptr<PrivateServer> server;
};

TEST_F(StoreChoiceTest, theScriptNeverTouchesWhatIsThere) {
    makeDatabase(u"tally"_s);
    EXPECT_EQ(runScript({u"tally"_s, u"ann@localhost"_s}),
              u"The database 'tally' is there already.\nann@localhost: has an account already and keeps its "
              "password.\n"_s);
    for (const QStringList& arguments :
         {QStringList{u"mysql"_s}, QStringList{u"a b"_s}, QStringList{u"fine"_s, u"a'b"_s}, QStringList{}})
        EXPECT_TRUE(runScript(arguments).startsWith(u"makeserverstore.sh: ")) << arguments.join(u' ');
}

TEST_F(StoreChoiceTest, aStoreMovesToTheServerAndBackIntoAFile) {
    const QString password = makeDatabase(u"tally"_s);
    addRespondent(addCustomer(u"Zoë"_s), u"Ann"_s);
    enter(choiceOf(u"tally"_s), password);
    const QString copy = path(u"Tallywell.mdb"_s);
    messages.expectInformation(
        u"The server has as many rows as the file, table by table, and is in use from now "
        "on. The file '%1' stays as it is. Survey files are not moved."_s.arg(copy));
    press(frmStore::instance(), "cmdMove");
    EXPECT_FALSE(cnnMain->IsFile());
    EXPECT_EQ(readStoreChoice(), choiceOf(u"tally"_s));
    EXPECT_EQ(frmStore::loaded(), nullptr);
    EXPECT_THROW(cnnMain->Execute(u"drop table customer"_s), Failure) << "an account changes rows only";
    addCustomer(u"Added there"_s);
    for (const bool isKept : {true, false}) { // with the password in use
        frmStore::instance().Show();
        control<QAbstractButton>(frmStore::instance(), "chkKeep")->click();
        press(frmStore::instance(), "cmdOK");
        EXPECT_EQ(keyring.contains(u"tally"_s), isKept);
    }

    enter(choiceOf(u"tally"_s), {}); // the password in use
    named = copy;
    messages.expectInformation(u"The store has been copied into the file '"_s + copy + u"'.");
    press(frmStore::instance(), "cmdCopy");
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList(QDir::Files).size(), 1) << "of the file that was replaced";
    control<QRadioButton>(frmStore::instance(), "opnFile")->click();
    press(frmStore::instance(), "cmdOK");
    EXPECT_TRUE(cnnMain->IsFile());
    EXPECT_EQ(readStoreChoice(), StoreChoice());
    EXPECT_EQ(customers(), (QStringList{u"Added there"_s, u"Zoë"_s}));

    enter(choiceOf(u"tally"_s), password); // what the server has is replaced only when the user says so
    messages.expectTitled(
        u"The database on the server has data of 2 customers. Is all of that to be deleted and "
        "replaced by this store?"_s,
        style::yesNo + style::critical + style::secondButton, Answer::No);
    press(frmStore::instance(), "cmdMove");
    EXPECT_TRUE(cnnMain->IsFile());
    messages.expectCritical(u"This file is the store in use. Choose another name."_s);
    press(frmStore::instance(), "cmdCopy");
    expectIdle();
}

TEST_F(StoreChoiceTest, badInputSaysOneSentenceAndChangesNothing) {
    makeDatabase(u"newer"_s);
    const QString password = makeDatabase(u"tally"_s); // the account is made anew
    for (const QString& database : {u"newer"_s, u"older"_s, u"blank"_s})
        runAsAdministrator({u"create database if not exists "_s + database,
                            u"grant all on "_s + database + u".* to ann@localhost"});
    runAsAdministrator({u"create or replace view newer.database_version as select 9 as version"_s,
                        u"create or replace view older.database_version as select 1 as version"_s});
    addCustomer(u"Mine"_s);
    const StoreChoice good = choiceOf(u"tally"_s);
    StoreChoice noServer = good, noUser = good, unknown = good;
    noServer.server = u" "_s;
    noUser.user.clear();
    unknown.server = u"/nowhere"_s;
    const std::tuple<StoreChoice, QString, QString> cases[] = {
        // with the password entered
        {{}, {}, u"Enter the server."_s},
        {noServer, password, u"Enter the server."_s},
        {noUser, password, u"Enter the user."_s},
        {good, u"wrong"_s, notAccepted},
        {good, {}, notAccepted},
        {choiceOf(u"nowhere"_s), password, u"The user 'ann' may not use the database 'nowhere'."_s},
        {choiceOf(u"blank"_s), password,
         u"The database on the server is not prepared for this program. Its administrator does that."_s},
        {choiceOf(u"newer"_s), password,
         u"The database on the server was made by a newer version of this program and needs that version."_s},
        {choiceOf(u"older"_s), password,
         u"The database on the server is of an older version of this program. Its administrator has to bring "
         "it up to date."_s},
        {unknown, password, u"The database server '/nowhere' cannot be reached."_s},
    };
    for (const auto& [choice, entered, message] : cases) {
        for (const char* button : {"cmdOK", "cmdMove"}) {
            SCOPED_TRACE(message.toStdString() + button);
            enter(choice, entered);
            messages.expectCritical(message);
            press(frmStore::instance(), button);
            EXPECT_EQ(readStoreChoice(), StoreChoice());
            EXPECT_EQ(customers(), QStringList(u"Mine"_s));
            expectIdle();
        }
    }
    enter(good, password);
    QDir(home()).mkdir(u"store.ini"_s); // cannot be written
    messages.expectCritical(u"'%1' cannot be written."_s.arg(path(u"store.ini"_s)));
    press(frmStore::instance(), "cmdOK");
    EXPECT_FALSE(storeInUse().choice.isServer());
    EXPECT_EQ(strDatabasePath, path(u"Tallywell.mdb"_s));
    QDir(home()).rmdir(u"store.ini"_s);
    frmCustomer::instance().Show();
    messages.expectCritical(u"Close the other windows first: they show rows of the store in use."_s);
    press(frmStore::instance(), "cmdOK");
    EXPECT_TRUE(cnnMain->IsFile());
}

TEST_F(StoreChoiceTest, aStartAsksUntilThePasswordIsRight) {
    const QString password = makeDatabase(u"tally"_s);
    QStringList shown;
    QStringList answers{u"wrong"_s, password};
    QTimer user; // answers each dialog
    QObject::connect(&user, &QTimer::timeout, [&] {
        frmSignIn* form = frmSignIn::loaded();
        if (!form || !control<QLineEdit>(*form, "txtPassword")->hasFocus())
            return;
        auto* refusal = control<QLabel>(*form, "lblRefusal");
        shown << (refusal->isVisible() ? refusal->text() : QString());
        if (answers.isEmpty())
            return key(Qt::Key_Escape);
        type(answers.takeFirst());
        control<QAbstractButton>(*form, "chkKeep")->setChecked(true);
        key(Qt::Key_Return);
    });
    user.start(10);
    const auto start = [&] {
        shown.clear();
        useStore({});
        signIn(choiceOf(u"tally"_s));
        return shown;
    };
    EXPECT_EQ(start(), (QStringList{{}, notAccepted}));
    EXPECT_EQ(start(), QStringList()) << "the desktop keeps the password";
    toOpenConnection();
    EXPECT_EQ(customers(), QStringList());
    keyring[u"tally"_s] = u"old"_s;
    EXPECT_EQ(start(), QStringList(notAccepted)) << "cancelled";
    messages.expect(u"Error :1045\r\n"_s + notAccepted);
    toOpenConnection();

    hasKeyring = false;
    keyring.clear();
    answers << password;
    messages.expectInformation(
        u"This desktop has no service that keeps passwords. The password will be asked for at each start."_s);
    EXPECT_EQ(start(), QStringList(QString()));
    toOpenConnection();
    EXPECT_EQ(customers(), QStringList());
}

TEST_F(StoreChoiceTest, theFolderOfSurveyFilesIsTheStores) {
    const auto enterFolder = [](const QString& folder) {
        frmStore::instance().Show();
        control<QLineEdit>(frmStore::instance(), "txtFolder")->setText(folder);
        press(frmStore::instance(), "cmdOK");
    };
    EXPECT_EQ(surveyFilePath(u"a.xls"_s), path(u"a.xls"_s));
    for (const QString& folder : {u"relative"_s, path(u"missing"_s)}) {
        messages.expectCritical(
            u"'%1' is no folder that you can write to. Enter its full path."_s.arg(folder));
        enterFolder(folder);
    }
    QDir(home()).mkdir(u"shared"_s);
    enterFolder(path(u"shared/"_s));
    EXPECT_EQ(surveyFilePath(u"a.xls"_s), path(u"shared/a.xls"_s));
    toOpenConnection(); // as another program
    EXPECT_EQ(surveyFilePath(u"a.xls"_s), path(u"shared/a.xls"_s));
    enterFolder({});
    EXPECT_EQ(surveyFilePath(u"a.xls"_s), path(u"a.xls"_s));
}
} // namespace
