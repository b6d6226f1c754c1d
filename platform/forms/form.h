// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/screen.h"

#include <QPointer>
#include <QWidget>

class QAbstractButton;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;

namespace forms {

/// A window of the program. It is loaded at its first use, shown, unloaded; its events are the virtual
/// functions. Positions and sizes are twips, of the whole window with its frame, within the area that the
/// window lives in: the client area of the main window for a sub-window, the window that it was opened from
/// for a dialog, the screen for a dialog without one. It is kept in sight wherever it is put.
class Form : public QWidget {
    Q_OBJECT

public:
    enum class Kind { SubWindow, Dialog };

    /// The area of the sub-windows; without one they are top-level windows.
    static void setHost(QMdiArea* area);
    /// The window that a dialog or a message opened now belongs to: the active one; while another program is
    /// in front, the one that waits for an answer, else the main window. Null before there is any.
    static QWidget* owner();

    ~Form() override;

    /// Shows the form modelessly and brings it to the front.
    void Show();
    /// Shows the form modally and returns when it is unloaded.
    void ShowModal();
    /// Asks onQueryUnload, then closes the window and deletes the form. False when the query refuses.
    bool Unload();

    QString Caption() const { return windowTitle(); }
    void setCaption(const QString& caption);

    int Left() const { return toTwips(frame()->x() - area().x()); }
    int Top() const { return toTwips(frame()->y() - area().y()); }
    int Width() const { return toTwips(frame()->width()); }
    int Height() const { return toTwips(frame()->height()); }
    void setLeft(int twips);
    void setTop(int twips);
    void setHeight(int twips);
    /// Size of the area that the form lives in.
    int ScreenWidth() const { return toTwips(area().width()); }
    int ScreenHeight() const { return toTwips(area().height()); }

    int MousePointer() const { return pointer; }
    /// One of MousePointer.
    void setMousePointer(int shape);

protected:
    explicit Form(Kind windowKind);

    virtual void onLoad() {}
    /// The form became the active window.
    virtual void onActivate() {}
    virtual void onQueryUnload(bool& cancel) { Q_UNUSED(cancel) }
    /// A key pressed anywhere in the form, before its controls see it. True keeps the key from them. Esc
    /// unloads the form.
    virtual bool onKeyDown(int key);
    /// For onKeyDown: Enter presses the button that has the focus, else that one. False for any other key.
    bool pressOnEnter(int key, QPushButton& otherwise);

    /// Puts the form into its window and runs onLoad; called once, by the default instance.
    void loadInto();
    virtual void forgetInstance() = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool claimShortcut(QKeyEvent* event);
    bool isInFrontOf(const QWidget* target) const;
    QAbstractButton* buttonOf(const QKeyEvent* event, QWidget* target) const;
    QWidget* frame() const;
    QRect area() const;
    void keepInSight();
    void scrollContents();

    Kind kind;
    QPointer<QMdiSubWindow> subWindow;
    int pointer = DefaultPointer;
    bool unloading = false;
    bool isScrolled = false;
};

/// A form with one default instance, accessible through the form's class. Base is Form, or a common base of
/// several forms.
template <class Self, class Base = Form> class DefaultForm : public Base {
public:
    /// The default instance: created and loaded at its first use, deleted after it is unloaded.
    static Self& instance() {
        if (!current) {
            current = new Self;
            static_cast<DefaultForm*>(current)->loadInto();
        }
        return *current;
    }
    /// The default instance when it is loaded, else null.
    static Self* loaded() { return current; }
    static void unload() {
        if (current)
            current->Unload();
    }

protected:
    using Base::Base;
    ~DefaultForm() override { forgetThis(); }
    void forgetInstance() override { forgetThis(); }

private:
    void forgetThis() {
        if (static_cast<Form*>(current) == this)
            current = nullptr;
    }
    inline static Self* current = nullptr;
};

} // namespace forms
