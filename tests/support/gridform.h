// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/storetest.h"

#include <QGuiApplication>
#include <QHeaderView>

/// A grid edited in place, driven by mouse and keys.
struct EditedGrid {
    forms::MSHFlexGrid* grid;
    QLineEdit* box;

    EditedGrid(QWidget& form, const char* gridName, const char* boxName)
        : grid(control<forms::MSHFlexGrid>(form, gridName)), box(control<QLineEdit>(form, boxName)) {}

    QPoint at(int row, int col) const {
        return grid->visualRect(grid->model()->index(row - 1, col - 1)).center();
    }
    void click(int row, int col) const {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(row, col));
    }
    void clickHead() const {
        const QHeaderView* head = grid->horizontalHeader();
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, head->rect().center());
    }
    /// Replaces the cell's text.
    void enter(int row, int col, const QString& text) const {
        click(row, col);
        box->selectAll();
        if (text.isEmpty())
            key(Qt::Key_Delete);
        type(text);
    }
    QString text(int row, int col) const { return grid->TextMatrix(row, col); }
    /// The cells 1 to 4 of a row, joined by a bar.
    QString row(int number) const {
        return QStringList{text(number, 1), text(number, 2), text(number, 3), text(number, 4)}.join(u'|');
    }
    std::pair<int, int> cell() const { return {grid->Row(), grid->Col()}; }
    /// Whether the editing box is visible and covers the current cell.
    bool isBoxOverCell() const {
        return box->isVisible() && box->geometry() == grid->cellRect() &&
               grid->viewport()->rect().contains(box->geometry());
    }
    /// Pastes into the current cell.
    static void paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
    }
};
