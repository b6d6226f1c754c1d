// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/forwardrows.h"

#include "platform/ado/mariastatement.h"

using namespace Qt::StringLiterals;

namespace ado {

ForwardRows::ForwardRows(const QString& sql, Connection& connection, Expected expected) {
    const std::shared_ptr<Session>& session = connection.session();
    session->requireOpen();
    source = session->prepare(session->recorded([&] { return translate(sql, session->target()); }));
    if (!source->isReading())
        session->fail({number::notWritable, u"These rows are read by a select only."_s});
    if (expected == Expected::Few)
        return;
    if (auto* onServer = dynamic_cast<MariaStatement*>(source.operator->()))
        onServer->takeInPieces();
}

} // namespace ado
