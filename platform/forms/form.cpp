// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>

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
        setParent(QApplication::activeWindow(), Qt::Dialog);
        setWindowModality(Qt::ApplicationModal);
    }
    onLoad();
}

QWidget* Form::frame() const {
    return subWindow ? static_cast<QWidget*>(subWindow) : const_cast<Form*>(this);
}

QRect Form::area() const {
    if (subWindow)
        return subWindow->mdiArea()->viewport()->rect();
    return screen()->availableGeometry();
}

void Form::setCaption(const QString& caption) {
    setWindowTitle(caption);
    if (subWindow)
        subWindow->setWindowTitle(caption);
}

void Form::setLeft(int twips) {
    frame()->move(toPixels(twips), frame()->y());
}

void Form::setTop(int twips) {
    frame()->move(frame()->x(), toPixels(twips));
}

void Form::setHeight(int twips) {
    frame()->resize(frame()->width(), toPixels(twips));
    if (isVisible())
        keepInSight();
}

/// Moves and, where it must, shrinks the window so that all of it lies within its area.
void Form::keepInSight() {
    const QRect within = area();
    QWidget* window = frame();
    const QSize fitting = window->size().boundedTo(within.size()).expandedTo(window->minimumSizeHint());
    if (fitting != window->size())
        window->resize(fitting);
    const int x =
        qBound(within.left(), window->x(), qMax(within.left(), within.right() + 1 - window->width()));
    const int y =
        qBound(within.top(), window->y(), qMax(within.top(), within.bottom() + 1 - window->height()));
    window->move(x, y);
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

bool Form::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || unloading || !watched->isWidgetType())
        return false;
    const auto* target = static_cast<QWidget*>(watched);
    return (target == this || isAncestorOf(target)) && onKeyDown(static_cast<QKeyEvent*>(event)->key());
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
