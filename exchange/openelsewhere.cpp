// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/openelsewhere.h"

#include "core/base/gblGlobal.h"
#include "platform/forms/msgbox.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

/// The names of LibreOffice's and of Excel's lock file.
bool hasLockFile(const QFileInfo& file) {
    const QDir folder = file.dir();
    return folder.exists(u".~lock."_s + file.fileName() + u'#') || folder.exists(u"~$"_s + file.fileName());
}

} // namespace

bool mayUseFile(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists() || !hasLockFile(file))
        return true;
    return forms::msgBox(file.fileName() +
                             u" seems to be open in a spreadsheet program. What has been typed there and not "
                             "been saved is missing in it. Go on all the same?",
                         style::yesNo + style::information + style::secondButton,
                         titleWithVersion) == forms::Answer::Yes;
}
