// SPDX-License-Identifier: GPL-3.0-or-later
// makestore SCHEMA.SQL STORE.MDB PASSWORD: makes an empty store from the schema. Run by the build.
#include "platform/ado/error.h"
#include "platform/ado/store.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fputs("usage: makestore SCHEMA.SQL STORE.MDB PASSWORD\n", stderr);
        return 2;
    }
    QFile schema(arguments[1]);
    if (!schema.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(arguments[1]), qPrintable(schema.errorString()));
        return 1;
    }
    try {
        ado::createStore(arguments[2], schema.readAll(), arguments[3]);
    } catch (const ado::Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(arguments[1]), failure.what());
        return 1;
    }
    return 0;
}
