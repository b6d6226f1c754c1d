// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QStatusBar>

class QToolButton;

namespace forms {

/// A text field of a status bar. A new text is painted at once, since long steps run without the event loop.
/// One that does not fit is cut in its middle: a long name must not widen the window.
class Panel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;
    QString Text() const { return text(); }
    void setText(const QString& text) {
        QLabel::setText(text);
        repaint();
    }
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A status bar with two panels. Panel 1 says what is being done, panel 2, at most half of it, what was done
/// last.
class StatusBar : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr);
    /// index: 1 or 2.
    Panel& Panels(int index) { return *(index == 2 ? done : work); }
    /// Shows a text in panel 2, until the next one. The folder of a file can be opened by the button beside
    /// it; without a file there is no button.
    void showDone(const QString& text, const QString& file);

Q_SIGNALS:
    void folderAsked(const QString& folder);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Panel* makePanel(const QString& name);

    Panel* work;
    Panel* done;
    QToolButton* openFolder;
};

} // namespace forms
