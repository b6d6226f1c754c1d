// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/helpwindow.h"

#include <QFile>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocumentFragment>
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
    : contents(new QListWidget(this)), text(new QTextBrowser(this)), sought(new QLineEdit(this)) {
    setObjectName(u"HelpWindow"_s);
    setWindowTitle(tr("Help"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(860, 600);
    contents->setAccessibleName(tr("Topics"));
    sought->setPlaceholderText(tr("Find in help"));
    sought->setClearButtonEnabled(true);

    auto* back = new QPushButton(tr("&Back"), this);
    auto* label = new QLabel(tr("&Find:"), this);
    label->setBuddy(sought);
    auto* next = new QPushButton(tr("&Next"), this);
    auto* bar = new QHBoxLayout;
    bar->addWidget(back);
    bar->addStretch();
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

    connect(back, &QPushButton::clicked, text, &QTextBrowser::backward);
    connect(next, &QPushButton::clicked, this, &HelpWindow::find);
    connect(sought, &QLineEdit::returnPressed, this, &HelpWindow::find);
    connect(contents, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        if (item)
            showTopic(item->data(Qt::UserRole).toString());
    });
    connect(contents, &QListWidget::itemClicked, this, // also for the current topic, to return to its heading
            [this](const QListWidgetItem* item) { showTopic(item->data(Qt::UserRole).toString()); });
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
    text->setSource(topic, QTextDocument::HtmlResource);
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
    if (sought->text().isEmpty() || text->find(sought->text()))
        return;
    text->moveCursor(QTextCursor::Start); // wraps around
    text->find(sought->text());
}

} // namespace desktop
