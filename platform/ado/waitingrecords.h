// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/session.h"

namespace ado {

class MariaSession;

/// Records that are written within a transaction of a server and wait to go there together: a message takes
/// as long for a thousand of them as for one.
class WaitingRecords {
public:
    /// Whether they should go now, so that they do not take too much memory or exceed a message.
    bool add(RecordWrite record);
    /// Sends all, those of one statement in one message. If one fails, those before it are written and those
    /// after it are not; its failure is thrown.
    void send(MariaSession& session);
    void drop();

private:
    std::vector<RecordWrite> records;
    qsizetype size = 0; ///< about that many bytes
};

} // namespace ado
