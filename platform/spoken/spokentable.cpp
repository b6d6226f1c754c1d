// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/spoken/spokentable.h"

#include "platform/spoken/adopted.h"
#include "platform/spoken/tableaccess.h"

#include <QAccessible>
#include <QWidget>

namespace spoken {
namespace {

/// Nothing as long as nobody has asked for it.
TableAccess* accessOf(QWidget& widget) {
    return isReadHook() ? dynamic_cast<TableAccess*>(QAccessible::queryAccessibleInterface(&widget))
                        : nullptr;
}

} // namespace

void readAsTable(QWidget& widget, const std::function<tables::Table()>& source) {
    adopt(widget, [source](QWidget& shown) { return new TableAccess(shown, source); });
}

void tableChanged(QWidget& widget) {
    if (TableAccess* access = accessOf(widget); access && access->forget()) {
        QAccessibleTableModelChangeEvent changed(&widget, QAccessibleTableModelChangeEvent::ModelReset);
        eventHook(changed);
    }
}

void comeToRow(QWidget& widget, int row) {
    TableAccess* access = accessOf(widget);
    if (!access)
        return;
    access->setCurrent(row);
    if (QAccessibleInterface* cell = access->focusChild()) {
        QAccessibleEvent come(cell, QAccessible::Focus);
        eventHook(come);
    }
}

} // namespace spoken
