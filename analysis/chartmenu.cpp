// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/chartmenu.h"

#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/chart/mschart.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/tablemenu.h"

#include <QAction>

using namespace Qt::StringLiterals;

namespace {

constexpr double sharpness = 3; // from 96 dpi to about 300 dpi in print

void savePicture(chart::MSChart& drawn, const QString& kind, const QSize& size) {
    const QString suffix = u'.' + kind.toLower();
    forms::CommonDialog& dialog = Shell::current()->fileDialog();
    dialog.CancelError = false;
    dialog.Filter = kind + u" picture|*"_s + suffix;
    const QString path = dialog.ShowSaveAs({suffix});
    if (path.isEmpty())
        return;
    if (!drawn.SavePicture(path, size, sharpness))
        forms::msgBox(u"The picture could not be saved as "_s + path, forms::style::critical);
}

} // namespace

void addChartMenu(chart::MSChart& drawn, const QSize& size, const std::function<tables::Table()>& points) {
    drawn.setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto add = [&](const QString& text, const auto& step) {
        auto* action = new QAction(text, &drawn);
        QObject::connect(action, &QAction::triggered, &drawn, step);
        drawn.addAction(action);
    };
    add(u"&Copy picture"_s, [&drawn] { drawn.EditCopy(); });
    for (const QString& kind : {u"PNG"_s, u"SVG"_s, u"PDF"_s})
        add(u"Save picture as "_s + kind + u"...", [&drawn, kind, size] { savePicture(drawn, kind, size); });
    drawn.pointTable = points;
    forms::addTableActions(drawn, u"Copy &Table"_s, points, points);
}

void savePictureForReport(chart::MSChart& drawn, const QString& file, const QSize& size) {
    drawn.EditCopy();
    if (!drawn.SavePicture(homeDirectory() + u'/' + file, size, sharpness))
        throw Failure(Failure::fileAccess, u"Path/File access error"_s);
}

void keepRoom(QWidget& button) {
    QSizePolicy policy = button.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button.setSizePolicy(policy);
}
