// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/session.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

constexpr std::size_t mostKept = 64;

} // namespace

Prepared::Prepared(std::shared_ptr<Session> owner, std::shared_ptr<Compiled> statement)
    : session(std::move(owner)), compiled(std::move(statement)) {
    compiled->onLoan = true;
}

Prepared::~Prepared() {
    if (!compiled)
        return;
    compiled->reset();
    compiled->onLoan = false;
}

void Session::requireOpen() const {
    if (!isOpen())
        throw Failure(number::objectClosed, u"Operation is not allowed when the object is closed."_s);
}

void Session::fail(const Error& error) {
    errorList.Clear();
    errorList.Add(error);
    throw Failure(error.Number, error.Description);
}

Prepared Session::prepare(const Statement& statement) {
    requireOpen();
    Prepared result(shared_from_this(), compiledOf(statement.sql));
    result->bind(statement.parameters);
    return result;
}

void Session::writeNow(const RecordWrite& record) {
    prepare({.sql = record.sql, .parameters = record.values}).step();
    if (record.mustMeet && changedRows() == 0)
        fail({number::noCurrentRecord, u"The record has been deleted meanwhile."_s});
}

/// A free kept one of that text, or a new one; moved to the front of those kept.
std::shared_ptr<Compiled> Session::compiledOf(const QString& sql) {
    const auto known =
        std::find_if(kept.begin(), kept.end(), [&](const std::shared_ptr<Compiled>& statement) {
            return !statement->onLoan && statement->sql == sql;
        });
    if (known != kept.end()) {
        std::rotate(kept.begin(), known, known + 1);
        return kept.front();
    }
    kept.insert(kept.begin(), compile(sql));
    if (kept.size() > mostKept)
        kept.pop_back();
    return kept.front();
}

} // namespace ado
