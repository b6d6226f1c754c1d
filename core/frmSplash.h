// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <QTimer>

#include <memory>

namespace Ui {
class frmSplash;
}

/// Stands between the connection and the main window. The timer and a click on its frame lead on to the main
/// window; a key only closes it, so that the program ends.
class frmSplash : public forms::DefaultForm<frmSplash> {
    Q_OBJECT

public:
    ~frmSplash() override;

private:
    friend class DefaultForm<frmSplash>;
    frmSplash();
    void onLoad() override;
    bool onKeyDown(int key) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void leaveSplash();

    static constexpr int interval = 4000; // milliseconds
    std::unique_ptr<Ui::frmSplash> ui;
    QTimer* Timer1;
};
