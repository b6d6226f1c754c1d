// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/statusbar.h"

#include "platform/spoken/notice.h"

#include <QFileInfo>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace forms {

void Panel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), int(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, width()), foregroundRole());
}

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent), work(makePanel(u"panel1"_s)), done(makePanel(u"panel2"_s)),
      openFolder(new QToolButton(this)) {
    openFolder->setObjectName(u"openFolder"_s);
    openFolder->setText(u"Open Folder"_s);
    openFolder->setAutoRaise(true);
    openFolder->setFocusPolicy(Qt::TabFocus);
    addWidget(work, 1);
    addPermanentWidget(done);
    addPermanentWidget(openFolder);
    openFolder->hide();
    connect(openFolder, &QToolButton::clicked, this, [this] { Q_EMIT folderAsked(openFolder->toolTip()); });
}

Panel* StatusBar::makePanel(const QString& name) {
    auto* panel = new Panel(this);
    panel->setObjectName(name);
    panel->setTextFormat(Qt::PlainText);
    return panel;
}

void StatusBar::showDone(const QString& text, const QString& file) {
    done->setText(text);
    openFolder->setToolTip(QFileInfo(file).absolutePath());
    openFolder->setVisible(!file.isEmpty());
    spoken::announce(*done);
}

void StatusBar::resizeEvent(QResizeEvent* event) {
    done->setMaximumWidth(width() / 2);
    QStatusBar::resizeEvent(event);
}

} // namespace forms
