// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/textblock.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace crystal {

TextStyle::TextStyle(double points, double width, Qt::Alignment alignment, bool bold, bool italic)
    : font(QGuiApplication::font()), align(alignment) {
    font.setPixelSize(qRound(points * dotsPerPoint));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting); // hinted widths would differ from device to device
    // A minimal letter spacing prevents ligatures, which a search of the PDF for "file" would not find.
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 64);
    const QFontMetricsF metrics(font);
    distance = metrics.height() * 1.06;
    widest = metrics.horizontalAdvance(u'W');
    space = std::max(width, widest);
}

int TextStyle::lines(const QString& text) const {
    if (text.isEmpty())
        return 0;
    const bool plain = std::all_of(text.begin(), text.end(),
                                   [](QChar letter) { return letter >= u' ' && letter < u'\u0250'; });
    if (plain && static_cast<double>(text.size()) * widest <= space)
        return 1;
    const auto found = measured.constFind(text);
    if (found != measured.constEnd())
        return *found;
    return *measured.insert(text, laidOut(text)->lineCount());
}

QString TextStyle::elided(const QString& text) const {
    return QFontMetricsF(font).elidedText(text, Qt::ElideRight, space);
}

void TextStyle::draw(QPainter& painter, QPointF place, const QString& text, int firstLine, int count) const {
    if (text.isEmpty())
        return;
    const auto layout = laidOut(text);
    const int end = std::min(layout->lineCount(), firstLine + count);
    for (int i = firstLine; i < end; ++i)
        layout->lineAt(i).draw(&painter, place + QPointF(0, (i - firstLine) * distance));
}

/// Every line is laid out at the origin; drawing moves it to its position.
std::unique_ptr<QTextLayout> TextStyle::laidOut(const QString& text) const {
    QString separated = text;
    separated.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\n', QChar::LineSeparator);
    auto layout = std::make_unique<QTextLayout>(separated, font);
    QTextOption option(align);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(space);
        line.setPosition({0, 0});
    }
    layout->endLayout();
    return layout;
}

} // namespace crystal
