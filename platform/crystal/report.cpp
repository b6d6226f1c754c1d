// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/report.h"

#include "platform/ado/value.h"
#include "platform/crystal/reportfailure.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace crystal {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("crystal", text);
}

} // namespace

Report::Report(Layout layout, Records records, QString organisation, const QDate& printed)
    : design(std::move(layout)), content(std::move(records)), organisationName(std::move(organisation)),
      printedOn(printed), look(design) {
    for (const Picture& picture : design.pictures) {
        pictures.emplace_back(picture.file);
        if (pictures.back().isNull())
            throw reportFailure(design.file, picture.line,
                                u"The picture '%1' is not there or cannot be read."_s.arg(picture.file));
    }
    pages = paginate(design, look, content.blocks, walkHead(nullptr));
}

void Report::paint(QPainter& painter, int number) const {
    const Page& page = pages.at(static_cast<std::size_t>(number));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (number == 0)
        walkHead(&painter);
    else
        paintRunningHead(painter);
    paintFoot(painter, number);
    if (content.blocks.empty()) {
        painter.setPen(ink);
        look.value.draw(painter, {look.body.left(), page.top + look.padding}, design.empty);
        return;
    }
    if (page.items.empty())
        return;
    paintColumnHead(painter, page.top);
    const Block* above = nullptr;
    for (const Item& item : page.items) {
        const Block& block = content.blocks[item.block];
        if (above && above->kind == Block::Kind::Row && block.kind != Block::Kind::Heading)
            paintRule(painter, block, item.y, above);
        if (block.kind == Block::Kind::Heading)
            paintHeading(painter, block, item);
        else if (block.kind == Block::Kind::Mean)
            paintMean(painter, block, item);
        else
            paintRow(painter, block, item, above);
        above = &block;
    }
    line(painter, page.items.back().y + page.items.back().height, hairline, look.body.left());
}

/// Draws the first page's head, or without a painter measures it. Returns the position below it.
double Report::walkHead(QPainter* painter) const {
    const QRectF& body = look.body;
    double y = body.top();
    if (!organisationName.isEmpty()) {
        if (painter) {
            painter->setPen(grey);
            look.organisation.draw(*painter, body.topLeft(), organisationName);
        }
        y += look.organisation.height(organisationName) + look.padding;
    }
    if (painter) {
        painter->setPen(accent);
        look.title.draw(*painter, {body.left(), y}, design.title);
    }
    y += look.title.height(design.title) + 2 * look.padding;
    y = walkValues(painter, y) + 2 * look.padding;
    if (painter)
        line(*painter, y, accent, look.body.left());
    return walkPictures(painter, y + 4 * look.padding);
}

double Report::walkValues(QPainter* painter, double y) const {
    for (std::size_t i = 0; i < design.values.size(); ++i) {
        const QString& text = content.values[static_cast<qsizetype>(i)];
        const QString& label = design.values[i].field.words;
        if (text.isEmpty())
            continue;
        if (painter) {
            painter->setPen(grey);
            look.label.draw(*painter, {look.body.left(), y + dotsPerPoint}, label);
            painter->setPen(ink);
            look.value.draw(*painter, {look.body.left() + look.labelWidth, y}, text);
        }
        y += std::max(look.value.height(text), look.label.height(label)) + look.padding / 2;
    }
    return y;
}

double Report::walkPictures(QPainter* painter, double y) const {
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const QSizeF space(look.body.width(),
                           std::min(design.pictures[i].height * dotsPerMillimetre, look.rowsEnd - y));
        const QSizeF size = QSizeF(pictures[i].size()).scaled(space, Qt::KeepAspectRatio);
        if (painter)
            painter->drawImage(QRectF({look.body.left() + (look.body.width() - size.width()) / 2, y}, size),
                               pictures[i]);
        y += size.height() + 4 * look.padding;
    }
    return y;
}

void Report::paintRunningHead(QPainter& painter) const {
    const QRectF& body = look.body;
    QStringList right;
    for (const QString& value : content.values) {
        if (!value.isEmpty())
            right << value;
    }
    painter.setPen(grey);
    look.small.draw(painter, body.topLeft(), look.small.elided(design.title));
    drawSmallRight(painter, body.top(), look.smallRight.elided(right.join(u" \u00b7 "_s)));
}

void Report::drawSmallRight(QPainter& painter, double y, const QString& text) const {
    look.smallRight.draw(painter, {look.body.left() + look.body.width() * 0.35, y}, text);
}

void Report::paintFoot(QPainter& painter, int page) const {
    const QRectF& body = look.body;
    const double y = body.bottom() - look.small.lineHeight();
    line(painter, y - look.padding, hairline, body.left());
    painter.setPen(grey);
    look.small.draw(painter, {body.left(), y}, tr("Printed %1").arg(printedOn.toString(ado::dateTextFormat)));
    drawSmallRight(painter, y, tr("Page %1 of %2").arg(page + 1).arg(pageCount()));
}

void Report::paintColumnHead(QPainter& painter, double top) const {
    painter.fillRect(QRectF(look.body.left(), top, look.body.width(), look.columnHeadHeight - look.padding),
                     band);
    painter.setPen(accent);
    for (std::size_t i = 0; i < design.columns.size(); ++i)
        look.columnHeads[i].draw(painter, {look.columnLeft[i], top + 1.5 * look.padding},
                                 design.columns[i].field.words);
}

void Report::paintHeading(QPainter& painter, const Block& block, const Item& item) const {
    const TextStyle& style = look.heading(block.level);
    const double y = item.y + look.headingSpace;
    painter.setPen(block.level == 0 ? accent : ink);
    style.draw(painter, {look.columnLeft.front(), y}, headingText(block, item.continued));
    painter.setPen(grey);
    look.count.draw(painter,
                    {look.body.right() - look.body.width() * 0.25 - 2 * look.padding,
                     y + style.lineHeight() - look.count.lineHeight()},
                    block.texts.last());
    line(painter, item.y + item.height, block.level == 0 ? accent : hairline, look.body.left());
}

void Report::paintRow(QPainter& painter, const Block& block, const Item& item, const Block* above) const {
    painter.setPen(ink);
    for (std::size_t i = 0; i < design.columns.size(); ++i) {
        if (!isLeftOut(design, i, block, above))
            look.cells[i].draw(painter, {look.columnLeft[i], item.y + look.padding},
                               block.texts[static_cast<qsizetype>(i)], item.firstLine, item.lines);
    }
}

void Report::paintMean(QPainter& painter, const Block& block, const Item& item) const {
    painter.setPen(ink);
    bool named = false;
    for (std::size_t i = 0; i < design.columns.size(); ++i) {
        QString text = block.texts[static_cast<qsizetype>(i)];
        if (text.isEmpty() && !named) {
            text = tr("Mean");
            named = true;
        }
        look.means[i].draw(painter, {look.columnLeft[i], item.y + look.padding}, text, 0, 1);
    }
}

/// Between two rows, beginning at the first cell that has changed.
void Report::paintRule(QPainter& painter, const Block& block, double y, const Block* above) const {
    std::size_t column = 0;
    while (block.kind == Block::Kind::Row && column + 1 < design.columns.size() &&
           isLeftOut(design, column, block, above))
        ++column;
    const bool mean = block.kind == Block::Kind::Mean;
    line(painter, y, mean ? grey : hairline, column == 0 ? look.body.left() : look.columnLeft[column]);
}

void Report::line(QPainter& painter, double y, const QColor& color, double left) const {
    constexpr double thickness = 0.5 * dotsPerPoint;
    painter.setPen(QPen(color, thickness));
    painter.drawLine(QPointF(left, y), QPointF(look.body.right(), y));
}

} // namespace crystal
