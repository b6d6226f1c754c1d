// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/gblGlobal.h"
#include "core/store/storechoice.h"

/// Another store. At the end of the scope the former one is in use again unless this one is kept.
class StoreChange {
public:
    explicit StoreChange(const StoreAccess& access) { useStore(access); }
    StoreChange(const StoreChange&) = delete;
    StoreChange& operator=(const StoreChange&) = delete;
    ~StoreChange();

    /// Opens the store once. Throws a Refusal with the reason when that fails.
    static void tryOut();
    /// Uses the store from the next command and at the next start on. Throws a Refusal.
    void keep();

private:
    const StoreAccess before = storeInUse();
    const QString pathBefore = strDatabasePath;
    bool isKept = false;
};
