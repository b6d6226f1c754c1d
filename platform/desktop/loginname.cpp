// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/loginname.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

namespace desktop {

QString loginName() {
#ifdef Q_OS_UNIX
    const passwd* user = getpwuid(getuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
#else
    return qEnvironmentVariable("USERNAME");
#endif
}

} // namespace desktop
