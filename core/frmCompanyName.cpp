// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmCompanyName.h"

#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "ui_frmCompanyName.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 224;

} // namespace

frmCompanyName::frmCompanyName() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCompanyName>()) {
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmCompanyName::cmdOK_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmCompanyName::~frmCompanyName() = default;

void frmCompanyName::onLoad() {
    toCenterForm(*this);
    ui->txtName->setText(strCompanyName);
    ui->txtName->selectAll();
    ui->txtName->setFocus();
}

bool frmCompanyName::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdOK) || DefaultForm::onKeyDown(key);
}

/// Kept open when the file cannot be written, so that the name is not lost.
void frmCompanyName::cmdOK_Click() {
    const QString name = toStoredText(ui->txtName->text().trimmed());
    if (!guardedWithDescription([&] { writeCompanyName(name); }))
        return;
    strCompanyName = name;
    showDone(u"Company name saved"_s);
    Unload();
}
