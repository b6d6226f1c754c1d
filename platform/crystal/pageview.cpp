// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/pageview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace crystal {
namespace {

constexpr int gap = 16; // pixels around a page

} // namespace

PageView::PageView(std::shared_ptr<const Report> shown, QWidget* parent)
    : QAbstractScrollArea(parent), report(std::move(shown)) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Pages"));
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    updateBars();
}

double PageView::scale() const {
    return factor * logicalDpiX() / dotsPerInch;
}

QSizeF PageView::pageSize() const {
    return report->paperSize() * scale();
}

double PageView::step() const {
    return pageSize().height() + gap;
}

int PageView::page() const {
    const QScrollBar& bar = *verticalScrollBar();
    if (bar.value() == bar.minimum())
        return 0;
    if (bar.value() == bar.maximum())
        return report->pageCount() - 1;
    const double place = bar.value() + viewport()->height() / 3.0;
    return std::clamp(static_cast<int>(place / step()), 0, report->pageCount() - 1);
}

void PageView::goTo(int page) {
    verticalScrollBar()->setValue(static_cast<int>(page * step()));
}

void PageView::setZoom(double zoom) {
    const double place = verticalScrollBar()->value() / step();
    chosen = true;
    factor = std::clamp(zoom, 0.25, 4.0);
    updateBars();
    verticalScrollBar()->setValue(static_cast<int>(place * step()));
    viewport()->update();
}

double PageView::widthZoom() const {
    return (viewport()->width() - 2 * gap) * dotsPerInch / logicalDpiX() / report->paperSize().width();
}

void PageView::fitWidth() {
    setZoom(widthZoom());
}

void PageView::updateBars() {
    const double height = report->pageCount() * step() + gap;
    const double width = pageSize().width() + 2 * gap;
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(height) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(width) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(40);
}

void PageView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QSizeF size = pageSize();
    const double left =
        std::max<double>(gap, (viewport()->width() - size.width()) / 2) - horizontalScrollBar()->value();
    const int offset = verticalScrollBar()->value();
    for (int i = static_cast<int>(offset / step()); i < report->pageCount(); ++i) {
        const QRectF paper(QPointF(left, i * step() + gap - offset), size);
        if (paper.top() > viewport()->height())
            break;
        painter.fillRect(paper, Qt::white); // paper is white in a dark theme as well
        painter.save();
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        painter.scale(scale(), scale());
        report->paint(painter, i);
        painter.restore();
    }
}

void PageView::resizeEvent(QResizeEvent*) {
    if (!chosen)
        factor = std::clamp(widthZoom(), 0.25, 1.0);
    updateBars();
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    Q_EMIT pageChanged(page());
}

void PageView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_PageDown:
        goTo(std::min(page() + 1, report->pageCount() - 1));
        break;
    case Qt::Key_PageUp:
        goTo(std::max(page() - 1, 0));
        break;
    case Qt::Key_Home:
        goTo(0);
        break;
    case Qt::Key_End:
        goTo(report->pageCount() - 1);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    setZoom(factor * (event->angleDelta().y() > 0 ? 1.1 : 1 / 1.1));
    event->accept();
}

} // namespace crystal
