// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/recordset.h"
#include "platform/ado/store.h"
#include "tests/support/files.h"
#include "tests/support/privateserver.h"

/// The scripts that make a store.
inline QByteArray storeScripts() {
    QByteArray all;
    for (const char* name : {"schema", "version2", "queries"})
        all += contentOf(QStringLiteral(GAUGEWELL_SOURCE "/home/%1.sql").arg(QLatin1StringView(name))) + '\n';
    return all;
}

/// Adds a record and returns its first field.
inline QVariant add(ado::Connection& store, const QString& table,
                    const std::vector<std::pair<const char*, QVariant>>& fields) {
    ado::Recordset record(u"select * from "_s + table, store, ado::Recordset::Lock::Optimistic);
    record.AddNew();
    for (const auto& [name, value] : fields)
        record[name] = value;
    record.Update();
    return record.FieldAt(0).Value();
}

/// Makes a new store in the server's database "tally" and opens it with every right.
inline void makeStore(ado::Connection& store, const PrivateServer& host) {
    store.ConnectionString = host.connection({});
    store.Open();
    store.Execute(u"drop database if exists tally"_s);
    store.Execute(u"create database tally"_s);
    store.ConnectionString = host.connection(u"tally"_s);
    store.Open();
    ado::runScript(store, storeScripts());
}
