// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/storetest.h"

#include <QHeaderView>

/// The rows of a list in report view or of a table, each as its texts joined by a bar.
inline QStringList listed(const QAbstractItemView& list) {
    QStringList rows;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < list.model()->columnCount(); ++column)
            texts << list.model()->index(row, column).data().toString();
        rows << texts.join(u'|');
    }
    return rows;
}

inline void clickRow(const QAbstractItemView& list, int row, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier, int column = 0) {
    const QPoint at = list.visualRect(list.model()->index(row, column)).center();
    QTest::mouseClick(list.viewport(), button, modifiers, at);
}

inline void clickHead(const QTreeView& list, int column) {
    const QHeaderView* head = list.header();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                      {head->sectionViewportPosition(column) + 5, head->height() / 2});
}
