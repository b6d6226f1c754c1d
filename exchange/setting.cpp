// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/setting.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"

using namespace Qt::StringLiterals;

bool toGetSetting() {
    bool userDefined = false;
    guarded([&] {
        ado::Recordset setting(u"select * from setting where setting='UserDefine' and checkeduser=True"_s,
                               *cnnMain);
        userDefined = !setting.Eof();
    });
    return userDefined;
}
