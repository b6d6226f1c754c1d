// SPDX-License-Identifier: GPL-3.0-or-later
// What a server, or the way to it, can fail at: one sentence each, and nothing changed.
#include "platform/ado/session.h"
#include "tests/support/certificates.h"
#include "tests/support/enginestest.h"

namespace {
struct ServerFaultsTest : ::testing::Test {
    static void SetUpTestSuite() {
        certificates = std::make_unique<Certificates>();
        port = freePort();
        QFile::copy(certificates->file(u"here"_s), certificates->file(u"shown"_s));
        host = std::make_unique<PrivateServer>(certificates->options(port, u"shown"_s));
    }
    static void TearDownTestSuite() { host.reset(); }
    void SetUp() override {
        ASSERT_TRUE(host->isRunning()) << host->log();
        root.ConnectionString = host->connection({});
        root.Open();
        for (const QString& sql :
             {u"create or replace database tally"_s,
              u"create or replace table tally.customer (custid int primary key, custname longtext)"_s,
              u"create or replace user reader identified by 'x;{y}'"_s,
              u"grant select on tally.* to reader"_s,
              u"create or replace user single identified by 'x' with max_user_connections 1"_s,
              u"grant select on tally.* to single"_s})
            root.session()->prepare({sql, {}}).step();
        root.Execute(u"insert into tally.customer values (1, 'Acme')"_s);
    }
    static QString at(const QString& hosts, const QString& further = {}) {
        return u"DATABASE=tally;UID=member;PWD=kvtwpa;SSLCA="_s + certificates->file(u"authority"_s) +
               u";SERVER=" + hosts + u';' + further;
    }
    static QString here(const QString& further = {}) { return at(u"127.0.0.1:%1"_s.arg(port), further); }
    /// What is said when a program opens the connection and runs a statement.
    static QString said(const QString& connection,
                        const QString& sql = u"insert into customer values (2, 'Bad')"_s) {
        ado::Connection store;
        store.ConnectionString = connection;
        return failureOf([&] {
            store.Open();
            store.Execute(sql);
        });
    }
    /// Shows that certificate from now on.
    void show(const QString& certificate) {
        QFile::remove(certificates->file(u"shown"_s));
        QFile::copy(certificates->file(certificate), certificates->file(u"shown"_s));
        root.Execute(u"flush ssl"_s);
    }
    static int idOf(ado::Connection& connection) {
        return rows(connection, u"select connection_id()"_s)[0].section(u' ', 1).toInt();
    }

    inline static std::unique_ptr<Certificates> certificates;
    inline static std::unique_ptr<PrivateServer> host;
    inline static int port;
    ado::Connection root;
};

TEST_F(ServerFaultsTest, aServerThatCannotBeUsedSaysWhy) {
    const int unused = freePort();
    const QString mine = u"127.0.0.1:%1"_s.arg(port);
    const QString dead = u"127.0.0.1:%1"_s.arg(unused);
    const QString server = u"The database server '"_s + mine + u"' ";
    const QString authority = u"The certificate of the database server '"_s + mine +
                              u"' is signed by an authority that is not known here.";
    const std::pair<QString, QString> table[] = {
        {at(dead), u"The database server '"_s + dead + u"' cannot be reached."},
        {at(u"[::1]:%1"_s.arg(unused)), u"The database server '[::1]:%1' cannot be reached."_s.arg(unused)},
        {at(u"nowhere.invalid"_s), u"The database server 'nowhere.invalid' is not known in this network."_s},
        {at(dead + u",nowhere.invalid"),
         u"None of the database servers '"_s + dead + u", nowhere.invalid' can be reached."},
        {at(u","_s), u"No database server is named."_s},
        {here(u"PWD=wrong"_s), u"The database server does not accept the user 'member' or the password."_s},
        {here(u"DATABASE=other"_s), u"The user 'member' may not use the database 'other'."_s},
        {here(u"DATABASE=other;UID=tester;PWD=secret"_s), u"The database server has no database 'other'."_s},
        {here(u"SSLCA="_s), authority},
        {at(dead + u',' + mine, u"SSLCA="_s + certificates->file(u"stranger"_s)), authority},
        {here(u"SSLCA=/none.pem"_s), u"The file of the certificate authority '/none.pem' cannot be read."_s},
        {here(u"UID=reader;PWD="_s + ado::braced(u"x;{y}"_s)),
         u"The user 'reader' has not the right INSERT on 'customer' of the database server."_s}};
    for (const auto& [connection, sentence] : table)
        EXPECT_EQ(said(connection), sentence) << connection;
    for (const QString& connection :
         {here(), at(u"localhost:%1"_s.arg(port)), at(u"nowhere.invalid, "_s + dead + u", " + mine)})
        EXPECT_EQ(said(connection, u"select 1"_s), QString()) << connection;

    show(u"elsewhere"_s);
    EXPECT_EQ(said(here()), server + u"shows the certificate of another host.");
    show(u"expired"_s);
    EXPECT_EQ(said(here()),
              u"The certificate of the database server '"_s + mine + u"' has expired or is not valid yet.");
    show(u"here"_s);
    ado::Connection only;
    only.ConnectionString = here(u"UID=single;PWD=x"_s);
    only.Open();
    EXPECT_EQ(said(only.ConnectionString),
              server + u"takes no further connection at present. Try again in a moment.");
    only.Close();
    root.Execute(u"set global read_only=1"_s);
    EXPECT_EQ(said(here()), u"The database cannot be changed: the server takes no changes."_s);
    root.Execute(u"set global read_only=0"_s);
    root.Execute(u"set global max_allowed_packet=65536"_s);
    ado::Connection narrow;
    narrow.ConnectionString = here();
    narrow.Open();
    for (const int size : {100000, 1000000}) {
        EXPECT_EQ(failureOf([&] {
                      narrow.Execute(u"insert into customer values (2, '"_s + QString(size, u'x') + u"')");
                  }),
                  u"A text is longer than the database server accepts (its setting max_allowed_packet)."_s);
        EXPECT_EQ(narrow.State(), ado::StateOpen);
    }
    root.Execute(u"set global max_allowed_packet=16777216"_s);

    host->end();
    host->start({u"--bind-address=127.0.0.1"_s, u"--port=%1"_s.arg(port), u"--version=10.5.1-old"_s});
    EXPECT_EQ(said(here()), server + u"offers no protected connection (TLS), which this program needs.");
    EXPECT_EQ(said(host->connection({})),
              u"The database server is too old (10.5.1-old). This program needs MariaDB 10.11 or later."_s);
    host->end();
    host->start(certificates->options(port, u"shown"_s));
    root.Open();
    EXPECT_EQ(rows(root, u"select * from tally.customer"_s), QStringList{u"qlonglong 1|QString Acme"_s});
}

TEST_F(ServerFaultsTest, aHostThatIsMuteIsGivenUpAndAskedLastThen) {
    const int mute = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    const int silent = freePort();
    address.sin_port = htons(static_cast<std::uint16_t>(silent));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(bind(mute, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(mute, 5), 0);
    const QString both = at(u"127.0.0.1:%1,127.0.0.1:%2"_s.arg(silent).arg(port));
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(said(both, u"select 1"_s), QString());
    EXPECT_GT(waited.elapsed(), 1000);
    EXPECT_LT(waited.restart(), 9000);
    EXPECT_EQ(said(both, u"select 1"_s), QString());
    EXPECT_LT(waited.elapsed(), 1000);
    close(mute);
}

TEST_F(ServerFaultsTest, aLostConnectionIsNoticedAndNothingOfItsTransactionIsSaved) {
    for (const QString& connection : {here(), host->connection(u"tally"_s)}) {
        ado::Connection store;
        store.ConnectionString = connection;
        store.OwnTables = {u"customer"_s};
        store.Open();
        EXPECT_FALSE(store.HasEnded());
        root.Execute(u"kill %1"_s.arg(idOf(store)));
        EXPECT_TRUE(QTest::qWaitFor([&] { return store.HasEnded(); }));
        store.OwnTables.clear();
        store.Open();
        const auto killAndTry = [&](const auto& step) {
            root.Execute(u"kill %1"_s.arg(idOf(store)));
            QTest::qWait(50);
            return failureOf(step);
        };
        const QString lost = u"The connection to the database server is lost. "_s;
        const QString look = lost + u"Try again, and look whether the last step has been saved.";
        const QString unsaved = u"Nothing of this step has been saved."_s;
        const auto change = [&] { store.Execute(u"update customer set custname='changed'"_s); };
        const auto commit = [&] { store.CommitTrans(); };
        EXPECT_EQ(killAndTry(change), look);
        EXPECT_EQ(store.State(), ado::StateClosed);
        store.Open();
        store.BeginTrans();
        change();
        EXPECT_EQ(killAndTry(change), lost + unsaved + u" Try again.");
        store.Errors().Clear();
        EXPECT_TRUE(failureOf(commit).endsWith(unsaved));
        EXPECT_EQ(store.Errors().Count(), 1);
        store.Open();
        EXPECT_TRUE(failureOf(commit).endsWith(unsaved)) << "the transaction was on another connection";
        store.BeginTrans();
        change();
        EXPECT_EQ(killAndTry(commit), look);
        EXPECT_EQ(rows(root, u"select custname from tally.customer"_s), QStringList{u"QString Acme"_s});
    }
}
} // namespace
