// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pictures.h"

static void toRegisterPictures() {
    Q_INIT_RESOURCE(pictures); // a static library's resources do not register themselves
}

QIcon picture(const QString& name) {
    static const bool registered = [] {
        toRegisterPictures();
        return true;
    }();
    Q_UNUSED(registered)
    return QIcon(QStringLiteral(":/pictures/") + name + QStringLiteral(".svg"));
}
