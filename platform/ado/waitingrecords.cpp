// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/waitingrecords.h"

#include "platform/ado/mariasession.h"
#include "platform/ado/mariastatement.h"

#include <algorithm>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr qsizetype mostBytes = 1 << 20; // a message may have sixteen times as many, if nobody has set less
constexpr std::size_t mostRecords = 10000;

qsizetype sizeOf(const RecordWrite& record) {
    constexpr qsizetype number = 9;
    return std::accumulate(record.values.begin(), record.values.end(), qsizetype{},
                           [](qsizetype sum, const QVariant& value) {
                               const bool isText = value.typeId() == QMetaType::QString;
                               return sum + number + (isText ? 2 * value.toString().size() : 0);
                           });
}

/// The records of one statement.
struct Group {
    QString sql;
    bool mustMeet;
    std::vector<const QVariantList*> rows;
};

/// Whether two statements add records to one table, or are the same change of one.
bool areOfOneTable(QStringView one, QStringView other) {
    const qsizetype end = one.startsWith(u"insert") ? one.indexOf(u'(') : one.size();
    return one.first(end) == other.first(std::min(end, other.size()));
}

/// In the order in which their first records were written. Each record is written once, so they may overtake
/// each other, except that new records of one table get their keys in order.
std::vector<Group> groupsOf(const std::vector<RecordWrite>& records) {
    std::vector<Group> groups;
    for (const RecordWrite& record : records) {
        const auto last = std::find_if(groups.rbegin(), groups.rend(), [&record](const Group& known) {
            return areOfOneTable(record.sql, known.sql);
        });
        if (last != groups.rend() && last->sql == record.sql)
            last->rows.push_back(&record.values);
        else
            groups.push_back({record.sql, record.mustMeet, {&record.values}});
    }
    return groups;
}

void runTogether(MariaSession& session, const Group& group) {
    const Prepared statement = session.prepare({group.sql, {}});
    static_cast<MariaStatement&>(*statement.operator->()).runForEach(group.rows);
    if (group.mustMeet && session.changedRows() != static_cast<qlonglong>(group.rows.size()))
        throw Failure(number::noCurrentRecord, u"A record is gone."_s);
}

} // namespace

bool WaitingRecords::add(RecordWrite record) {
    size += sizeOf(record);
    records.push_back(std::move(record));
    return size >= mostBytes || records.size() >= mostRecords;
}

void WaitingRecords::drop() {
    records.clear();
    size = 0;
}

void WaitingRecords::send(MariaSession& session) {
    if (records.empty())
        return;
    const std::vector<RecordWrite> sent = std::exchange(records, {});
    size = 0;
    if (sent.size() > 1) {
        session.prepare({u"savepoint waiting"_s, {}}).step();
        try {
            for (const Group& group : groupsOf(sent))
                runTogether(session, group);
            return;
        } catch (const Failure&) {
            if (!session.isInTransaction()) // the server has rolled back, or the connection is lost
                throw;
        }
        // One after the other the first that fails is met, with those before it written.
        session.prepare({u"rollback to waiting"_s, {}}).step();
        session.errors().Clear();
    }
    for (const RecordWrite& record : sent)
        session.writeNow(record);
}

} // namespace ado
