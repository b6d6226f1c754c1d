// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;
class QTextCursor;

namespace desktop {

/// Shows the program's help: one HTML text in which each topic is an <h2 id="c12">Title</h2>, 12 being its
/// context number. It has the contents on the left, which follow the text, a back button and a search from
/// hit to hit, which says how many there are and in which topic one stands. There is one window, reused by
/// each call.
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
    void findTopics();
    int topicAt(int position) const;
    void followText();
    QString foundText(const QTextCursor& hit) const;

    QString file;
    QListWidget* contents;
    QTextBrowser* text;
    QLineEdit* sought;
    QLabel* found;
    std::vector<int> topicPositions; ///< where each topic of the contents begins in the text
};

} // namespace desktop
