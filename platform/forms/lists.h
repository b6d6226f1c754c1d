// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>
#include <QListWidget>

#include <utility>
#include <vector>

namespace forms {

/// A drop-down list. Click is emitted when the user picks an entry, even the current one, and when code moves
/// ListIndex to another entry; adding entries picks none. A list of thousands needs the size adjust policy
/// AdjustToMinimumContentsLengthWithIcon: otherwise Qt lays out every entry to find the width of the box.
/// With a minimum length of 0 the box is then as wide as its longest entries where there is room.
class ComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit ComboBox(QWidget* parent = nullptr);

    void Clear();
    void AddItem(const QString& text);
    void AddItems(const QStringList& texts);
    /// Texts with what currentData and findData know them by.
    void AddItems(const std::vector<std::pair<QString, int>>& textsAndKeys);
    int ListCount() const { return count(); }
    /// Index of the picked entry from 0, or -1.
    int ListIndex() const { return currentIndex(); }
    void setListIndex(int index);
    QString List(int index) const { return itemText(index); }
    QString Text() const { return currentText(); }

    QSize sizeHint() const override;
    /// The list is as wide as its longest entries, whatever the width of the box.
    void showPopup() override;

Q_SIGNALS:
    void Click();

protected:
    /// The wheel scrolls and picks nothing: an accidental pick would lose what was typed for the previous
    /// entry.
    void wheelEvent(QWheelEvent* event) override;

private:
    void measure(QStringList texts);

    int widest = 0; ///< of the entries, in pixels
};

/// A list. Click is emitted when the user clicks an entry with the left button, also a chosen one, or changes
/// the choice by mouse or keys, and when code chooses another entry; once for a double click, before
/// DblClick. The other buttons do nothing. In a list of single choice the user cannot take the choice back,
/// and the first arrow key in a list without a choice chooses the entry under the cursor.
class ListBox : public QListWidget {
    Q_OBJECT

public:
    explicit ListBox(QWidget* parent = nullptr);

    void Clear();
    void AddItem(const QString& text) { addItem(text); }
    void AddItems(const QStringList& texts) { addItems(texts); }
    int ListCount() const { return count(); }
    QString List(int index) const;
    /// Shows a note behind an entry's text and as its tool tip; an empty one removes it. List and Text do not
    /// have it.
    void setNote(int index, const QString& note);
    /// The first chosen entry from 0, or -1.
    int ListIndex() const;
    void setListIndex(int index) { setSelected(index, true); }
    bool Selected(int index) const;
    /// Chooses an entry or takes the choice back; in a list of single choice the others lose it.
    void setSelected(int index, bool chosen);
    int SelCount() const { return static_cast<int>(selectedItems().size()); }
    /// The text of the first chosen entry, else empty.
    QString Text() const { return List(ListIndex()); }

Q_SIGNALS:
    void Click();
    void DblClick();
    void KeyDown(int key);
    /// The focus goes to another control of the window.
    void Validate();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool choosesCurrentFirst(const QKeyEvent& event) const;

    bool pressed = false; ///< by the left button, where a press has an effect
    QList<QListWidgetItem*> chosenAtPress;
    bool secondOfDouble = false; ///< the release that ends a double click is not a click
};

} // namespace forms
