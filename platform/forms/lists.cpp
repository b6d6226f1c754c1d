// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/lists.h"

#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QScreen>
#include <QStandardItemModel>
#include <QStyle>
#include <QTextDocument>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace forms {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    setIconSize({0, 0}); // a size policy with room for icons would make the box higher than its neighbours
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT Click(); });
}

void ComboBox::Clear() {
    clear();
    widest = 0;
}

void ComboBox::AddItem(const QString& text) {
    AddItems(QStringList{text});
}

void ComboBox::AddItems(const QStringList& texts) {
    const int before = currentIndex();
    addItems(texts);
    setCurrentIndex(before); // otherwise the first entry would be picked
    measure(texts);
}

void ComboBox::AddItems(const std::vector<std::pair<QString, int>>& textsAndKeys) {
    QStringList texts;
    QList<QStandardItem*> items;
    for (const auto& [text, key] : textsAndKeys) {
        texts << text;
        items << new QStandardItem(text);
        items.last()->setData(key, Qt::UserRole);
    }
    const int before = currentIndex();
    qobject_cast<QStandardItemModel*>(model())->invisibleRootItem()->appendRows(items);
    setCurrentIndex(before);
    measure(texts);
}

/// The widest of the texts is among those of the most characters, or hardly wider.
void ComboBox::measure(QStringList texts) {
    const auto longest = texts.begin() + std::min<std::ptrdiff_t>(50, texts.size());
    std::partial_sort(texts.begin(), longest, texts.end(),
                      [](const QString& a, const QString& b) { return a.size() > b.size(); });
    for (auto text = texts.begin(); text != longest; ++text)
        widest = std::max(widest, fontMetrics().horizontalAdvance(*text));
    updateGeometry();
}

QSize ComboBox::sizeHint() const {
    QSize size = QComboBox::sizeHint();
    if (sizeAdjustPolicy() == AdjustToMinimumContentsLengthWithIcon && minimumContentsLength() == 0)
        size.rwidth() += widest; // to the frame
    return size;
}

void ComboBox::setListIndex(int index) {
    if (index == currentIndex())
        return;
    setCurrentIndex(index);
    Q_EMIT Click();
}

void ComboBox::showPopup() {
    auto* list = qobject_cast<QListView*>(view());
    list->setUniformItemSizes(true);
    const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list) + 1 +
                             style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, list));
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    list->setMinimumWidth(std::min(widest + margins + bar, screen()->availableGeometry().width()));
    QComboBox::showPopup();
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
    if (!entry)
        return {};
    const QVariant withoutNote = entry->data(Qt::UserRole);
    return withoutNote.isValid() ? withoutNote.toString() : entry->text();
}

void ListBox::setNote(int index, const QString& note) {
    const QString text = List(index);
    item(index)->setData(Qt::UserRole, note.isEmpty() ? QVariant() : text);
    item(index)->setText(note.isEmpty() ? text : text + QStringLiteral("  \u2013  ") + note);
    item(index)->setToolTip(note.isEmpty() ? QString() : Qt::convertFromPlainText(item(index)->text()));
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
    if (event->button() != Qt::LeftButton)
        return;
    secondOfDouble = false;
    pressed = selectionMode() != SingleSelection || itemAt(event->position().toPoint());
    chosenAtPress = selectedItems();
    if (pressed)
        QListWidget::mousePressEvent(event);
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
    if (pressed || event->buttons() == Qt::NoButton)
        QListWidget::mouseMoveEvent(event);
}

void ListBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const bool clicked = std::exchange(pressed, false);
    if (clicked || secondOfDouble)
        QListWidget::mouseReleaseEvent(event);
    if (clicked && !secondOfDouble &&
        (itemAt(event->position().toPoint()) || selectedItems() != chosenAtPress))
        Q_EMIT Click();
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    secondOfDouble = true;
    QListWidget::mouseDoubleClickEvent(event);
    const bool onOtherEntry = !secondOfDouble && itemAt(event->position().toPoint());
    if (!onOtherEntry) // which counts as a press
        Q_EMIT DblClick();
}

/// The cursor arrives with the focus, so that an arrow key would skip its entry.
bool ListBox::choosesCurrentFirst(const QKeyEvent& event) const {
    const bool toNeighbour =
        event.key() == Qt::Key_Down || event.key() == Qt::Key_Up || event.key() == Qt::Key_Home;
    return toNeighbour && !(event.modifiers() & Qt::ControlModifier) && count() > 0 &&
           selectedItems().isEmpty();
}

void ListBox::keyPressEvent(QKeyEvent* event) {
    Q_EMIT KeyDown(event->key()); // a hook that changes the choice emits its Click
    if (choosesCurrentFirst(*event)) {
        setSelected(qMax(0, currentRow()), true);
        return;
    }
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
