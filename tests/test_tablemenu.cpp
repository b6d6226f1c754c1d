// SPDX-License-Identifier: GPL-3.0-or-later
// Copy and Save Table in the windows of the program, by mouse and keys.
#include "exchange/frmCheckFiles.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/forms/treeview.h"
#include "platform/forms/viewtable.h"
#include "reference/frmCustomer.h"
#include "search/frmSearch.h"
#include "tests/support/files.h"
#include "tests/support/storetest.h"

#include <QContextMenuEvent>
#include <QWindow>

namespace {
struct TableMenu : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
        addCustomer(u"=Böhm, Inc"_s);
    }
    void TearDown() override {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        StoreTest::TearDown();
    }
    /// What Ctrl+C puts on the clipboard.
    static QString copied(QWidget& from) {
        from.setFocus();
        shortcut(Qt::Key_C);
        return QApplication::clipboard()->text();
    }
    /// A click of the right button as the window system reports it.
    static void rightClick(QAbstractScrollArea& on) {
        QWidget* window = on.window();
        const QPoint at = on.viewport()->mapTo(window, on.viewport()->rect().center());
        QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, at);
        QCoreApplication::processEvents();
    }
    static void menuKey(QAbstractScrollArea& on) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, on.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&on, &event);
    }
    /// The entries of the menu in front, without underlined letters.
    static QStringList entries() {
        QStringList texts;
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        for (const QAction* action : menu ? menu->actions() : QList<QAction*>())
            texts << (action->isVisible() ? action->text().remove(u'&') : QString());
        return texts;
    }
    static void choose(Qt::Key letter) { QTest::keyClick(QApplication::activePopupWidget(), letter); }
    /// Saves the table under that name.
    void save(QAbstractScrollArea& table, const QString& name) {
        named = path(name);
        menuKey(table);
        choose(Qt::Key_S);
    }
};

TEST_F(TableMenu, everyKindOfTableHasIt) {
    frmCustomer::instance().Show();
    frmSearch::instance().Show();
    frmCheckFiles::instance().Show();
    const QStringList usual{u"Copy"_s, u"Save Table..."_s};
    const std::tuple<forms::Form*, const char*> cases[] = {{&frmCustomer::instance(), "grdRespondentDtls"},
                                                           {&frmSearch::instance(), "lsvDtls"},
                                                           {&frmSearch::instance(), "lstFields"},
                                                           {&frmCheckFiles::instance(), "lsvFiles"}};
    for (const auto& [form, name] : cases) {
        form->Show();
        auto& view = *control<QAbstractItemView>(*form, name);
        for (const auto open : {rightClick, menuKey}) {
            open(view);
            EXPECT_EQ(entries(), usual) << name << (open == menuKey ? " by the menu key" : "");
            choose(Qt::Key_Escape);
        }
    }
}

TEST_F(TableMenu, aGridIsCopiedAndSavedWithoutItsKeys) {
    frmCustomer::instance().Show();
    auto& grid = *control<forms::MSHFlexGrid>(frmCustomer::instance(), "grdCustomerDtls");
    grid.moveTo(2, 1);
    EXPECT_EQ(copied(grid), u"=Böhm, Inc"_s);
    save(grid, u"saved.csv"_s);
    EXPECT_EQ(QString::fromUtf8(contentOf(path(u"saved.csv"_s))),
              u"Customer Name,Customer Address,Tel.No,Email\r\nAcme, ,,\r\n\"'=Böhm, Inc\", ,,\r\n"_s);
    save(grid, u"saved"_s);
    EXPECT_TRUE(contentOf(path(u"saved.xlsx"_s)).startsWith("PK")) << "a name without a suffix";
    messages.expect(path(u"saved.xlsx already exists.\r\nDo you want to replace it?"_s),
                    style::yesNo + style::secondButton, {}, Answer::No);
    save(grid, u"saved"_s);
    messages.expectBeginning(u"The table could not be saved as "_s + path(u"absent/t.csv"_s),
                             style::critical);
    save(grid, u"absent/t.csv"_s);
}

TEST_F(TableMenu, listsAreCopiedByRowsAndTheGivenMenuStays) {
    run(u"insert into actionplan (customerid, Date, Action, targetdate, Status) "
        "values (1, '2024-03-05', 'Call', '2024-04-05', 0)"_s);
    frmImprovementPlan& plan = show<frmImprovementPlan>();
    clickEntry(plan, "lstCusName", 1);
    auto& names = *control<forms::ListBox>(plan, "lstCusName");
    EXPECT_EQ(copied(names), names.Text());
    auto& actions = *control<forms::ListView>(plan, "lsvDtls");
    ASSERT_GT(actions.ListCount(), 0);
    for (int time = 0; time < 2; ++time) {
        rightClick(actions);
        EXPECT_EQ(entries(), (QStringList{u"Delete"_s, u"Update Status"_s, u"Copy"_s, u"Save Table..."_s}));
        choose(Qt::Key_C);
    }
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"Call"_s));
}

TEST_F(TableMenu, aTreeHasAColumnForEachLevelAndHiddenColumnsStayAway) {
    forms::TreeView tree;
    tree.setAccessibleName(u"Parameters"_s);
    auto* service = new QTreeWidgetItem(&tree, {u"Service"_s});
    new QTreeWidgetItem(service, {u"Polite?"_s});
    new QTreeWidgetItem(&tree, {u"Price"_s});
    EXPECT_EQ(tables::tabSeparated(forms::tableOf(tree)), u"Parameters\t\nService\tPolite?\nPrice\t"_s);
    forms::ListView list;
    list.setColumns({{u"Id"_s, 0}, {u"Name"_s, 1.0}});
    list.setItems({{u"1"_s, u"a"_s}, {u"2"_s, u"b"_s}});
    EXPECT_EQ(tables::tabSeparated(forms::chosenIn(list)), u"Name\na\nb"_s);
    list.setSelected(1, true);
    EXPECT_EQ(tables::tabSeparated(forms::chosenIn(list)), u"b"_s);
}
} // namespace
