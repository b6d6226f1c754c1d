// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/spoken/notice.h"

#include "platform/spoken/adopted.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QStatusBar>
#include <QWidget>

namespace spoken {
namespace {

class NoticeAccess : public QAccessibleWidget {
public:
    explicit NoticeAccess(QWidget& shown) : QAccessibleWidget(&shown, QAccessible::Notification) {}
    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        if (const auto* label = qobject_cast<const QLabel*>(widget()))
            return label->text();
        const auto* bar = qobject_cast<const QStatusBar*>(widget());
        return bar ? bar->currentMessage() : QAccessibleWidget::text(kind);
    }
};

} // namespace

/// Readers read out a notification when it comes to be shown; an alert is what other desktops take.
void announce(QWidget& widget) {
    if (!isReadHook())
        return;
    if (QAccessible::queryAccessibleInterface(&widget)->role() != QAccessible::Notification)
        adopt(widget, [](QWidget& shown) { return new NoticeAccess(shown); });
    for (const auto event : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent shown(&widget, event);
        eventHook(shown);
    }
}

} // namespace spoken
