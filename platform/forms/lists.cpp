// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/lists.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace forms {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT Click(); });
}

void ComboBox::Clear() {
    clear();
}

void ComboBox::AddItem(const QString& text) {
    const int before = currentIndex();
    addItem(text);
    setCurrentIndex(before); // the first entry would else pick itself
}

void ComboBox::setListIndex(int index) {
    if (index == currentIndex())
        return;
    setCurrentIndex(index);
    Q_EMIT Click();
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    setTabKeyNavigation(false);
}

void ListBox::Clear() {
    clear();
}

QString ListBox::List(int index) const {
    const QListWidgetItem* entry = item(index);
    return entry ? entry->text() : QString();
}

int ListBox::ListIndex() const {
    for (int i = 0; i < count(); ++i) {
        if (item(i)->isSelected())
            return i;
    }
    return -1;
}

bool ListBox::Selected(int index) const {
    const QListWidgetItem* entry = item(index);
    return entry && entry->isSelected();
}

void ListBox::setSelected(int index, bool chosen) {
    QListWidgetItem* entry = item(index);
    if (!entry || entry->isSelected() == chosen)
        return;
    if (chosen)
        setCurrentRow(index, QItemSelectionModel::NoUpdate);
    entry->setSelected(chosen);
    Q_EMIT Click();
}

void ListBox::mousePressEvent(QMouseEvent* event) {
    secondOfDouble = false;
    chosenAtPress = selectedItems();
    QListWidget::mousePressEvent(event);
}

void ListBox::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || secondOfDouble)
        return;
    if (itemAt(event->position().toPoint()) || selectedItems() != chosenAtPress)
        Q_EMIT Click();
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    secondOfDouble = true;
    QListWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT DblClick();
}

void ListBox::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key()); // who changes the choice here has told its Click already
    const QList<QListWidgetItem*> before = selectedItems();
    QListWidget::keyPressEvent(event);
    if (selectedItems() != before)
        Q_EMIT Click();
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const {
    const QItemSelectionModel::SelectionFlags command = QListWidget::selectionCommand(index, event);
    const bool takesBack = command & QItemSelectionModel::Deselect;
    return takesBack && selectionMode() == SingleSelection ? QItemSelectionModel::NoUpdate : command;
}

void ListBox::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Q_EMIT Validate();
}

} // namespace forms
