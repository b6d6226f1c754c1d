// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/spoken/adopted.h"

#include <QAccessible>
#include <QWidget>

#include <map>

namespace spoken {
namespace {

std::map<const QObject*, Maker>& makers() {
    static std::map<const QObject*, Maker> known;
    return known;
}

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    const auto known = makers().find(object);
    return known == makers().end() ? nullptr : known->second(*static_cast<QWidget*>(object));
}

} // namespace

std::function<bool()> isReadHook = QAccessible::isActive;
std::function<void(QAccessibleEvent&)> eventHook = [](QAccessibleEvent& event) {
    QAccessible::updateAccessibility(&event);
};

void adopt(QWidget& widget, Maker maker) {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(isInstalled)
    // The interface of its class has been made when its name was set, and would be kept.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
    if (makers().insert_or_assign(&widget, std::move(maker)).second)
        QObject::connect(&widget, &QObject::destroyed, [](const QObject* gone) { makers().erase(gone); });
}

} // namespace spoken
