// SPDX-License-Identifier: GPL-3.0-or-later
// A store on a cluster of three nodes, of which one is cut off and another is killed.
#include "platform/ado/session.h"
#include "tests/support/certificates.h"
#include "tests/support/enginestest.h"

#include <QElapsedTimer>

#include <array>
#include <map>

namespace {
/// The script by which nodes hand over a state. These begin with the same data and send each other only what
/// has been written since, which needs no more than the donor's position at the joiner.
constexpr const char* transfer = R"sh(#!/bin/sh
cd "$(dirname "$0")"
while [ $# -gt 0 ]; do
  case $1 in --role) role=$2 ;; --gtid) gtid=$2 ;; --address) address=$2 ;; --bypass) bypass=yes ;; esac
  shift
done
if [ "$role" = joiner ]; then
  mkfifo "$$"; echo "ready 127.0.0.1:1/$$"; cat "$$"; rm "$$"
elif [ "$bypass" ]; then
  echo "$gtid" > "${address##*/}"; echo "done $gtid"
else
  exit 1
fi
)sh";

QString library() {
    const QString usual = u"/usr/lib/galera/libgalera_smm.so"_s;
    return QFile::exists(usual) ? usual : u"/usr/lib64/galera-4/libgalera_smm.so"_s;
}

struct ClusterTest : ::testing::Test {
    static void SetUpTestSuite() {
        if (!QFile::exists(library()))
            return;
        folder = std::make_unique<QTemporaryDir>();
        const QString script = folder->filePath(u"wsrep_sst_positions"_s);
        writeFile(script, transfer);
        QFile::setPermissions(script, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        qputenv("PATH", folder->path().toUtf8() + ':' + qgetenv("PATH"));
        certificates = std::make_unique<Certificates>();
        for (auto& [client, group, writes] : ports)
            client = freePort(), group = freePort(), writes = freePort();
        PrivateServer first(optionsOf(0, true));
        ado::Connection store;
        makeStore(store, first);
        store.Close();
        first.end();
        for (const QString& left : {u"/galera.cache"_s, u"/gvwstate.dat"_s})
            QFile::remove(first.data() + left);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            nodes[i] = std::make_unique<PrivateServer>(first, optionsOf(i, i == 0));
            admins[i].ConnectionString = nodes[i]->connection(u"tally"_s);
            EXPECT_TRUE(opens(admins[i])) << nodes[i]->log().right(3000);
        }
    }
    static void TearDownTestSuite() {
        for (std::size_t i = nodes.size(); i-- > 0;) {
            admins[i].Close();
            if (nodes[i])
                nodes[i]->kill();
            nodes[i].reset();
        }
    }
    void SetUp() override { ASSERT_TRUE(QFile::exists(library())) << "the package galera-4 is missing"; }
    static QStringList optionsOf(std::size_t i, bool isFirst) {
        const auto& [client, group, writes] = ports[i];
        QStringList peers;
        for (const Ports& node : ports)
            peers << u"127.0.0.1:%1"_s.arg(node.group);
        // A node is taken for lost after two seconds instead of five.
        const QString times = u"evs.suspect_timeout=PT2S;evs.inactive_timeout=PT4S;evs.install_timeout=PT4S;"
                              "evs.keepalive_period=PT0.5S;pc.announce_timeout=PT1S"_s;
        return certificates->options(client) +
               u"--innodb-flush-log-at-trx-commit=2 --binlog-format=ROW --innodb-autoinc-lock-mode=2 "
               "--wsrep-on=ON --wsrep-cluster-name=tally --wsrep-node-address=127.0.0.1 "
               "--wsrep-sst-method=positions"_s.split(u' ') +
               QStringList{u"--wsrep-provider="_s + library(),
                           u"--wsrep-cluster-address=gcomm://"_s + (isFirst ? QString() : peers.join(u',')),
                           u"--wsrep-provider-options=base_port=%1;gmcast.listen_addr=tcp://127.0.0.1:%1;"
                           "ist.recv_addr=127.0.0.1:%2;gcache.size=16M;%3"_s.arg(
                               QString::number(group), QString::number(writes), times)};
    }
    /// Tries for half a minute.
    static bool opens(ado::Connection& store) {
        return QTest::qWaitFor([&] { return failureOf([&] { store.Open(); }).isEmpty(); }, 30000);
    }
    /// A program whose list of hosts begins with that node.
    static void open(ado::Connection& store, std::size_t first) {
        QStringList hosts;
        for (std::size_t i = 0; i < ports.size(); ++i)
            hosts << u"127.0.0.1:%1"_s.arg(ports[(first + i) % ports.size()].client);
        store.ConnectionString = u"SERVER="_s + hosts.join(u',') + u";DATABASE=tally;UID=member;PWD=kvtwpa;" +
                                 u"SSLCA=" + certificates->file(u"authority"_s);
        ASSERT_TRUE(opens(store));
    }
    static void isolate(std::size_t node, bool isAlone) {
        admins[node].session()->runScript(isAlone ? "set global wsrep_provider_options='gmcast.isolate=1';"
                                                  : "set global wsrep_provider_options='gmcast.isolate=0';");
    }
    /// Waits until the node that was cut off has caught up with the others.
    static void heal(std::size_t node) {
        isolate(node, false);
        ado::Connection& admin = admins[node];
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                QStringList size;
                failureOf([&] {
                    if (admin.State() != ado::StateOpen)
                        admin.Open();
                    size = rows(admin, u"select variable_value from information_schema.global_status where "
                                       "variable_name='wsrep_cluster_size'"_s);
                });
                return size == QStringList(u"QString 3"_s);
            },
            30000));
    }
    /// Saves a customer with two respondents.
    static void save(ado::Connection& store, const QString& name) {
        store.BeginTrans();
        const QVariant custid = add(store, u"customer"_s, {{"custname", name}});
        for (const QString& respondent : {u"Ann"_s, u"Bob"_s})
            add(store, u"respondent"_s, {{"custid", custid}, {"respondentname", respondent}});
        store.CommitTrans();
    }

    struct Ports {
        int client, group;
        int writes; ///< those that a node has missed
    };
    inline static std::unique_ptr<QTemporaryDir> folder;
    inline static std::unique_ptr<Certificates> certificates;
    inline static std::array<Ports, 3> ports;
    inline static std::array<std::unique_ptr<PrivateServer>, 3> nodes;
    inline static std::array<ado::Connection, 3> admins;
};

TEST_F(ClusterTest, whatOneNodeConfirmsIsReadOnAnotherAndAConflictIsToldAsSuch) {
    ado::Connection one, other;
    open(one, 0);
    open(other, 2);
    const QString all = u"select name, content from programsetting order by name"_s;
    for (int i = 0; i < 50; ++i) {
        ado::Connection& writer = i % 2 == 0 ? one : other;
        add(writer, u"programsetting"_s, {{"name", u"n%1"_s.arg(i)}, {"content", u"new"_s}});
        EXPECT_EQ(rows(i % 2 == 0 ? other : one, all).size(), i + 1) << "what has just been confirmed";
    }
    const auto change = [](ado::Connection& store, const QString& content) {
        store.Execute(u"update programsetting set content='"_s + content + u"' where name='n7'");
    };
    one.BeginTrans();
    other.BeginTrans();
    change(one, u"mine"_s);
    change(other, u"theirs"_s);
    one.CommitTrans();
    EXPECT_EQ(
        failureOf([&] {
            change(other, u"again"_s);
            other.CommitTrans();
        }),
        u"The same records have been changed by someone else at the same time. Nothing of this step has "
        "been saved. Try again."_s);
    EXPECT_FALSE(other.InTransaction());
    for (ado::Connection* store : {&one, &other})
        EXPECT_EQ(rows(*store, all).filter(u"n7|"_s), QStringList{u"QString n7|QString mine"_s});
}

TEST_F(ClusterTest, programsGoOnWhenANodeIsCutOffAndAnotherIsKilled) {
    constexpr int steps = 60; // for each program
    const std::map<int, std::function<void()>> events{
        {15, [] { isolate(0, true); }}, {30, [] { heal(0); }}, {45, [] { nodes[1]->kill(); }}};
    std::array<ado::Connection, 2> programs;
    open(programs[0], 0);
    open(programs[1], 1);
    QStringList confirmed, refused;
    qint64 longest = 0; // milliseconds of a step with its failures
    for (int step = 0; step < steps; ++step) {
        if (const auto event = events.find(step); event != events.end())
            event->second();
        for (std::size_t i = 0; i < programs.size(); ++i) {
            QElapsedTimer time;
            time.start();
            const QString name = u"%1 of %2"_s.arg(step).arg(i);
            const QString failure = failureOf([&] { save(programs[i], name); });
            (failure.isEmpty() ? confirmed : refused) << (failure.isEmpty() ? name : failure);
            failureOf([&] { programs[i].RollbackTrans(); }); // may itself meet the fault
            EXPECT_TRUE(programs[i].State() == ado::StateOpen || opens(programs[i]));
            longest = std::max(longest, time.elapsed());
        }
    }
    RecordProperty("refused", refused.join(u" / "_s).toStdString());
    EXPECT_LT(longest, 15000);
    EXPECT_LE(refused.size(), 8) << refused.join(u'\n');
    EXPECT_GE(refused.size(), 2) << "a node was cut off and a node was killed";
    for (const QString& sentence : refused)
        EXPECT_TRUE(sentence.startsWith(u"The connection to the database server is lost."_s) ||
                    sentence.contains(u"is cut off from its cluster."_s) || sentence.contains(u"Try again"_s))
            << sentence;

    EXPECT_TRUE(opens(admins[0])) << "healed";
    QStringList seen;
    for (const std::size_t living : {0U, 2U}) {
        ado::Connection& store = admins[living];
        ASSERT_TRUE(opens(store));
        QStringList whole;
        for (const QString& row :
             rows(store, u"select custname, count(*) as number from customer, respondent where "
                         "customer.custid=respondent.custid group by custname order by custname"_s)) {
            EXPECT_TRUE(row.endsWith(u"|qlonglong 2"_s)) << row;
            whole << row.section(u'|', 0, 0).section(u' ', 1);
        }
        EXPECT_EQ(rows(store, u"select custid from customer"_s).size(), whole.size()) << "no half";
        for (const QString& name : confirmed)
            EXPECT_TRUE(whole.contains(name)) << name << " on node " << living;
        EXPECT_TRUE(seen.isEmpty() || seen == whole) << "both nodes have the same";
        seen = whole;
    }
}
} // namespace
