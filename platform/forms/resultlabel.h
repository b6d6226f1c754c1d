// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/spoken/notice.h"

#include <QLabel>

namespace forms {

/// A label that says how a command has ended. A screen reader reads it out at once.
class ResultLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;
    void setText(const QString& result) {
        QLabel::setText(result);
        if (!result.isEmpty())
            spoken::announce(*this);
    }
};

} // namespace forms
