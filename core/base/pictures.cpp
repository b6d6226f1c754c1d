// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/pictures.h"

#include <QApplication>
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
        QSvgRenderer picture(file);
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
