// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <functional>
#include <memory>

class QPlainTextEdit;

namespace Ui {
class frmMessage;
}

/// The message that goes with every survey file mailed to the customer chosen in frmLogDetails. A blank text
/// is not saved.
class frmMessage : public forms::DefaultForm<frmMessage> {
    Q_OBJECT

public:
    ~frmMessage() override;
    QPlainTextEdit* txtMessage() const;

    // The register sets these while it is open.
    inline static std::function<QString()> read; ///< the message of the chosen customer
    /// Stores the text of txtMessage for that customer; false to go on editing.
    inline static std::function<bool()> write;

private:
    friend class DefaultForm<frmMessage>;
    frmMessage();
    void onLoad() override;
    void cmdSave_Click();

    std::unique_ptr<Ui::frmMessage> ui;
};
