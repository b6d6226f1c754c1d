// SPDX-License-Identifier: GPL-3.0-or-later
// Every form can be used by keyboard alone and is deleted when it is closed.
#include "core/MDIMain.h"
#include "platform/forms/lists.h"
#include "platform/forms/msgbox.h"
#include "tests/support/surveytest.h"
#include "tools/allforms.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

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
    static QString nameOf(const QWidget& form, QWidget* control) {
        if (auto* button = qobject_cast<QAbstractButton*>(control); button && !button->text().isEmpty())
            return button->text();
        for (const QLabel* label : form.findChildren<QLabel*>()) {
            if (label->buddy() == control)
                return label->text();
        }
        return control->accessibleName();
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
            EXPECT_FALSE(nameOf(form, control).isEmpty()) << what << ": no name";
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

TEST_F(KeyboardTest, everyFormFitsASmallScreen) {
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
}

} // namespace
