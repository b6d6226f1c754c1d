// SPDX-License-Identifier: GPL-3.0-or-later
// walkingprogram HOME SOURCE SEED EVENTS: a random walk in a store that another program shares. Prints the
// fault, if any, and then returns 1.
#include "core/Main.h"
#include "platform/ado/datasources.h"
#include "platform/ado/store.h"
#include "tests/walk/walker.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    const desktop::Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const Replaced<forms::todayHook> day{[] { return QDate(2024, 3, 5); }};
    const Replaced<forms::nowHook> time{[] { return QDateTime({2024, 3, 5}, {12, 0}); }};
    const Replaced<desktop::uncaughtHook> uncaught{[](const std::exception_ptr&) {
        std::cerr << "an exception has left an event handler\n";
        std::abort();
    }};
    qputenv("XDG_CONFIG_HOME", (arguments[1] + u"/config").toUtf8());
    setHomeDirectory(arguments[1]);
    strDatabasePath = arguments[1] + u"/Tallywell.mdb";
    ado::SQLConfigDataSource(ado::AddSystemSource, u"server"_s + QChar(),
                             QString(u"DSN=gwl;"_s + arguments[2] + u';').replace(u';', QChar()));
    toOpenConnection();
    MDIMain::instance().show();
    const QString fault = walk::Walker(arguments[3].toInt(), /*isShared=*/true).run(arguments[4].toInt());
    MDIMain::destroy();
    cnnMain.reset();
    std::cerr << fault << '\n';
    return fault.isEmpty() ? 0 : 1;
}
