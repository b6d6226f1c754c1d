// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/progress.h"

#include "platform/forms/form.h"

#include <QCoreApplication>
#include <QLabel>

#include <limits>

using namespace Qt::StringLiterals;

Progress::Progress(forms::Form& form, int total)
    : dialog(QString(), u"Cancel"_s, 0, total, form.window()), label(new QLabel(&dialog)) {
    constexpr int width = 420; // pixels; it does not change with the names
    label->setTextFormat(Qt::PlainText);
    dialog.setLabel(label);
    dialog.setWindowTitle(form.Caption());
    dialog.setWindowModality(Qt::ApplicationModal);
    // Its own timer would bring it up in front of a message of a failed step.
    dialog.setMinimumDuration(std::numeric_limits<int>::max());
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    dialog.setMinimumWidth(width);
    clock.start();
}

bool Progress::step(const QString& name) {
    constexpr int margins = 40; // pixels beside the name
    label->setText(label->fontMetrics().elidedText(name, Qt::ElideMiddle, dialog.minimumWidth() - margins));
    dialog.setValue(done++);
    return goOn();
}

bool Progress::goOn() {
    if (!dialog.isVisible() && !dialog.wasCanceled() && clock.elapsed() >= delay)
        dialog.show();
    if (dialog.isVisible())
        QCoreApplication::processEvents();
    return !dialog.wasCanceled();
}
