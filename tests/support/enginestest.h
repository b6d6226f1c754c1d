// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/recordset.h"
#include "tests/support/serverstore.h"

/// The message of the failure that `step` throws; empty for none.
template <class Step> QString failureOf(Step step) {
    try {
        step();
    } catch (const Failure& failure) {
        return failure.text();
    }
    return {};
}

/// The records of a select: of each field its type and text.
inline QStringList rows(ado::Connection& store, const QString& sql) {
    ado::Recordset records(sql, store);
    QStringList result;
    for (; !records.Eof(); records.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < records.FieldCount(); ++i) {
            const QVariant value = records.FieldAt(i).Value();
            fields << (value.isValid() ? QLatin1String(value.typeName()) + u' ' + ado::toText(value)
                                       : QStringLiteral("-"));
        }
        result << fields.join(u'|');
    }
    return result;
}

/// Adds a record and returns its first field.
inline QVariant add(ado::Connection& store, const QString& table,
                    const std::vector<std::pair<const char*, QVariant>>& fields) {
    ado::Recordset record(QStringLiteral("select * from ") + table, store, ado::Recordset::Lock::Optimistic);
    record.AddNew();
    for (const auto& [name, value] : fields)
        record[name] = value;
    record.Update();
    return record.FieldAt(0).Value();
}

/// A new store of the program in a file and one on a server.
class EnginesTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { host = std::make_unique<PrivateServer>(); }
    static void TearDownTestSuite() { host.reset(); }
    void SetUp() override {
        ASSERT_TRUE(host->isRunning()) << host->log().toStdString();
        makeStore(server, *host);
        const QString path = folder.filePath(QStringLiteral("tally.mdb"));
        ado::createStore(path, storeScripts(), QStringLiteral("secret"));
        file.ConnectionString = QStringLiteral("DBQ=") + path + u";PWD=secret";
        file.Open();
    }
    /// What a step returns, which must be the same on both.
    template <class Step> QStringList onBoth(Step step) {
        const QStringList fromFile = step(file);
        EXPECT_EQ(fromFile.join(u'\n').toStdString(), step(server).join(u'\n').toStdString());
        return fromFile;
    }
    QStringList found(const QString& sql) {
        SCOPED_TRACE(sql.toStdString());
        return onBoth([&](ado::Connection& store) { return rows(store, sql); });
    }
    void runOnBoth(const QString& sql) {
        for (ado::Connection* store : {&file, &server})
            store->Execute(sql);
    }
    inline static std::unique_ptr<PrivateServer> host;
    QTemporaryDir folder;
    ado::Connection file;
    ado::Connection server;
};
