// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/pictures.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

static void registerPictures() {
    Q_INIT_RESOURCE(pictures); // resources in a static library are not registered automatically
}

namespace {

/// Draws an SVG file at any size. Qt's own engine is a plugin; finding and loading it would slow down each
/// start.
class SvgIcon : public QIconEngine {
public:
    explicit SvgIcon(QString path) : file(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(rect, pixmap(rect.size() * painter->device()->devicePixelRatio(), mode, state));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QSvgRenderer picture(content());
        picture.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter painter(&drawn);
        picture.render(&painter);
        painter.end();
        QStyleOption option;
        option.palette = QGuiApplication::palette();
        return mode == QIcon::Normal ? drawn
                                     : QApplication::style()->generatedIconPixmap(mode, drawn, &option);
    }
    QIconEngine* clone() const override { return new SvgIcon(file); }

private:
    /// The arrows stand on the ground of the theme, and in a dark one they are light.
    QByteArray content() const {
        QFile source(file);
        QByteArray drawing = source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
        const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
        if (isDark && drawing.contains("class=\"arrow\""))
            drawing.replace("#12507b", "#9cc9e8");
        return drawing;
    }

    QString file;
};

} // namespace

QIcon picture(const QString& name) {
    static const bool registered = [] {
        registerPictures();
        return true;
    }();
    Q_UNUSED(registered)
    return QIcon(new SvgIcon(QStringLiteral(":/pictures/") + name + QStringLiteral(".svg")));
}
