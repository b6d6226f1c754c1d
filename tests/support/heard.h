// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/spoken/adopted.h"
#include "tests/support/replaced.h"

#include <QAccessible>
#include <QStringList>

/// What a screen reader that runs meanwhile reads out: notices, cells that get the focus, ticks.
class Heard {
public:
    static QStringList take() { return std::exchange(texts, {}); }

private:
    static void hear(const QAccessibleEvent& event) {
        QAccessibleInterface* from = event.accessibleInterface();
        if (event.type() == QAccessible::ObjectShow && from->role() == QAccessible::Notification)
            texts << from->text(QAccessible::Name);
        else if (event.type() == QAccessible::Focus)
            texts << cell(*from);
        else if (event.type() == QAccessible::StateChanged)
            texts << (from->state().checked ? QStringLiteral("checked") : QStringLiteral("not checked"));
    }
    /// Its heads, text and description.
    static QString cell(const QAccessibleInterface& read) {
        auto* place = const_cast<QAccessibleInterface&>(read).tableCellInterface();
        QStringList parts;
        for (const auto& heads : {place->rowHeaderCells(), place->columnHeaderCells()}) {
            for (const QAccessibleInterface* head : heads)
                parts << head->text(QAccessible::Name);
        }
        parts << read.text(QAccessible::Name) << read.text(QAccessible::Description);
        return parts.join(u'|');
    }

    inline static QStringList texts;
    Replaced<spoken::isReadHook> isRead{[] { return true; }};
    Replaced<spoken::eventHook> events{hear};
};
