// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse, keys and clipboard of the walk.
#include "tests/walk/walker.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QWheelEvent>

namespace walk {
namespace {
/// The active form, a dialog or the main window.
QWidget* activeWindow(QWidget* on) {
    return on == &MDIMain::instance() && activeForm() ? activeForm() : on;
}

/// The visible controls of the active window, repeated by weight.
QWidgetList aims(QWidget* on) {
    QWidgetList result;
    for (QWidget* widget : activeWindow(on)->findChildren<QWidget*>()) {
        const bool aim = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
                         qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget);
        if (!aim || !widget->isVisible() || !widget->isEnabled())
            continue;
        // Controls that write or select an owner come up often; closing and help rarely.
        static const QRegularExpression seldom(u"^cmd(Close|Help|Print)"_s),
            often(u"^(cmd|lst|grd|txt|opn|dt)"_s);
        const QString name = widget->objectName();
        const int weight = name.contains(seldom) ? 1 : name.contains(often) ? 4 : 2;
        result += QWidgetList(weight, widget);
    }
    return result;
}
} // namespace

Qt::KeyboardModifiers Walker::anyModifiers() {
    if (!oneIn(5))
        return Qt::NoModifier;
    return anyOf(QList<Qt::KeyboardModifiers>{Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                              Qt::ShiftModifier | Qt::ControlModifier});
}

/// A mouse gesture in the window, mostly on a control.
void Walker::point() {
    QWidget* on = eventTarget();
    const QWidgetList controls = aims(on);
    QPoint at(below(qMax(1, on->width())), below(qMax(1, on->height())));
    if (!controls.isEmpty() && !oneIn(6)) {
        const QWidget* aim = anyOf(controls);
        at = aim->mapTo(on, QPoint(below(qMax(1, aim->width())), below(qMax(1, aim->height()))));
    }
    QWidget* target = on->childAt(at) ? on->childAt(at) : on;
    if (!target->isEnabled())
        return;
    const QPoint local = target->mapFrom(on, at);
    const Qt::MouseButton button =
        oneIn(4) ? (oneIn(3) ? Qt::MiddleButton : Qt::RightButton) : Qt::LeftButton;
    const Qt::KeyboardModifiers held = anyModifiers();
    const QString gesture =
        anyOf(u"click click click click click click click double drag wheel"_s.split(u' '));
    note(u"%1 by button %2 modifiers %3 on %4 at %5,%6"_s.arg(gesture)
             .arg(int(button))
             .arg(int(held), 0, 16)
             .arg(nameOf(target))
             .arg(local.x())
             .arg(local.y()));
    oracle.begin(target);
    if (gesture == u"click")
        click(target, button, held, local);
    else if (gesture == u"double")
        doubleClick(target, button, held, local);
    else if (gesture == u"drag")
        drag(target, local, held);
    else {
        QWheelEvent turned(local, target->mapToGlobal(QPointF(local)), {}, {0, oneIn(2) ? 120 : -120},
                           Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &turned);
    }
}

/// A right click asks for a menu as well, as the window system does.
void Walker::click(QWidget* target, Qt::MouseButton button, Qt::KeyboardModifiers held, const QPoint& at) {
    const QPointer<QWidget> alive(target);
    QTest::mouseClick(target, button, held, at);
    if (button != Qt::RightButton || !alive || !alive->isVisible() || QApplication::activePopupWidget())
        return;
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, target->mapToGlobal(at), held);
    QApplication::sendEvent(target, &event);
}

void Walker::doubleClick(QWidget* target, Qt::MouseButton button, Qt::KeyboardModifiers held,
                         const QPoint& at) {
    const QPointer<QWidget> alive(target);
    QTest::mouseClick(target, button, held, at);
    if (alive && alive->isVisible())
        QTest::mouseDClick(target, button, held, at);
    if (alive && alive->isVisible())
        QTest::mouseRelease(target, button, held, at);
}

void Walker::drag(QWidget* target, const QPoint& from, Qt::KeyboardModifiers held) {
    const QPointer<QWidget> alive(target);
    QTest::mousePress(target, Qt::LeftButton, held, from);
    const QPoint to = from + QPoint(below(120) - 60, below(120) - 60);
    for (const QPoint& at : {(from + to) / 2, to}) {
        if (!alive)
            return;
        QMouseEvent move(QEvent::MouseMove, at, target->mapToGlobal(QPointF(at)), Qt::NoButton,
                         Qt::LeftButton, held);
        QApplication::sendEvent(target, &move);
    }
    if (alive)
        QTest::mouseRelease(target, Qt::LeftButton, held, to);
}

/// A key press or typed text in the focused widget.
void Walker::press() {
    QWidget* on = eventTarget();
    QWidget* target = QApplication::focusWidget();
    if (on->windowType() == Qt::Popup)
        target = on->focusWidget() ? on->focusWidget() : on;
    else if (!target || target->window() != on)
        target = on;
    oracle.begin(target);
    if (oneIn(4)) {
        const QString text = anyOf(QStringList{u"a"_s, u"7"_s, u"12"_s, u"s"_s, u"D"_s, u"it's"_s,
                                               u"5/3/2024"_s, u"31/12/2026"_s, u"."_s, u" "_s, u"Zed"_s});
        note(u"types \"%1\" into %2"_s.arg(text, nameOf(target)));
        for (const QChar c : text) {
            const QPointer<QWidget> alive(target);
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(c), Qt::NoModifier);
            if (!alive)
                return;
        }
        return;
    }
    static const Qt::Key keys[] = {
        Qt::Key_Return,    Qt::Key_Return, Qt::Key_Tab,      Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Escape,
        Qt::Key_Up,        Qt::Key_Down,   Qt::Key_Down,     Qt::Key_Left,   Qt::Key_Right,   Qt::Key_Home,
        Qt::Key_End,       Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Insert, Qt::Key_Delete,  Qt::Key_Space,
        Qt::Key_Backspace, Qt::Key_F4,     Qt::Key_F2,       Qt::Key_A,      Qt::Key_S,       Qt::Key_R,
        Qt::Key_D,         Qt::Key_V,      Qt::Key_Q,        Qt::Key_P,      Qt::Key_C,       Qt::Key_N,
        Qt::Key_O,         Qt::Key_Z,      Qt::Key_U,        Qt::Key_E,      Qt::Key_M,       Qt::Key_B};
    const Qt::Key key = anyOf(keys);
    Qt::KeyboardModifiers held = anyModifiers();
    if (key >= Qt::Key_A && key <= Qt::Key_Z && oneIn(2))
        held = Qt::AltModifier; // an access key
    if (key == Qt::Key_Q && (held & Qt::ControlModifier) && !oneIn(10))
        return; // ends the program; rarely
    if ((held & Qt::AltModifier) && qobject_cast<QMenu*>(target))
        return; // Alt alone closes the menu; the key would then go to the focused widget
    note(u"key %1 modifiers %2 to %3"_s.arg(QKeySequence(key).toString())
             .arg(int(held), 0, 16)
             .arg(nameOf(target)));
    if (key == Qt::Key_Return &&
        (qobject_cast<QLineEdit*>(target) || qobject_cast<forms::MSHFlexGrid*>(target)))
        oracle.noteCommand(u"Enter"_s);
    QTest::keyClick(target, key, held);
}

/// Types a letter into one of the texts and saves, as programs that share a store seldom meet by chance.
void Walker::typeAndSave() {
    QWidgetList boxes;
    QWidgetList buttons;
    for (QWidget* widget : activeWindow(eventTarget())->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() && qobject_cast<QLineEdit*>(widget))
            boxes << widget;
        else if (widget->isVisible() && widget->isEnabled() && widget->objectName().startsWith(u"cmdSave"))
            buttons << widget;
    }
    if (boxes.isEmpty() || buttons.isEmpty())
        return;
    QWidget* box = anyOf(boxes);
    QWidget* button = anyOf(buttons);
    note(u"types into %1 and clicks %2"_s.arg(nameOf(box), nameOf(button)));
    box->setFocus();
    const QString letter = anyOf(QStringList{u"e"_s, u"5"_s});
    QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, letter, Qt::NoModifier);
    oracle.begin(button);
    QTest::mouseClick(button, Qt::LeftButton);
}

void Walker::paste() {
    QWidget* on = eventTarget();
    QWidget* target = QApplication::focusWidget();
    if (!target || target->window() != on)
        return;
    const QString text = anyOf(QStringList{u"one"_s, u"two\nlines"_s, u"a\tb\nc\td\n"_s, u"7\t8"_s,
                                           u"x\r\ny\r\n"_s, u"\"q\"\t\"r\ns\""_s, QString(300, u'w')});
    note(u"pastes \"%1\" into %2"_s.arg(text.simplified().left(20), nameOf(target)));
    oracle.begin(target);
    QApplication::clipboard()->setText(text);
    QTest::keyClick(target, Qt::Key_V, Qt::ControlModifier);
}
} // namespace walk
