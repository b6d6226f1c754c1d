// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/connection.h"
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

/// Makes a new store in the server's database "tally" and opens it with every right.
inline void makeStore(ado::Connection& store, const PrivateServer& host) {
    store.ConnectionString = host.connection({});
    store.Open();
    store.Execute(QStringLiteral("drop database if exists tally"));
    store.Execute(QStringLiteral("create database tally"));
    store.ConnectionString = host.connection(QStringLiteral("tally"));
    store.Open();
    ado::runScript(store, storeScripts());
}
