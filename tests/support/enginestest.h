// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/serverstore.h"

/// The records of a select: of each field its type and text.
inline QStringList rows(ado::Connection& store, const QString& sql) {
    ado::Recordset records(sql, store);
    QStringList result;
    for (; !records.Eof(); records.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < records.FieldCount(); ++i) {
            const QVariant value = records.FieldAt(i).Value();
            fields << (value.isValid() ? QLatin1String(value.typeName()) + u' ' + ado::toText(value)
                                       : u"-"_s);
        }
        result << fields.join(u'|');
    }
    return result;
}

/// A new store of the program in a file and one on a server.
struct EnginesTest : ::testing::Test {
    static void SetUpTestSuite() { host = std::make_unique<PrivateServer>(); }
    static void TearDownTestSuite() { host.reset(); }
    void SetUp() override {
        ASSERT_TRUE(host->isRunning()) << host->log();
        makeStore(server, *host);
        const QString path = folder.filePath(u"tally.mdb"_s);
        ado::createStore(path, storeScripts(), u"secret"_s);
        file.ConnectionString = u"DBQ="_s + path + u";PWD=secret";
        file.Open();
    }
    /// What a step returns, which must be the same on both.
    template <class Step> QStringList onBoth(Step step) {
        const QStringList fromFile = step(file);
        EXPECT_EQ(fromFile.join(u'\n'), step(server).join(u'\n'));
        return fromFile;
    }
    QStringList found(const QString& sql) {
        SCOPED_TRACE(sql);
        return onBoth([&](ado::Connection& store) { return rows(store, sql); });
    }
    void runOnBoth(const QString& sql) {
        for (ado::Connection* store : {&file, &server})
            store->Execute(sql);
    }
    inline static std::unique_ptr<PrivateServer> host;
    QTemporaryDir folder;
    ado::Connection file, server;
};
