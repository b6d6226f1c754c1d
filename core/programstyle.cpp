// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/programstyle.h"

#include "core/base/pictures.h"

#include <QStyleOptionButton>

using namespace Qt::StringLiterals;

namespace {

/// The style takes a darker tone of the window's colour for the frame: in a dark theme one that is hardly
/// seen.
QPalette withSeenFrames(QPalette colours) {
    const QColor text = colours.color(QPalette::WindowText);
    const QColor ground = colours.color(QPalette::Window);
    if (ground.lightness() < text.lightness())
        colours.setColor(QPalette::Window,
                         QColor((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                                (text.blue() + ground.blue()) / 2));
    return colours;
}

} // namespace

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                 const QWidget* widget) const {
    return icon == SP_ToolBarHorizontalExtensionButton ? picture(u"more"_s)
                                                       : QProxyStyle::standardIcon(icon, option, widget);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!button || (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    QStyleOptionButton seen(*button);
    seen.palette = withSeenFrames(seen.palette);
    QProxyStyle::drawPrimitive(element, &seen, painter, widget);
}
