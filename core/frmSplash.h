// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <QTimer>

#include <functional>
#include <memory>

namespace Ui {
class frmSplash;
}

/// The start-up window. Its timer or a click on its frame opens the main window. A key press only closes it,
/// which ends the program.
class frmSplash : public forms::DefaultForm<frmSplash> {
    Q_OBJECT

public:
    ~frmSplash() override;

    /// Shows the splash with a word on what is being done, while it is done.
    void showWhile(const QString& word, const std::function<void()>& work);

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
