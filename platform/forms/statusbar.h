// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QStatusBar>

namespace forms {

/// A text field of a status bar. A new text is painted at once, since long steps run without the event loop.
class Panel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;
    QString Text() const { return text(); }
    void setText(const QString& text) {
        QLabel::setText(text);
        repaint();
    }
};

/// A status bar with one panel, numbered 1.
class StatusBar : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr) : QStatusBar(parent), panel(new Panel(this)) {
        panel->setObjectName(QStringLiteral("panel1"));
        panel->setTextFormat(Qt::PlainText);
        addWidget(panel, 1);
    }
    Panel& Panels(int) { return *panel; }

private:
    Panel* panel;
};

} // namespace forms
