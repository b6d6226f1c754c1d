// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/writers.h"

#include "platform/ado/session.h"

using namespace Qt::StringLiterals;

namespace walk {
void Writers::record(ado::Connection& server, const QStringList& tables) {
    const auto run = [&](const QString& sql) { server.session()->prepare({sql, {}}).step(); };
    run(u"create or replace database walk"_s);
    run(u"create table walk.written (id integer primary key auto_increment, writer varchar(80), "
        "what char(6), place varchar(80)) engine=InnoDB"_s);
    for (const QString& table : tables) {
        for (const auto& [what, row] : {std::pair("insert", "new"), {"update", "new"}, {"delete", "old"}}) {
            const QString change = QLatin1StringView(what);
            run(u"create trigger walk_%1_%2 after %1 on %2 for each row insert into walk.written (writer, "
                u"what, "
                "place) values (substring_index(user(), '@', 1), '%1', concat('%2|', %3.%4))"_s.arg(
                    change, table, QLatin1StringView(row), server.session()->keyOf(table)));
        }
    }
}

void Writers::read(ado::Connection& store) {
    mine.clear();
    others.clear();
    othersDeleted = false;
    // One transaction writes fewer rows than this.
    ado::Prepared written = store.session()->prepare(
        {u"select id, writer=substring_index(user(), '@', 1), what, place from walk.written "
         "where id > (select max(id) from walk.written) - 2000"_s,
         {}});
    while (written.step()) {
        if (seen.contains(written.column(0).toLongLong()))
            continue;
        seen << written.column(0).toLongLong();
        const bool isMine = written.column(1).toInt() == 1;
        (isMine ? mine : others) << written.column(3).toString();
        othersDeleted = othersDeleted || (!isMine && written.column(2).toString() == u"delete");
    }
}
} // namespace walk
