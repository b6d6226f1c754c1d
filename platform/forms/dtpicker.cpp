// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/dtpicker.h"

namespace forms {

DTPicker::DTPicker(QWidget* parent) : QDateEdit(parent) {
    setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    setCalendarPopup(true);
    setMinimumDate({100, 1, 1});
    setMaximumDate({9999, 12, 31});
    connect(this, &QDateEdit::dateChanged, this, [this] { Q_EMIT Change(); });
}

} // namespace forms
