// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/readernames.h"

#include "platform/spoken/adopted.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

QString labelOf(const QWidget& control) {
    for (const QLabel* label : control.window()->findChildren<QLabel*>()) {
        if (label->buddy() == &control)
            return label->text().remove(u'&').remove(u':').trimmed();
    }
    return {};
}

void tellTick(QAbstractItemView& view, const QModelIndex& cell) {
    if (!spoken::isReadHook() || cell.row() != view.currentIndex().row())
        return;
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&view)->tableInterface();
    if (QAccessibleInterface* ticked = table ? table->cellAt(cell.row(), cell.column()) : nullptr) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(ticked, changed);
        spoken::eventHook(event);
    }
}

void tellTicks(QAbstractItemView& view) {
    QObject::connect(view.model(), &QAbstractItemModel::dataChanged, &view,
                     [&view](const QModelIndex& cell, const QModelIndex&, const QList<int>& roles) {
                         if (roles.contains(Qt::CheckStateRole))
                             tellTick(view, cell);
                     });
}

} // namespace

void nameForReader(QWidget& window) {
    for (QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
        if (view->accessibleName().isEmpty())
            view->setAccessibleName(labelOf(*view));
        if (view->model())
            tellTicks(*view);
    }
    for (const QComboBox* box : window.findChildren<QComboBox*>()) {
        if (box->lineEdit())
            box->lineEdit()->setAccessibleName(labelOf(*box));
    }
    for (const QLineEdit* box : window.findChildren<QLineEdit*>()) {
        if (auto* clear = box->findChild<QToolButton*>(); clear && box->isClearButtonEnabled())
            clear->setAccessibleName(u"Clear"_s);
    }
    for (QToolButton* button : window.findChildren<QToolButton*>()) {
        if (button->objectName().endsWith(u"_ext_button")) // of a menu bar or tool bar that is too narrow
            button->setAccessibleName(u"More"_s);
    }
}

void nameEditor(QWidget& editor, const QAbstractItemView& view, const QModelIndex& cell) {
    const QString head = view.model()->headerData(cell.column(), Qt::Horizontal).toString();
    editor.setAccessibleName(head + u", " + view.accessibleName());
    editor.setAccessibleDescription(cell.column() > 0 ? cell.siblingAtColumn(0).data().toString()
                                                      : QString());
}

} // namespace forms
