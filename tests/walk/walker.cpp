// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/walker.h"

#include "core/MDIMain.h"
#include "platform/crystal/crystalreport.h"
#include "platform/desktop/opener.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/treeview.h"
#include "platform/mapi/client.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDrag>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QRegularExpression>
#include <QTimer>
#include <QWheelEvent>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace walk {
namespace {

/// Where events go: a popup or a dialog keeps them from all else.
QWidget* stage() {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* dialog = QApplication::activeModalWidget())
        return dialog;
    return &MDIMain::instance();
}

QString nameOf(const QWidget* widget) {
    QString name;
    for (const QWidget* outer = widget; outer && name.count(u'/') < 2; outer = outer->parentWidget()) {
        if (!outer->objectName().isEmpty() && !outer->objectName().startsWith(u"qt_"))
            name = u'/' + outer->objectName() + name;
    }
    return QLatin1StringView(widget->metaObject()->className()) + name;
}

/// What a person aims at: the controls in sight of the window in front.
QWidgetList aims(QWidget* on) {
    QWidget* window = on;
    if (on == &MDIMain::instance()) {
        const QMdiSubWindow* active = on->findChild<QMdiArea*>()->activeSubWindow();
        if (active && active->widget())
            window = active->widget();
    }
    QWidgetList result;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        const bool aim = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
                         qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget);
        if (!aim || !widget->isVisible() || !widget->isEnabled())
            continue;
        // What writes and what says for whom is what matters; leaving and asking for help do not.
        static const QRegularExpression seldom(u"^cmd(Close|Help|Print)"_s),
            often(u"^(cmd|lst|grd|txt|opn|dt)"_s);
        const QString name = widget->objectName();
        const int weight = name.contains(seldom) ? 1 : name.contains(often) ? 4 : 2;
        result += QWidgetList(weight, widget);
    }
    return result;
}

} // namespace

Walker::Walker(int withSeed, const QString& storePath)
    : seed(withSeed), random(static_cast<unsigned>(withSeed)), oracle(storePath) {
    blocker.ConnectionString = toConnectionText();
    blocker.Open();
    hookDialogs();
    QApplication::setKeyboardInputInterval(-1); // letters in a list do not add up by the clock
}

Walker::~Walker() {
    blocker.RollbackTrans();
}

/// Every question of the program is answered at random.
void Walker::hookDialogs() {
    const auto answer = [this](const forms::Message& message) {
        using forms::Answer;
        tell(u"message \"%1\""_s.arg(message.text.simplified().left(60)));
        if (cnnMain && cnnMain->InTransaction() && fault.isEmpty())
            fault = u"a message while a transaction is open: "_s + message.text;
        switch (message.style & 0xF) {
        case forms::style::okCancel:
            return oneIn(2) ? Answer::Ok : Answer::Cancel;
        case forms::style::yesNo:
            return oneIn(2) ? Answer::Yes : Answer::No;
        case forms::style::retryCancel:
            return oneIn(2) ? Answer::Retry : Answer::Cancel;
        default:
            return Answer::Ok;
        }
    };
    const auto file = [this](const forms::CommonDialog& dialog) {
        const QDir home(homeDirectory());
        const QStringList files = home.entryList({u"*.xls"_s}, QDir::Files, QDir::Name);
        QString chosen;
        if (oneIn(3))
            chosen = home.filePath(
                anyOf(QStringList{u"new.xls"_s, u"Ann's.xls"_s, u"plain"_s, u"template.xls"_s}));
        else if (!oneIn(3) && !files.isEmpty())
            chosen = home.filePath(anyOf(files));
        if (dialog.Flags == 512 && !files.isEmpty())
            chosen = home.filePath(files.first()) + u'\n' + home.filePath(files.last());
        tell(u"file dialog: "_s + chosen.section(u'/', -1));
        return chosen;
    };
    forms::messageSeat = answer;
    forms::openFileSeat = file;
    forms::saveFileSeat = file;
    forms::helpSeat = [](const forms::CommonDialog&) {};
    desktop::openFileSeat = [this](const QString&) { return oneIn(2) ? 42 : 2; };
    mapi::hasClientSeat = [this] { return oneIn(2); };
    mapi::composeSeat = [](const mapi::Mail&) {};
    crystal::previewSeat = [](const auto&, const QString&, int) {};
    forms::TreeView::dragSeat = [this](QDrag&) { dropNode(); };
    endSeat = [] {};
}

/// Lets the dragged node go over a grid in sight, or nowhere.
void Walker::dropNode() const {
    for (forms::MSHFlexGrid* grid : stage()->findChildren<forms::MSHFlexGrid*>()) {
        if (!grid->isVisible())
            continue;
        QMimeData carried;
        carried.setData(QLatin1StringView(forms::TreeView::nodeMimeType), "node");
        QDropEvent drop({5, 5}, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(grid->viewport(), &drop);
        return;
    }
}

void Walker::tell(const QString& event) {
    constexpr std::size_t mostTold = 30;
    told.push_back(QString::number(done) + u": " + event);
    if (told.size() > mostTold)
        told.pop_front();
}

QString Walker::run(int events) {
    left = events;
    QTimer::singleShot(0, &loop, [this] { step(); });
    loop.exec();
    if (fault.isEmpty())
        return {};
    QStringList last(told.begin(), told.end());
    return u"seed %1, step %2: %3\n  "_s.arg(QString::number(seed), QString::number(done), fault) +
           last.join(u"\n  "_s);
}

/// One event. The next one is on its way before, so that the walk goes on in dialogs and menus.
void Walker::step() {
    if (locked) {
        blocker.RollbackTrans();
        locked = false;
        oracle.wasLocked();
    }
    if (fault.isEmpty())
        fault = oracle.fault(depth == 0 && !QApplication::activePopupWidget());
    if (left-- <= 0 || !fault.isEmpty()) {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        if (auto* dialog = qobject_cast<forms::Form*>(QApplication::activeModalWidget()))
            dialog->Unload();
        if (depth == 0)
            loop.quit();
        else
            QTimer::singleShot(0, &loop, [this] { step(); });
        return;
    }
    ++done;
    MDIMain::instance().stsBar->Panels(1).setText({});
    QTimer::singleShot(0, &loop, [this] { step(); });
    ++depth;
    perform();
    --depth;
}

void Walker::perform() {
    MDIMain& window = MDIMain::instance();
    if (!window.isVisible())
        window.show(); // the program has been ended
    QWidget* on = stage();
    if (on->windowType() != Qt::Popup && !on->isActiveWindow()) { // a window manager would have seen to it
        on->activateWindow();
        return;
    }
    toReconnect();
    sqlite3_busy_timeout(cnnMain->session()->handle(), 0);
    if (oneIn(100)) {
        tell(u"the store is locked"_s);
        blocker.session()->prepare({u"begin exclusive"_s, {}}).step();
        locked = true;
    }
    const int kind = below(100);
    if (kind < 6)
        openSomething();
    else if (kind < 52)
        point();
    else if (kind < 97)
        press();
    else
        paste();
}

void Walker::openSomething() {
    if (stage() != &MDIMain::instance())
        return;
    static const QStringList onPopup{u"mnuDelete"_s, u"mnucomplete"_s, u"mnunotcomplete"_s};
    QList<QAction*> actions;
    for (QAction* action : MDIMain::instance().findChildren<QAction*>()) {
        if (action->objectName().startsWith(u"mnu") && action->isVisible() && action->isEnabled() &&
            !action->menu() && !onPopup.contains(action->objectName()))
            actions << action;
    }
    static const QStringList writing{u"mnuObjective"_s,  u"mnuObjective"_s,       u"mnuObjective"_s,
                                     u"mnuEditSurvey"_s, u"mnuEditSurvey"_s,      u"mnuNewSurvey"_s,
                                     u"mnuNewSurvey"_s,  u"mnuImprovementPlan"_s, u"mnuImprovementPlan"_s,
                                     u"mnuPrameter"_s,   u"mnuCusAndResp"_s,      u"mnuReadMultipleFiles"_s,
                                     u"mnuSearch"_s,     u"mnuEmailSurveys"_s};
    QAction* action = anyOf(actions);
    if (!oneIn(3))
        action = MDIMain::instance().findChild<QAction*>(anyOf(writing));
    tell(u"menu "_s + action->objectName());
    oracle.begin(nullptr);
    action->trigger();
}

Qt::KeyboardModifiers Walker::anyModifiers() {
    if (!oneIn(5))
        return Qt::NoModifier;
    return anyOf(QList<Qt::KeyboardModifiers>{Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                              Qt::ShiftModifier | Qt::ControlModifier});
}

/// A press somewhere in the window, mostly where a control is; it goes to what lies on top there.
void Walker::point() {
    QWidget* on = stage();
    const QWidgetList controls = aims(on);
    QPoint at(below(qMax(1, on->width())), below(qMax(1, on->height())));
    if (!controls.isEmpty() && !oneIn(6)) {
        const QWidget* aim = anyOf(controls);
        at = aim->mapTo(on, QPoint(below(qMax(1, aim->width())), below(qMax(1, aim->height()))));
    }
    QWidget* target = on->childAt(at);
    if (!target)
        target = on;
    if (!target->isEnabled())
        return;
    const QPoint local = target->mapFrom(on, at);
    const Qt::MouseButton button =
        oneIn(4) ? (oneIn(3) ? Qt::MiddleButton : Qt::RightButton) : Qt::LeftButton;
    const Qt::KeyboardModifiers held = anyModifiers();
    const int gesture = below(10);
    tell(u"%1 button %2 modifiers %3 on %4 at %5,%6"_s
             .arg(gesture < 7   ? u"click"_s
                  : gesture < 8 ? u"double click"_s
                  : gesture < 9 ? u"drag"_s
                                : u"wheel"_s)
             .arg(int(button))
             .arg(int(held), 0, 16)
             .arg(nameOf(target))
             .arg(local.x())
             .arg(local.y()));
    oracle.begin(target);
    if (gesture < 7)
        QTest::mouseClick(target, button, held, local);
    else if (gesture < 8)
        doubleClick(target, button, held, local);
    else if (gesture < 9)
        drag(target, local, held);
    else
        wheel(target, local);
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

void Walker::wheel(QWidget* target, const QPoint& at) {
    QWheelEvent turned(at, target->mapToGlobal(QPointF(at)), {}, {0, oneIn(2) ? 120 : -120}, Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &turned);
}

/// A key for what has the focus.
void Walker::press() {
    QWidget* on = stage();
    QWidget* target = QApplication::focusWidget();
    if (on->windowType() == Qt::Popup)
        target = on->focusWidget() ? on->focusWidget() : on;
    else if (!target || target->window() != on)
        target = on;
    oracle.begin(target);
    if (oneIn(4)) {
        const QString text = anyOf(QStringList{u"a"_s, u"7"_s, u"12"_s, u"s"_s, u"D"_s, u"it's"_s,
                                               u"5/3/2024"_s, u"31/12/2026"_s, u"."_s, u" "_s, u"Zed"_s});
        tell(u"types \"%1\" into %2"_s.arg(text, nameOf(target)));
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
        return; // the end of the program, now and then
    if ((held & Qt::AltModifier) && qobject_cast<QMenu*>(target))
        return; // Alt alone closes the menu, and the key would then be for what has the focus
    tell(u"key %1 modifiers %2 to %3"_s.arg(QKeySequence(key).toString())
             .arg(int(held), 0, 16)
             .arg(nameOf(target)));
    if (key == Qt::Key_Return &&
        (qobject_cast<QLineEdit*>(target) || qobject_cast<forms::MSHFlexGrid*>(target)))
        oracle.ran(u"Enter"_s);
    QTest::keyClick(target, key, held);
}

void Walker::paste() {
    QWidget* on = stage();
    QWidget* target = QApplication::focusWidget();
    if (!target || target->window() != on)
        return;
    const QString text = anyOf(QStringList{u"one"_s, u"two\nlines"_s, u"a\tb\nc\td\n"_s, u"7\t8"_s,
                                           u"x\r\ny\r\n"_s, u"\"q\"\t\"r\ns\""_s, QString(300, u'w')});
    tell(u"pastes \"%1\" into %2"_s.arg(text.simplified().left(20), nameOf(target)));
    oracle.begin(target);
    QApplication::clipboard()->setText(text);
    QTest::keyClick(target, Qt::Key_V, Qt::ControlModifier);
}

} // namespace walk
