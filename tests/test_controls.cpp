// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse and keyboard input to lists, dates and grids.
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/listview.h"
#include "platform/forms/msgbox.h"
#include "reference/gridpaste.h"
#include "tests/support/replaced.h"
#include "tests/support/text.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {
/// A window with controls below one another.
struct Controls : ::testing::Test {
    void showWindow(const QWidgetList& controls) {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* control : controls)
            layout->addWidget(control);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QWidget window;
};

TEST_F(Controls, onlyTheLeftButtonOnAnEntrySelects) {
    auto* list = new forms::ListBox;
    showWindow({list});
    for (const QString& entry : {u"a"_s, u"b"_s, u"c"_s})
        list->AddItem(entry);
    int clicks = 0;
    QObject::connect(list, &forms::ListBox::Click, &window, [&] { ++clicks; });
    const QPoint third = list->visualItemRect(list->item(2)).center();
    const QPoint ground = list->viewport()->rect().bottomRight() - QPoint(3, 3);
    const std::tuple<Qt::MouseButton, QPoint, QString, int> cases[] = {{Qt::LeftButton, third, u"c"_s, 1},
                                                                       {Qt::RightButton, third, u"b"_s, 0},
                                                                       {Qt::MiddleButton, third, u"b"_s, 0},
                                                                       {Qt::LeftButton, ground, u"b"_s, 0}};
    for (const auto& [button, at, chosen, emitted] : cases) {
        list->setSelected(1, true);
        clicks = 0;
        QTest::mouseClick(list->viewport(), button, {}, at);
        EXPECT_EQ(clicks, emitted) << button;
        QTest::mouseDClick(list->viewport(), button, {}, at);
        EXPECT_EQ(list->Text(), chosen) << button;
    }
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home}) {
        list->clearSelection();
        list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
        QTest::keyClick(list, key);
        EXPECT_EQ(list->Text(), u"a"_s) << "the first key " << key;
    }
}

TEST_F(Controls, aBoxAsksForItsWidestEntryAndItsListShowsIt) {
    forms::ComboBox box;
    QComboBox plain; // measures them all
    box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    const QStringList names{u"Acme"_s, u"Wilhelmina Manufacturing and Sons of Wallasey"_s, u"Zeta"_s};
    box.AddItems(names);
    plain.addItems(names);
    EXPECT_NEAR(box.sizeHint().width(), plain.sizeHint().width(), 2);
    EXPECT_EQ(box.sizeHint().height(), plain.sizeHint().height());
    box.resize(90, box.sizeHint().height());
    box.show();
    box.showPopup();
    EXPECT_GE(box.view()->viewport()->width(), box.view()->sizeHintForColumn(0));
}

TEST_F(Controls, aRightClickOnAReportListSelectsTheRow) {
    auto* list = new forms::ListView;
    list->setColumns({{u"Name"_s, 1.0}});
    list->setItems({{u"a"_s}, {u"b"_s}});
    showWindow({list});
    QStringList emitted;
    QObject::connect(list, &forms::ListView::Click, &window, [&] { emitted << u"click"_s; });
    QObject::connect(list, &forms::ListView::RightClick, &window, [&] { emitted << u"menu"_s; });
    for (int click = 0; click < 2; ++click) // the second on the selected row
        QTest::mouseClick(list->viewport(), Qt::RightButton, {},
                          list->visualRect(list->model()->index(1, 0)).center());
    EXPECT_EQ(emitted, QStringList({u"click"_s, u"menu"_s, u"menu"_s}));
    list->clearSelection();
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(list->SelectedRows(), std::vector<int>{1});
    EXPECT_EQ(emitted.last(), u"click"_s);
}

TEST_F(Controls, aClickOnAHeadingSortsAReportListAndRowsKeepTheirNumbers) {
    auto* list = new forms::ListView;
    list->setColumns({{u"Date"_s, 0.3}, {u"Marks"_s, 0.3}, {u"Name"_s, 0.4}});
    list->setItems({{u"01/03/2026"_s, u"+9.00"_s, u"b"_s},
                    {u"30/06/2025 17:30"_s, u"1,010.5 MB"_s, u"A"_s},
                    {u""_s, u"-2.5"_s, u"c"_s}});
    showWindow({list});
    const auto names = [&] {
        QString shown;
        for (int place = 0; place < list->ListCount(); ++place)
            shown += list->model()->index(place, 2).data().toString();
        return shown;
    };
    const auto click = [&](int column) {
        const int x = list->header()->sectionViewportPosition(column) + 10;
        QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {}, {x, list->header()->height() / 2});
    };
    list->setSelected(1, true);
    const std::pair<int, const char*> clicks[] = {{0, "Abc"}, {0, "bAc"}, {0, "bAc"}, {1, "cbA"}, {2, "Abc"}};
    for (const auto& [column, expected] : clicks) {
        click(column);
        EXPECT_EQ(names(), QLatin1StringView(expected));
        EXPECT_EQ(list->SelectedRows(), std::vector<int>{1});
        EXPECT_EQ(list->Text(1, 2), u"A"_s);
    }
    list->setItems({{u""_s, u""_s, u"z"_s}, {u""_s, u""_s, u"y"_s}});
    EXPECT_EQ(names(), u"yz"_s) << "new rows are sorted as well";
    list->setCurrentRow(0);
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_EQ(list->CurrentRow(), 0);
}

TEST_F(Controls, aDraggedColumnHasItsWidthAtTheNextOpening) {
    QString kept;
    const Replaced<forms::rememberHook> remembers(
        [&](const QString& key, const QString& text) { kept = key + u'=' + text; });
    const Replaced<forms::recallHook> recalls([&](const QString&) { return kept.section(u'=', 1); });
    auto* list = new forms::ListView;
    list->setObjectName(u"list"_s);
    list->setColumns({{u"A"_s, 0.5}, {u"B"_s, 0.5}});
    showWindow({list});
    list->header()->setAttribute(Qt::WA_UnderMouse);
    list->header()->resizeSection(0, list->viewport()->width() / 4);
    EXPECT_EQ(kept.section(u'/', 1, 1), u"list"_s);
    forms::ListView again;
    again.setColumns({{u"A"_s, 0.5}, {u"B"_s, 0.5}});
    again.resize(400, 100);
    again.show();
    EXPECT_NEAR(again.columnWidth(0), again.viewport()->width() / 4, 2);
    EXPECT_NEAR(again.columnWidth(1), again.viewport()->width() / 2, 2);
}

TEST_F(Controls, datesAreTypedAsAWhole) {
    auto* date = new forms::DTPicker;
    auto* other = new QPushButton;
    showWindow({date, other});
    int changes = 0;
    QObject::connect(date, &forms::DTPicker::Change, &window, [&] { ++changes; });
    const QDate old(2024, 3, 5);
    const std::tuple<QString, QDate> cases[] = {{u"31/12/2026"_s, {2026, 12, 31}},
                                                {u"1.2.2024"_s, {2024, 2, 1}},
                                                {u" 1-2-2024 "_s, {2024, 2, 1}},
                                                {u"01022024"_s, {2024, 2, 1}},
                                                {u"٣١/١٢/٢٠٢٦"_s, {2026, 12, 31}},
                                                {u"29/2/2023"_s, {}},
                                                {u"1/1/2101"_s, {2101, 1, 1}},
                                                {u"1/1/1600"_s, {}},
                                                {u"1/2/24"_s, {}},
                                                {u"tomorrow"_s, {}}};
    for (const auto& [text, taken] : cases) {
        for (const Qt::Key leaves : {Qt::Key_Tab, Qt::Key_Return}) {
            date->setValue(old);
            date->setFocus(Qt::TabFocusReason);
            changes = 0;
            for (const QChar c : text)
                QTest::sendKeyEvent(QTest::Click, date, Qt::Key_unknown, QString(c), Qt::NoModifier);
            EXPECT_EQ(date->Value(), old) << "while typing " << text;
            QTest::keyClick(date, leaves);
            EXPECT_EQ(date->Value(), taken.isValid() ? taken : old) << text;
            EXPECT_EQ(changes, taken.isValid() ? 1 : 0) << text;
            EXPECT_EQ(date->text(), taken.isValid() ? taken.toString(u"dd/MM/yyyy") : text);
            EXPECT_NE(date->toolTip().isEmpty(), !taken.isValid()) << "marked: " << text;
            EXPECT_EQ(other->hasFocus(), leaves == Qt::Key_Tab) << "one Tab leaves";
        }
    }
}

TEST_F(Controls, aCalendarIsOpenedByKeysAndCodeMaySetAnyDate) {
    auto* date = new forms::DTPicker;
    showWindow({date});
    date->setFocus();
    date->setValue({2024, 3, 5});
    QTest::keyClick(date, Qt::Key_F4);
    auto* calendar = qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget());
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), date->Value());
    Q_EMIT calendar->activated({2024, 3, 20});
    EXPECT_EQ(date->Value(), QDate(2024, 3, 20));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    date->setValue({1220, 11, 30}); // as an older version stored it
    EXPECT_EQ(date->text(), u"30/11/1220"_s);
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_EQ(date->Value(), QDate(1220, 11, 30));
    date->setValue({9999, 12, 31});
    QTest::keyClick(date, Qt::Key_Up);
    EXPECT_EQ(date->Value(), QDate(9999, 12, 31));
    date->lineEdit()->selectAll();
    QTest::keyClicks(date, u"1/2"_s);
    QFocusEvent toMenu(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(date, &toMenu);
    EXPECT_EQ(date->toolTip(), QString()) << "still being typed";
}

TEST_F(Controls, enterAnswersAMessageByItsFirstButtonUnlessThatOneLosesSomething) {
    struct SecondButtonFirst : QProxyStyle { // as some desktops place them
        int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                      QStyleHintReturn* data) const override {
            return hint == SH_DialogButtonLayout ? int(QDialogButtonBox::GnomeLayout)
                                                 : QProxyStyle::styleHint(hint, option, widget, data);
        }
    };
    const auto restored =
        qScopeGuard([name = QApplication::style()->name()] { QApplication::setStyle(name); });
    QApplication::setStyle(new SecondButtonFirst);
    using forms::Answer;
    for (const auto& [style, answer] : {std::pair(4, Answer::Yes), {4 + 256, Answer::No}, {1, Answer::Ok}}) {
        QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
        EXPECT_EQ(forms::msgBox(u"Sure?"_s, style), answer) << style;
    }
}

TEST_F(Controls, aGridMarksItsCurrentCellAndEmitsEveryMove) {
    auto* grid = new forms::MSHFlexGrid;
    grid->setCols(3);
    grid->setRows(6);
    grid->setColWidth(1, 1500);
    showWindow({grid});
    QStringList emitted;
    QObject::connect(grid, &forms::MSHFlexGrid::Click, &window,
                     [&] { emitted << QString::number(grid->Row()) + u',' + QString::number(grid->Col()); });
    const auto at = [&](int row) { return grid->visualRect(grid->model()->index(row - 1, 0)).center(); };
    const QPoint ground = grid->viewport()->rect().bottomRight() - QPoint(2, 2);
    const std::tuple<Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int> presses[] = {
        {Qt::LeftButton, {}, at(2), 2},
        {Qt::LeftButton, Qt::ShiftModifier, at(4), 4},
        {Qt::LeftButton, Qt::ControlModifier, ground, 4},
        {Qt::RightButton, {}, at(1), 4}};
    for (const auto& [button, held, place, row] : presses) {
        QTest::mouseClick(grid->viewport(), button, held, place);
        EXPECT_EQ(grid->Row(), row);
        EXPECT_EQ(grid->selectionModel()->selectedIndexes(), QModelIndexList{grid->currentIndex()});
        EXPECT_EQ(grid->currentIndex().row() + 1, row);
    }
    EXPECT_EQ(emitted, QStringList({u"2,1"_s, u"4,1"_s}));
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*> keys[] = {
        {Qt::Key_Up, Qt::ControlModifier, "3,1"},
        {Qt::Key_End, Qt::ControlModifier, "5,2"},
        {Qt::Key_PageUp, Qt::AltModifier, "1,2"},
        {Qt::Key_Up, {}, ""}};
    for (const auto& [key, held, moved] : keys) {
        emitted.clear();
        QTest::keyClick(grid, key, held);
        EXPECT_EQ(emitted.join(u' '), QLatin1StringView(moved)) << key;
        EXPECT_EQ(grid->selectionModel()->selectedIndexes(), QModelIndexList{grid->currentIndex()});
    }
}

TEST_F(Controls, clipboardTextIsSplitIntoRowsOfCells) {
    const std::pair<QString, std::vector<QStringList>> cases[] = {
        {u"a"_s, {{u"a"_s}}},
        {u"a\n"_s, {{u"a"_s}}},
        {u"a\tb\r\nc\td\r\n"_s, {{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}}},
        {u"a\t\rb"_s, {{u"a"_s, {}}, {u"b"_s}}},
        {u"\"two\nlines\"\t\"say \"\"so\"\"\""_s, {{u"two\nlines"_s, u"say \"so\""_s}}},
        {u"\"quoted\" only"_s, {{u"\"quoted\" only"_s}}},
        {u"\"\"\tx"_s, {{{}, u"x"_s}}},
        {{}, {{QString()}}}};
    for (const auto& [text, cells] : cases)
        EXPECT_EQ(cellsOfBlock(text), cells) << text;
    EXPECT_EQ(withoutControlCharacters(u"a\r\n\tb\u2028c"_s), u"a b c"_s);
}
} // namespace
