// SPDX-License-Identifier: GPL-3.0-or-later
// makestore STORE.MDB PASSWORD SCRIPT.SQL...: creates a store from SQL scripts, the schema first. Run by the
// build.
#include "platform/ado/error.h"
#include "platform/ado/store.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("usage: makestore STORE.MDB PASSWORD SCRIPT.SQL...\n", stderr);
        return 2;
    }
    QByteArray statements;
    for (const QString& name : arguments.sliced(3)) {
        QFile script(name);
        if (!script.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(name), qPrintable(script.errorString()));
            return 1;
        }
        statements += script.readAll() + '\n';
    }
    try {
        ado::createStore(arguments[1], statements, arguments[2]);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(arguments[1]), failure.what());
        return 1;
    }
    return 0;
}
