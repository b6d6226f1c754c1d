// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmSignIn.h"

#include "core/base/gblGlobal.h"
#include "ui_frmSignIn.h"

using namespace Qt::StringLiterals;

frmSignIn::frmSignIn() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmSignIn>()) {
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmSignIn::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSignIn::~frmSignIn() = default;

void frmSignIn::onLoad() {
    toCenterForm(*this);
    ui->lblRefusal->hide();
    ui->txtPassword->setFocus();
}

/// Enter presses the button that has the focus, else OK.
bool frmSignIn::onKeyDown(int key) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return DefaultForm::onKeyDown(key);
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    (button ? button : ui->cmdOK)->click();
    return true;
}

std::optional<EnteredPassword> frmSignIn::ask(const StoreChoice& choice, const QString& refusal) {
    entered.reset();
    const Ui::frmSignIn& shown = *instance().ui;
    shown.lblStore->setText(
        u"User '%1', database '%2', server '%3'"_s.arg(choice.user, choice.database, choice.server));
    shown.lblRefusal->setText(refusal);
    shown.lblRefusal->setVisible(!refusal.isEmpty());
    instance().ShowModal();
    return entered;
}

void frmSignIn::cmdOK_Click() {
    entered = {ui->txtPassword->text(), ui->chkKeep->isChecked()};
    Unload();
}
