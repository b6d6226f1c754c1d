// SPDX-License-Identifier: GPL-3.0-or-later
// Two programs walk at random in one store of a server, each watched by its own oracle; test_randomwalk.cpp
// names the variables. As the programs meet by chance, a seed that has failed need not fail again.
#include "tests/walk/oracle.h"
#include "tests/walk/world.h"

using walk::setting;

namespace {
struct TwoWalks : walk::World, ::testing::WithParamInterface<int> {
    ado::Connection master;

    void SetUp() override {
        World::SetUp();
        master.ConnectionString = masterConnection();
        master.Open();
        walk::Writers::record(master, walk::Oracle::tables());
    }
    /// Starts a program as a user of its own, in a home of its own.
    void start(QProcess& program, const QString& user, int seed) {
        for (const char16_t* sql : {u"create or replace user %1 identified by 'kvtwpa'",
                                    u"grant all on tally.* to %1", u"grant select on walk.* to %1"})
            master.session()->prepare({QString::fromUtf16(sql).arg(user), {}}).step();
        ASSERT_TRUE(QDir().mkpath(path(user)));
        for (const QString& name : QDir(home()).entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(path(name), path(user + u'/' + name)));
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationDirPath() + u"/walkingprogram",
                      {path(user), masterConnection() + u";UID="_s + user, QString::number(seed),
                       QString::number(setting("GAUGEWELL_WALK_EVENTS", 1000))});
    }
};

TEST_P(TwoWalks, everyRowKeepsItsOwner) {
    QProcess ada, ben;
    start(ada, u"ada"_s, GetParam());
    start(ben, u"ben"_s, GetParam() + 1000);
    for (QProcess* program : {&ada, &ben}) {
        EXPECT_TRUE(program->waitForFinished(300000)) << "still walking";
        EXPECT_TRUE(program->exitStatus() == QProcess::NormalExit && program->exitCode() == 0)
            << QString::fromUtf8(program->readAll());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TwoWalks,
                         ::testing::Range(setting("GAUGEWELL_WALK_SEED", 1),
                                          setting("GAUGEWELL_WALK_SEED", 1) +
                                              setting("GAUGEWELL_WALK_SEEDS", 4)));
} // namespace
