// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/plotfile.h"

#include "platform/chart/qcp.h"

#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

using namespace Qt::StringLiterals;

namespace chart {
namespace {

constexpr int pixelsPerInch = 96;
constexpr double pointsPerInch = 72;

bool drawOn(QPaintDevice& device, QCustomPlot& plot) {
    QCPPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    plot.toPainter(&painter, plot.viewport().width(), plot.viewport().height());
    return painter.end();
}

bool drawSvg(QIODevice& file, QCustomPlot& plot) {
    QSvgGenerator device;
    device.setOutputDevice(&file);
    device.setResolution(pixelsPerInch);
    device.setSize(plot.viewport().size());
    device.setViewBox(plot.viewport());
    return drawOn(device, plot);
}

bool drawPdf(QIODevice& file, QCustomPlot& plot) {
    QPdfWriter device(&file);
    device.setResolution(pixelsPerInch);
    device.setPageSize(
        QPageSize(QSizeF(plot.viewport().size()) * (pointsPerInch / pixelsPerInch), QPageSize::Point));
    device.setPageMargins({});
    return drawOn(device, plot);
}

bool drawPicture(QIODevice& file, QCustomPlot& plot, const QString& format, double sharpness) {
    const QPixmap pixmap = plot.toPixmap(plot.viewport().width(), plot.viewport().height(), sharpness);
    return pixmap.toImage().convertToFormat(QImage::Format_RGB888).save(&file, format.toLatin1().constData());
}

} // namespace

bool savePlot(QCustomPlot& plot, const QString& path, double sharpness) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QString format = QFileInfo(path).suffix().toLower();
    const bool drawn = format == u"svg"   ? drawSvg(file, plot)
                       : format == u"pdf" ? drawPdf(file, plot)
                                          : drawPicture(file, plot, format, sharpness);
    return drawn && file.commit();
}

} // namespace chart
