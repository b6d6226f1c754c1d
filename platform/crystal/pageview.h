// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/report.h"

#include <QAbstractScrollArea>

#include <memory>

namespace crystal {

/// Shows a report's pages below one another; only those in sight are drawn.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PageView(std::shared_ptr<const Report> report, QWidget* parent = nullptr);

    /// The page at the upper part of the view, from 0.
    int page() const;
    void goTo(int page);
    /// 1: as large as on paper; within 0.25..4. Until one is set, 1 or what shows the page's whole width.
    double zoom() const { return factor; }
    void setZoom(double zoom);
    /// The page's width fills the view's.
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
    double scale() const; ///< pixels a dot
    QSizeF pageSize() const;
    double step() const; ///< from page to page
    double widthZoom() const;
    void updateBars();

    std::shared_ptr<const Report> report;
    double factor = 1;
    bool chosen = false; ///< the zoom, by the user
};

} // namespace crystal
