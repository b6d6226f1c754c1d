// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/besides.h"

#include <QString>

struct sqlite3_backup;

namespace ado {

/// Replaces the content of a database file by that of another one, as one transaction: other programs that
/// have it open see the old content or the new one. Throws Failure, with the file unchanged; also when
/// another program has locked it. False, with the file unchanged, when the step has cancelled.
bool restoreStore(const QString& path, const QString& from, const Step& step = {});

/// Writes a database file anew, without the room of what was deleted. Throws Failure. False, with the file
/// unchanged, when the step has cancelled.
bool rewriteFile(const QString& path, const Step& step = {});

/// Copies all pages and ends the copying, which may be null. SQLITE_INTERRUPT when the step has cancelled.
int copyAllPages(sqlite3_backup* copy, const Step& step);

} // namespace ado
