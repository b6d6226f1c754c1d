// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/helpwindow.h"

#include "platform/desktop/windowstate.h"
#include "platform/spoken/notice.h"

#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace desktop {

bool HelpWindow::show(const QString& helpFile, int context) {
    static QPointer<HelpWindow> window;
    if (!window)
        window = new HelpWindow;
    if (!window->open(helpFile)) {
        window->deleteLater();
        window.clear();
        return false;
    }
    window->goTo(u"c"_s + QString::number(context));
    window->QWidget::show();
    window->raise();
    window->activateWindow();
    return true;
}

HelpWindow::HelpWindow()
    : contents(new QListWidget(this)), text(new QTextBrowser(this)), sought(new QLineEdit(this)),
      found(new QLabel(this)) {
    setObjectName(u"HelpWindow"_s);
    setWindowTitle(tr("Help"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(860, 600);
    keepOnScreen(*this);
    contents->setAccessibleName(tr("Topics"));
    text->setAccessibleName(tr("Text"));
    sought->setPlaceholderText(tr("Find in help"));
    sought->setClearButtonEnabled(true);
    sought->findChild<QToolButton*>()->setAccessibleName(tr("Clear"));

    auto* back = new QPushButton(tr("&Back"), this);
    auto* label = new QLabel(tr("&Find:"), this);
    label->setBuddy(sought);
    auto* next = new QPushButton(tr("&Next"), this);
    auto* bar = new QHBoxLayout;
    bar->addWidget(back);
    bar->addWidget(found, 1);
    bar->addWidget(label);
    bar->addWidget(sought);
    bar->addWidget(next);
    auto* split = new QSplitter(this);
    split->addWidget(contents);
    split->addWidget(text);
    split->setStretchFactor(1, 1);
    split->setSizes({220, 640});
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(split);

    found->setObjectName(u"found"_s);
    found->setTextFormat(Qt::PlainText);
    connect(back, &QPushButton::clicked, text, &QTextBrowser::backward);
    connect(next, &QPushButton::clicked, this, &HelpWindow::find);
    connect(sought, &QLineEdit::returnPressed, this, &HelpWindow::find);
    connect(contents, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        if (item)
            showTopic(item->data(Qt::UserRole).toString());
    });
    connect(contents, &QListWidget::itemClicked, this, // also for the current topic, to return to its heading
            [this](const QListWidgetItem* item) { showTopic(item->data(Qt::UserRole).toString()); });
    connect(text->verticalScrollBar(), &QScrollBar::valueChanged, this, &HelpWindow::followText);
    auto* close = new QShortcut(Qt::Key_Escape, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
}

bool HelpWindow::open(const QString& helpFile) {
    if (file == helpFile)
        return true;
    QFile source(helpFile);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    file = helpFile;
    const QString html = QString::fromUtf8(source.readAll());
    topicPositions.clear();
    contents->clear();
    static const QRegularExpression topic(u"<h2 id=\"(c[0-9]+)\">(.*?)</h2>"_s);
    for (auto matches = topic.globalMatch(html); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        auto* item =
            new QListWidgetItem(QTextDocumentFragment::fromHtml(match.captured(2)).toPlainText(), contents);
        item->setData(Qt::UserRole, match.captured(1));
    }
    return true;
}

void HelpWindow::showTopic(const QString& anchor) {
    QUrl topic = QUrl::fromLocalFile(file);
    topic.setFragment(anchor);
    const bool isNew = topicPositions.empty();
    text->setSource(topic, QTextDocument::HtmlResource);
    if (isNew)
        findTopics();
}

void HelpWindow::findTopics() {
    topicPositions.assign(std::size_t(contents->count()), 0);
    for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            for (const QString& anchor : part.fragment().charFormat().anchorNames()) {
                for (int row = 0; row < contents->count(); ++row) {
                    if (contents->item(row)->data(Qt::UserRole).toString() == anchor)
                        topicPositions[std::size_t(row)] = part.fragment().position();
                }
            }
        }
    }
}

/// The last topic that begins at or before a position of the text.
int HelpWindow::topicAt(int position) const {
    int topic = 0;
    for (std::size_t row = 0; row < topicPositions.size(); ++row) {
        if (topicPositions[row] <= position && topicPositions[row] >= topicPositions[std::size_t(topic)])
            topic = int(row);
    }
    return topic;
}

/// Marks the topic at the top of the window, without going to its heading.
void HelpWindow::followText() {
    constexpr int belowEdge = 30; // pixels; a heading that just came into sight counts
    const QSignalBlocker quiet(contents);
    contents->setCurrentRow(topicAt(text->cursorForPosition({0, belowEdge}).position()));
}

void HelpWindow::goTo(const QString& anchor) {
    for (int i = 0; i < contents->count(); ++i) {
        if (contents->item(i)->data(Qt::UserRole).toString() == anchor) {
            const bool marked = contents->currentRow() == i;
            contents->setCurrentRow(i);
            if (marked) // no change is emitted then
                showTopic(anchor);
            return;
        }
    }
    contents->setCurrentRow(0);
}

void HelpWindow::find() {
    if (sought->text().isEmpty()) {
        found->clear();
        return;
    }
    bool isFound = text->find(sought->text());
    if (!isFound) {
        text->moveCursor(QTextCursor::Start); // wraps around
        isFound = text->find(sought->text());
    }
    if (isFound) {
        const QSignalBlocker quiet(contents);
        contents->setCurrentRow(topicAt(text->textCursor().selectionStart()));
    }
    found->setText(isFound ? foundText(text->textCursor())
                           : tr("\u201c%1\u201d is not in the help").arg(sought->text()));
    spoken::announce(*found);
}

QString HelpWindow::foundText(const QTextCursor& hit) const {
    int all = 0;
    int number = 0;
    for (QTextCursor other = text->document()->find(sought->text()); !other.isNull();
         other = text->document()->find(sought->text(), other)) {
        ++all;
        if (other.selectionStart() == hit.selectionStart())
            number = all;
    }
    return tr("%1 of %2, in %3")
        .arg(number)
        .arg(all)
        .arg(contents->item(topicAt(hit.selectionStart()))->text());
}

} // namespace desktop
