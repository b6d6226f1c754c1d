// SPDX-License-Identifier: GPL-3.0-or-later
// Every form can be used by keyboard alone, is read by a screen reader, and is deleted when it is closed.
#include "core/MDIMain.h"
#include "platform/chart/mschart.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/msgbox.h"
#include "tests/support/heard.h"
#include "tests/support/surveytest.h"
#include "tools/allforms.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QScrollArea>
#include <QTableView>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

class KeyboardTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0});
        addScore(ann, question[0], 1, today, 5, 5);
    }
    static void deleteClosedForms() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// False for widgets inside another control, such as a grid's editing box or corner button.
    static bool isControl(const QWidget* widget) {
        static const auto is = [](const QWidget* w) {
            return w->inherits("QAbstractItemView") || w->inherits("QComboBox") ||
                   w->inherits("QAbstractSpinBox");
        };
        for (const QWidget* outer = widget->parentWidget(); outer; outer = outer->parentWidget()) {
            if (is(outer))
                return false;
        }
        return is(widget) || widget->inherits("QLineEdit") || widget->inherits("QPlainTextEdit") ||
               widget->inherits("QAbstractButton");
    }
    static QWidgetList controls(const QWidget& form) {
        QWidgetList result;
        for (QWidget* widget : form.findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->isEnabled() && isControl(widget))
                result << widget;
        }
        return result;
    }
    /// The controls in tab order.
    static QWidgetList tabOrder(const QWidget& form) {
        const QWidgetList all = controls(form);
        QWidget* first = form.nextInFocusChain();
        while (!all.contains(first) || !(first->focusPolicy() & Qt::TabFocus))
            first = first->nextInFocusChain();
        first->setFocus(Qt::TabFocusReason);
        QWidgetList round;
        for (int step = 0; step < 60 && !(step > 0 && QApplication::focusWidget() == first); ++step) {
            // Tab visits the sections of a date before it leaves the control.
            if (all.contains(QApplication::focusWidget()) &&
                (round.isEmpty() || round.last() != QApplication::focusWidget()))
                round << QApplication::focusWidget();
            key(Qt::Key_Tab);
        }
        return round;
    }
    /// What a screen reader calls a control. The name of a combo box is what is chosen in it: its label
    /// counts.
    static QString nameOf(QAccessibleInterface& control) {
        for (const auto& [label, relation] : control.relations(QAccessible::Label)) {
            if (!label->text(QAccessible::Name).isEmpty())
                return label->text(QAccessible::Name);
        }
        return control.role() == QAccessible::ComboBox ? QString() : control.text(QAccessible::Name);
    }
    /// The columns of a filled table that a reader could not tell apart, by their number.
    static QString columnsWithoutHead(const QWidget& widget, QAccessibleTableInterface& table) {
        QString without;
        for (int column = 0; table.rowCount() > 0 && column < table.columnCount(); ++column) {
            const auto* grid = qobject_cast<const QTableView*>(&widget);
            const auto* list = qobject_cast<const QTreeView*>(&widget);
            if ((grid && grid->isColumnHidden(column)) || (list && list->isColumnHidden(column)) ||
                (list && list->isHeaderHidden()) || widget.inherits("QListView"))
                continue;
            const auto heads = table.cellAt(0, column)->tableCellInterface()->columnHeaderCells();
            if (heads.isEmpty() || heads[0]->text(QAccessible::Name).isEmpty())
                without += QString::number(column) + u' ';
            for (QAccessibleInterface* head : grid || list ? heads : QList<QAccessibleInterface*>())
                QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(head)); // new at each question
        }
        return without;
    }
    static void expectIsReadAsCopied(const QWidget& chart) {
        chart.findChild<QAction*>(u"copyTable"_s)->trigger();
        QAccessibleInterface& table = *QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&chart));
        QString read;
        for (int i = 0, columns = table.tableInterface()->columnCount(); i < table.childCount(); ++i)
            read += table.child(i)->text(QAccessible::Name) + ((i + 1) % columns == 0 ? u'\n' : u'\t');
        EXPECT_GT(table.tableInterface()->rowCount(), 0);
        EXPECT_EQ(read.trimmed(), QApplication::clipboard()->text());
    }
    static void expectTicksAreTold(QAbstractItemView& view) {
        const QModelIndex first = view.model()->index(0, 0);
        if (!(first.flags() & Qt::ItemIsUserCheckable) || !first.data(Qt::CheckStateRole).isValid())
            return;
        view.setCurrentIndex(first);
        Heard::take();
        view.model()->setData(first, Qt::Checked, Qt::CheckStateRole);
        EXPECT_EQ(Heard::take().value(0), u"checked"_s);
    }
    static void expectIsSpoken(const QWidget& window, const std::string& name) {
        EXPECT_FALSE(window.windowTitle().isEmpty()) << name;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            const std::string what = name + '.' + widget->objectName().toStdString();
            const QWidget* outer = widget->parentWidget();
            if ((!isControl(widget) && widget->focusPolicy() == Qt::NoFocus) ||
                outer->inherits("QComboBox") || outer->inherits("QAbstractSpinBox") ||
                outer->inherits("QComboBoxPrivateContainer"))
                continue;
            QAccessibleInterface& control = *QAccessible::queryAccessibleInterface(widget);
            EXPECT_FALSE(nameOf(control).isEmpty())
                << what << ": no name " << widget->metaObject()->className();
            const bool isOfQt = qobject_cast<QAbstractItemView*>(outer->parentWidget()) ||
                                widget->objectName().endsWith(u"_ext_button");
            for (QAccessibleInterface* at = &control; !isOfQt && at->object() != &window; at = at->parent())
                ASSERT_GE(at->parent()->indexOfChild(at), 0) << what << " is not found";
            if (QAccessibleTableInterface* table = control.tableInterface()) {
                EXPECT_EQ(columnsWithoutHead(*widget, *table), QString()) << what << ": columns";
            }
            const auto* grid = qobject_cast<const forms::MSHFlexGrid*>(outer->parentWidget());
            if (grid && widget->isVisible() && widget->inherits("QLineEdit")) {
                EXPECT_TRUE(nameOf(control).startsWith(grid->TextMatrix(0, grid->Col()) + u", ")) << what;
            }
            if (auto* view = qobject_cast<QAbstractItemView*>(widget); view && view->isVisible())
                expectTicksAreTold(*view);
            if (widget->inherits("chart::MSChart") && widget->isVisible())
                expectIsReadAsCopied(*widget);
        }
    }
};

TEST_F(KeyboardTest, everyFormWorksByKeyboard) {
    for (const AnyForm& any : allForms()) {
        MDIMain::instance().activateWindow(); // a dialog may have been closed
        forms::Form& form = any.open();
        ASSERT_TRUE(QTest::qWaitFor([&] { return form.isVisible() && form.isActiveWindow(); })) << any.name;
        QSet<QKeySequence> mnemonics;
        const QWidgetList round = tabOrder(form);
        for (QWidget* control : controls(form)) {
            const std::string what = any.name + std::string(".") + control->objectName().toStdString();
            const auto inGroup = [&](const QWidget* sibling) { // reached by the arrow keys
                return control->inherits("QRadioButton") && sibling->inherits("QRadioButton") &&
                       sibling->parentWidget() == control->parentWidget();
            };
            EXPECT_TRUE(round.contains(control) || std::any_of(round.begin(), round.end(), inGroup))
                << what << ": no Tab";
            const auto* button = qobject_cast<QAbstractButton*>(control);
            const QKeySequence mnemonic = button ? QKeySequence::mnemonic(button->text()) : QKeySequence();
            EXPECT_FALSE(mnemonics.contains(mnemonic)) << what << ": " << mnemonic.toString().toStdString();
            if (!mnemonic.isEmpty())
                mnemonics << mnemonic;
        }
        const QPointer<forms::Form> open(&form);
        key(Qt::Key_Escape);
        deleteClosedForms();
        EXPECT_TRUE(open.isNull()) << any.name << ": Esc";
        any.close();
        deleteClosedForms();
    }
}

TEST_F(KeyboardTest, everyFormFitsASmallScreenAndIsSpoken) {
    const Heard heard;
    const QSize small(960, 510); // 1920 x 1080 at 200 %, without the title bar
    MDIMain::instance().resize(small);
    const Replaced<forms::messageHook> ignored([](const forms::Message&) { return forms::Answer::Ok; });
    for (const AnyForm& any : allForms()) {
        forms::Form& form = any.open();
        if (auto* dates = form.findChild<forms::ListBox*>(u"lstSurveyDates"_s))
            dates->setListIndex(0);
        for (const char* growing : {"cmdView", "chkBasis", "chkGaps"}) {
            if (auto* button = form.findChild<QAbstractButton*>(QLatin1StringView(growing)))
                button->click();
        }
        QCoreApplication::processEvents(); // layouts
        expectIsSpoken(form, any.name);
        const QWidget& window = form.isWindow() ? form : *form.parentWidget();
        const QRect place = form.isWindow() ? QRect({}, window.minimumSizeHint()) : window.geometry();
        EXPECT_TRUE(QRect({}, form.isWindow() ? small : window.parentWidget()->size()).contains(place))
            << any.name << ' ' << place.right() + 1 << " x " << place.bottom() + 1;
        auto* scrolled = form.findChild<QScrollArea*>();
        for (QPushButton* button : form.findChildren<QPushButton*>()) {
            if (scrolled)
                scrolled->ensureWidgetVisible(button);
            EXPECT_TRUE(button->isHidden() || button->visibleRegion().boundingRect() == button->rect())
                << any.name;
        }
        any.close();
        deleteClosedForms();
    }
    showHelpTopic(1);
    const auto* page = control<QWidget>(MDIMain::instance(), "startPage");
    EXPECT_TRUE(QTest::qWaitFor([page] { return page->isVisible(); }));
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            expectIsSpoken(*window, window->objectName().toStdString());
    }
    heard.take();
    showDone(u"6 questions saved"_s);
    EXPECT_TRUE(heard.take().value(0).startsWith(u"6 questions saved")) << "the status bar";
}

} // namespace
