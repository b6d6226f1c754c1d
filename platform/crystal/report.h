// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/pages.h"

#include <QDate>
#include <QImage>

class QPainter;

namespace crystal {

/// A report divided into pages, ready to be drawn. Rows are measured once; pages are drawn on demand,
/// identically on every device.
class Report {
public:
    /// organisation: the name that the head shows. Throws Failure for a picture that cannot be read.
    Report(Layout layout, Records records, QString organisation, const QDate& printed = QDate::currentDate());

    const Layout& layout() const { return design; }
    const std::vector<Block>& blocks() const { return content.blocks; }
    int pageCount() const { return static_cast<int>(pages.size()); }
    QSizeF paperSize() const { return look.paper.size(); } ///< in dots
    /// Draws page 0..pageCount()-1, the paper's corner at the origin and a dot a unit of the painter.
    void paint(QPainter& painter, int page) const;

private:
    double walkHead(QPainter* painter) const;
    double walkValues(QPainter* painter, double y) const;
    double walkPictures(QPainter* painter, double y) const;
    void paintRunningHead(QPainter& painter) const;
    void paintFoot(QPainter& painter, int page) const;
    void paintColumnHead(QPainter& painter, double top) const;
    void paintHeading(QPainter& painter, const Block& block, const Item& item) const;
    void paintRow(QPainter& painter, const Block& block, const Item& item, const Block* above) const;
    void paintMean(QPainter& painter, const Block& block, const Item& item) const;
    void paintRule(QPainter& painter, const Block& block, double y, const Block* above) const;
    void drawSmallRight(QPainter& painter, double y, const QString& text) const;
    void line(QPainter& painter, double y, const QColor& color, double left) const;

    Layout design;
    Records content;
    QString organisationName;
    QDate printedOn;
    Look look;
    std::vector<QImage> pictures;
    std::vector<Page> pages;
};

} // namespace crystal
