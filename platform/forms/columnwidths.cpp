// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/columnwidths.h"

#include "platform/forms/form.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace forms {

std::function<void(const QString&, const QString&)> rememberHook = [](const QString&, const QString&) {};
std::function<QString(const QString&)> recallHook = [](const QString&) { return QString(); };

/// The names of form and view.
QString ColumnWidths::key() const {
    const QWidget* form = &view;
    while (form->parentWidget() && !qobject_cast<const Form*>(form))
        form = form->parentWidget();
    return form->objectName() + u'/' + view.objectName() + u"/widths";
}

/// From "1:0.25 2:0.3"; what is no share is left out.
void ColumnWidths::recall() {
    shares.emplace();
    for (const QString& part : recallHook(key()).split(u' ', Qt::SkipEmptyParts)) {
        bool isColumn = false;
        bool isShare = false;
        const int column = part.section(u':', 0, 0).toInt(&isColumn);
        const double share = part.section(u':', 1).toDouble(&isShare);
        if (isColumn && isShare && share > 0 && share <= 1)
            shares->insert(column, share);
    }
}

double ColumnWidths::share(int column, double given) {
    if (!shares)
        recall();
    return given > 0 ? shares->value(column, given) : given;
}

void ColumnWidths::remember(int column, double share) {
    if (!shares)
        recall();
    shares->insert(column, share);
    QStringList parts;
    for (auto it = shares->cbegin(); it != shares->cend(); ++it)
        parts << QString::number(it.key()) + u':' + QString::number(it.value(), 'f', 4);
    rememberHook(key(), parts.join(u' '));
}

} // namespace forms
