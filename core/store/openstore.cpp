// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/openstore.h"

#include "platform/ado/connection.h"
#include "platform/ado/session.h"

using namespace Qt::StringLiterals;

namespace {

QString faultOf(int version) {
    if (version == 0)
        return u"The database on the server is not prepared for this program. Its administrator does that."_s;
    return version > storeVersion
               ? u"The database on the server was made by a newer version of this program and needs that version."_s
               : u"The database on the server is of an older version of this program. Its administrator has "
                 "to bring it up to date."_s;
}

} // namespace

void openStore(ado::Connection& store) {
    store.Open();
    if (store.IsFile())
        return;
    const int version = store.SchemaVersion();
    if (version == storeVersion)
        return;
    const std::shared_ptr<ado::Session> server = store.session();
    store.Close();
    server->fail({ado::number::dataSource, faultOf(version)});
}
