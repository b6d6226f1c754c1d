// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QHash>
#include <QPointF>
#include <QString>

#include <memory>

class QPainter;
class QTextLayout;

namespace crystal {

/// The unit of a page: 720 dots an inch on every device, so that the pages of the window, the printer and the
/// PDF are the same.
inline constexpr double dotsPerInch = 720;
inline constexpr double dotsPerMillimetre = dotsPerInch / 25.4;
inline constexpr double dotsPerPoint = 10;

/// How a text is set: its font, line spacing and available width, in dots. Line counts are cached, since
/// texts recur.
class TextStyle {
public:
    TextStyle() = default;
    /// points: font size. Widths below one letter count as one letter.
    TextStyle(double points, double width, Qt::Alignment align = Qt::AlignLeft, bool bold = false,
              bool italic = false);

    double lineHeight() const { return distance; }
    /// The number of lines that the text wraps to; 0 for an empty text.
    int lines(const QString& text) const;
    double height(const QString& text) const { return lines(text) * distance; }
    /// The text, elided to one line.
    QString elided(const QString& text) const;
    /// Draws some of the text's lines, the first of them with its upper left corner at `place`.
    void draw(QPainter& painter, QPointF place, const QString& text, int firstLine = 0,
              int count = 100000) const;

private:
    std::unique_ptr<QTextLayout> laidOut(const QString& text) const;

    QFont font;
    double space = 0;
    double distance = 0;
    double widest = 0; ///< of the Latin letters
    Qt::Alignment align;
    mutable QHash<QString, int> measured;
};

} // namespace crystal
