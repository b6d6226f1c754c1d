// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmMessage.h"

#include "core/base/gblGlobal.h"
#include "ui_frmMessage.h"

frmMessage::frmMessage() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmMessage>()) {
    ui->setupUi(this);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmMessage::cmdSave_Click);
}

frmMessage::~frmMessage() = default;

QPlainTextEdit* frmMessage::txtMessage() const {
    return ui->txtMessage;
}

void frmMessage::onLoad() {
    toCenterForm(*this);
    const QString message = read ? read() : QString();
    if (!message.trimmed().isEmpty())
        ui->txtMessage->setPlainText(message);
}

void frmMessage::cmdSave_Click() {
    if (write && !ui->txtMessage->toPlainText().trimmed().isEmpty() && !write())
        return;
    Unload();
}
