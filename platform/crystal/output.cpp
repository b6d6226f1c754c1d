// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/output.h"

#include "platform/crystal/reportfailure.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace crystal {

void savePdf(const Report& report, const QString& path) {
    QSaveFile file(path);
    bool written = file.open(QIODevice::WriteOnly);
    if (written) {
        QPdfWriter writer(&file);
        QPageLayout page = report.layout().page;
        page.setMode(QPageLayout::FullPageMode);
        writer.setPageLayout(page);
        writer.setResolution(static_cast<int>(dotsPerInch));
        writer.setTitle(report.layout().title);
        QPainter painter(&writer);
        for (int i = 0; i < report.pageCount(); ++i) {
            if (i > 0)
                writer.newPage();
            report.paint(painter, i);
        }
        written = painter.end();
    }
    if (!written || !file.commit())
        throw reportFailure(path, 0, u"The PDF cannot be written: %1."_s.arg(file.errorString()));
}

void print(const Report& report, QPrinter& printer) {
    printer.setFullPage(true);
    const int first = std::clamp(printer.fromPage() - 1, 0, std::max(report.pageCount() - 1, 0));
    const int last =
        std::min(printer.toPage() > 0 ? printer.toPage() : report.pageCount(), report.pageCount());
    const QSizeF paper = printer.paperRect(QPrinter::DevicePixel).size();
    const QSizeF page = report.paperSize();
    const double scale = std::min(paper.width() / page.width(), paper.height() / page.height());
    QPainter painter;
    bool printed = painter.begin(&printer);
    painter.scale(scale, scale);
    for (int i = first; printed && i < last; ++i) {
        if (i > first)
            printed = printer.newPage();
        if (printed)
            report.paint(painter, i);
    }
    if (!printed || !painter.end())
        throw reportFailure(printer.printerName(), 0, u"The printer does not take the report."_s);
}

} // namespace crystal
