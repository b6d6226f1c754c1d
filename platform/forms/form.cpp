// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/form.h"

#include "platform/forms/dtpicker.h"
#include "platform/forms/readernames.h"
#include "platform/forms/tablemenu.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

namespace forms {
namespace {

QPointer<QMdiArea> host;

Qt::CursorShape cursorOf(int pointer) {
    return pointer == Hourglass ? Qt::WaitCursor : Qt::ArrowCursor;
}

} // namespace

void Form::setHost(QMdiArea* area) {
    host = area;
}

QWidget* Form::owner() {
    if (QWidget* active = QApplication::activeWindow())
        return active;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return host && host->isVisible() ? host->window() : nullptr;
}

Form::Form(Kind windowKind) : kind(windowKind) {
    qApp->installEventFilter(this);
}

Form::~Form() {
    setMousePointer(DefaultPointer);
}

void Form::loadInto() {
    if (kind == Kind::SubWindow && host) {
        subWindow = host->addSubWindow(this);
        subWindow->resize(subWindow->sizeHint().expandedTo(size()).boundedTo(host->viewport()->size()));
        connect(subWindow, &QMdiSubWindow::windowStateChanged, this,
                [this](Qt::WindowStates before, Qt::WindowStates now) {
                    if (!(before & Qt::WindowActive) && (now & Qt::WindowActive) && !unloading)
                        onActivate();
                });
    } else if (kind == Kind::Dialog) {
        setParent(owner(), Qt::Dialog);
        setWindowModality(Qt::ApplicationModal);
    }
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setAutoDefault(true); // Enter presses the button that has the focus
    addTableMenus(*this);
    nameForReader(*this);
    onLoad();
}

QWidget* Form::frame() const {
    return subWindow ? static_cast<QWidget*>(subWindow) : const_cast<Form*>(this);
}

QRect Form::area() const {
    if (subWindow)
        return subWindow->mdiArea()->viewport()->rect();
    return parentWidget() ? parentWidget()->geometry() : screen()->availableGeometry();
}

void Form::setCaption(const QString& caption) {
    setWindowTitle(caption);
    if (subWindow)
        subWindow->setWindowTitle(caption);
}

void Form::setLeft(int twips) {
    if (!frame()->isMaximized())
        frame()->move(area().x() + toPixels(twips), frame()->y());
}

void Form::setTop(int twips) {
    if (!frame()->isMaximized())
        frame()->move(frame()->x(), area().y() + toPixels(twips));
}

void Form::setHeight(int twips) {
    if (frame()->isMaximized())
        return;
    frame()->resize(frame()->width(), toPixels(twips));
    if (isVisible())
        keepInSight();
}

/// Moves and, if necessary, shrinks the window to fit into the main window, a dialog with its title bar into
/// the screen. Contents that are larger scroll from then on.
void Form::keepInSight() {
    QRect within = area();
    if (!subWindow) {
        within = screen()->availableGeometry();
        within.setHeight(within.height() - style()->pixelMetric(QStyle::PM_TitleBarHeight));
    }
    QWidget* window = frame();
    const QSize least = window->minimumSizeHint();
    if (layout() && (least.width() > within.width() || least.height() > within.height()))
        scrollContents();
    const QSize fitting = window->size().boundedTo(within.size()).expandedTo(window->minimumSizeHint());
    if (fitting != window->size())
        window->resize(fitting);
    const int x =
        qBound(within.left(), window->x(), qMax(within.left(), within.right() + 1 - window->width()));
    const int y =
        qBound(within.top(), window->y(), qMax(within.top(), within.bottom() + 1 - window->height()));
    window->move(x, y);
}

void Form::scrollContents() {
    if (isScrolled)
        return;
    isScrolled = true;
    QWidget* focused = focusWidget();
    auto* contents = new QWidget;
    contents->setLayout(layout()); // with its controls
    auto* scrolled = new QScrollArea(this);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setFocusPolicy(Qt::NoFocus);
    scrolled->setWidgetResizable(true);
    scrolled->setWidget(contents);
    auto* around = new QVBoxLayout(this);
    around->setContentsMargins({});
    around->addWidget(scrolled);
    scrolled->show();
    if (focused)
        focused->setFocus();
}

void Form::Show() {
    QWidget* window = frame();
    if (window->isMinimized())
        window->showNormal();
    show();
    window->show();
    if (subWindow) {
        subWindow->raise();
        subWindow->mdiArea()->setActiveSubWindow(subWindow);
    } else {
        raise();
        activateWindow();
    }
}

void Form::ShowModal() {
    QEventLoop untilUnloaded;
    connect(this, &QObject::destroyed, &untilUnloaded, &QEventLoop::quit);
    Show();
    untilUnloaded.exec();
}

bool Form::Unload() {
    if (unloading)
        return true;
    bool cancel = false;
    onQueryUnload(cancel);
    if (cancel)
        return false;
    unloading = true;
    forgetInstance();
    setMousePointer(DefaultPointer);
    QWidget* window = frame();
    window->hide();
    if (subWindow)
        subWindow->close(); // hands the activation on to the next form
    window->deleteLater();
    return true;
}

void Form::setMousePointer(int shape) {
    if (shape == pointer)
        return;
    if (shape == DefaultPointer)
        QGuiApplication::restoreOverrideCursor();
    else if (pointer == DefaultPointer)
        QGuiApplication::setOverrideCursor(cursorOf(shape));
    else
        QGuiApplication::changeOverrideCursor(cursorOf(shape));
    pointer = shape;
}

bool Form::onKeyDown(int key) {
    if (key != Qt::Key_Escape)
        return false;
    Unload();
    return true;
}

bool Form::pressOnEnter(int key, QPushButton& otherwise) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    (focused ? focused : &otherwise)->click();
    return true;
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || unloading || !watched->isWidgetType())
        return false;
    auto* target = static_cast<QWidget*>(watched);
    const bool inside = target == this || isAncestorOf(target);
    if (!inside && !isInFrontOf(target))
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (event->type() == QEvent::ShortcutOverride)
        return claimShortcut(key);
    if (QAbstractButton* button = buttonOf(key, target)) {
        if (auto* typing = qobject_cast<DTPicker*>(target)) // a press does not move the focus
            typing->readText();
        button->click();
        return true;
    }
    return inside && onKeyDown(key->key());
}

/// Whether the form is in front while a key goes to the main window itself. Its access keys are pressed at
/// once then, too: Qt would press the button a tenth of a second later, when another row may be at hand.
bool Form::isInFrontOf(const QWidget* target) const {
    if (!subWindow || target->window() != window() || subWindow->mdiArea()->activeSubWindow() != subWindow)
        return false;
    while (target && target != subWindow && !qobject_cast<const QMdiSubWindow*>(target))
        target = target->parentWidget();
    return !target || target == subWindow;
}

/// Which of a control, a button of this form and the main window's menus a key belongs to: an access key of
/// the form goes before the menu bar's, a shortcut of the main window before the editing keys of a text box.
bool Form::claimShortcut(QKeyEvent* event) {
    if (buttonOf(event, this)) {
        event->accept();
        return true;
    }
    for (const QAction* action : window()->findChildren<QAction*>(Qt::FindDirectChildrenOnly)) {
        if (action->isEnabled() && !action->shortcut().isEmpty() &&
            action->shortcut() == QKeySequence(event->keyCombination())) {
            event->ignore();
            return true;
        }
    }
    return false;
}

/// The button that a key presses: by its access key, or Enter on a tool button that has the focus.
QAbstractButton* Form::buttonOf(const QKeyEvent* event, QWidget* target) const {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers() == Qt::NoModifier)
        return qobject_cast<QToolButton*>(target);
    if (event->modifiers() != Qt::AltModifier)
        return nullptr;
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled() &&
            QKeySequence::mnemonic(button->text()) == QKeySequence(event->keyCombination()))
            return button;
    }
    return nullptr;
}

void Form::closeEvent(QCloseEvent* event) {
    if (!Unload())
        event->ignore();
}

bool Form::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && isWindow() && !unloading)
        onActivate();
    return QWidget::event(event);
}

void Form::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    keepInSight();
}

} // namespace forms
