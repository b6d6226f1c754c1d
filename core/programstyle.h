// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

/// The desktop's style, with our own picture for the menu overflow button, since the default one would load
/// Qt's image plugins at each start, and with frames of check boxes and option buttons that are seen in a
/// dark theme.
class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};
