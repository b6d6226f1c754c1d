// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/tablemenu.h"

#include "platform/failure/failure.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/listview.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/viewtable.h"
#include "platform/tables/tablefile.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

/// Without rows the clipboard is left alone.
void copyTable(const tables::Table& table) {
    if (!table.rows.empty())
        QGuiApplication::clipboard()->setText(tables::tabSeparated(table));
}

/// The table is taken before the dialog: it is what the user saw.
void saveTable(tables::Table table) {
    CommonDialog dialog;
    dialog.Filter = u"Tables .xlsx and .csv|*.xlsx *.csv"_s;
    const QString path = dialog.ShowSaveAs(tables::suffixes());
    if (path.isEmpty())
        return;
    tables::recogniseColumns(table);
    try {
        tables::save(table, path);
        tableSavedHook(path);
    } catch (const Failure& failure) {
        msgBox(failure.text(), style::critical);
    }
}

void popUp(QWidget& widget, const QPoint& globalPosition) {
    auto* menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(widget.actions());
    menu->popup(globalPosition);
}

/// A list of several columns answers the right button when it is released, after it has chosen the row.
void answerRightClick(QAbstractScrollArea& area) {
    if (auto* list = qobject_cast<ListView*>(&area)) {
        if (!list->hasMenu())
            QObject::connect(list, &ListView::RightClick, list,
                             [list](const QPoint& at) { popUp(*list, at); });
        return;
    }
    area.setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(&area, &QWidget::customContextMenuRequested, &area,
                     [&area](const QPoint& at) { popUp(area, area.viewport()->mapToGlobal(at)); });
}

/// Views inside a drop-down list or a calendar are no tables.
bool isPartOfControl(const QAbstractItemView& view, const QWidget& window) {
    return view.window() != window.window() || view.objectName().startsWith(u"qt_");
}

} // namespace

std::function<void(const QString&)> tableSavedHook = [](const QString&) {};

void addTableActions(QWidget& widget, const QString& copyText, const TableSource& copied,
                     const TableSource& saved) {
    auto* copy = new QAction(copyText, &widget);
    copy->setObjectName(u"copyTable"_s);
    QObject::connect(copy, &QAction::triggered, &widget, [copied] { copyTable(copied()); });
    auto* save = new QAction(u"&Save Table..."_s, &widget);
    save->setObjectName(u"saveTable"_s);
    QObject::connect(save, &QAction::triggered, &widget, [saved] { saveTable(saved()); });
    widget.addActions({copy, save});
}

void addTableMenu(QAbstractScrollArea& area, const TableSource& copied, const TableSource& saved) {
    addTableActions(area, u"&Copy"_s, copied, saved);
    auto* copy = area.findChild<QAction*>(u"copyTable"_s);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    answerRightClick(area);
}

void addTableMenus(QWidget& window) {
    for (QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
        if (!isPartOfControl(*view, window))
            addTableMenu(
                *view, [view] { return chosenIn(*view); }, [view] { return tableOf(*view); });
    }
}

} // namespace forms
