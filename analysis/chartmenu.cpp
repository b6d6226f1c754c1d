// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/chartmenu.h"

#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/chart/mschart.h"
#include "platform/forms/msgbox.h"

#include <QAction>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr double sharpness = 3; // from 96 dpi to about 300 dpi in print

void savePicture(chart::MSChart& drawn, const QString& kind, const QSize& size) {
    const QString suffix = u'.' + kind.toLower();
    forms::CommonDialog& dialog = Shell::current()->fileDialog();
    dialog.CancelError = false;
    dialog.Filter = kind + u" picture|*"_s + suffix;
    dialog.ShowSave();
    QString path = dialog.FileName;
    if (path.isEmpty())
        return;
    if (!path.endsWith(suffix, Qt::CaseInsensitive)) {
        path += suffix;
        if (QFile::exists(path) &&
            forms::msgBox(path + u" already exists.\r\nDo you want to replace it?",
                          forms::style::yesNo + forms::style::secondButton) != forms::Answer::Yes)
            return;
    }
    if (!drawn.SavePicture(path, size, sharpness))
        forms::msgBox(u"The picture could not be saved as "_s + path, forms::style::critical);
}

} // namespace

void addPictureMenu(chart::MSChart& drawn, const QSize& size) {
    drawn.setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto add = [&](const QString& text, const auto& step) {
        auto* action = new QAction(text, &drawn);
        QObject::connect(action, &QAction::triggered, &drawn, step);
        drawn.addAction(action);
    };
    add(u"&Copy picture"_s, [&drawn] { drawn.EditCopy(); });
    for (const QString& kind : {u"PNG"_s, u"SVG"_s, u"PDF"_s})
        add(u"Save picture as "_s + kind + u"...", [&drawn, kind, size] { savePicture(drawn, kind, size); });
}

void savePictureForReport(chart::MSChart& drawn, const QString& file, const QSize& size) {
    drawn.EditCopy();
    if (!drawn.SavePicture(homeDirectory() + u'/' + file, size, sharpness))
        throw Failure(Failure::fileAccess, u"Path/File access error"_s);
}
