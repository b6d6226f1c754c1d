// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace desktop {

/// Shows the program's help: one HTML text in which each topic is an <h2 id="c12">Title</h2>, 12 being its
/// context number. It has the contents on the left, a back button and a search from hit to hit. There is one
/// window, reused by each call.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    /// Shows the topic of that context number, or the beginning for 0. False when the file cannot be read.
    static bool show(const QString& helpFile, int context);

private:
    HelpWindow();
    bool open(const QString& helpFile);
    void goTo(const QString& anchor);
    void showTopic(const QString& anchor);
    void find();

    QString file;
    QListWidget* contents;
    QTextBrowser* text;
    QLineEdit* sought;
};

} // namespace desktop
