// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/report.h"

#include <QAbstractScrollArea>

#include <memory>

namespace crystal {

/// Shows a report's pages below one another; only visible ones are drawn.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PageView(std::shared_ptr<const Report> report, QWidget* parent = nullptr);

    /// The page at the upper part of the view, from 0.
    int page() const;
    void goTo(int page);
    /// 1: the size on paper; within 0.25..4. Until one is set, 1 or less, so that the whole width of a page
    /// fits.
    double zoom() const { return factor; }
    void setZoom(double zoom);
    /// Fits the page's width to the view.
    void fitWidth();

Q_SIGNALS:
    void pageChanged(int page);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    double scale() const; ///< pixels per dot
    QSizeF pageSize() const;
    double step() const; ///< from page to page
    double widthZoom() const;
    void updateBars();

    std::shared_ptr<const Report> report;
    double factor = 1;
    bool chosen = false; ///< the user has set the zoom
};

} // namespace crystal
