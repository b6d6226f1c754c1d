// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmHandOver.h"

#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmHandOver.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 219;

} // namespace

frmHandOver::frmHandOver() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmHandOver>()) {
    ui->setupUi(this);
    connect(ui->dtHandedOver, &forms::DTPicker::Change, this,
            [this] { ui->dtDue->setValue(ui->dtHandedOver->Value().addDays(daysToDue)); });
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmHandOver::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmHandOver::~frmHandOver() = default;

void frmHandOver::onLoad() {
    toCenterForm(*this);
    ui->dtHandedOver->setValue(forms::today());
}

bool frmHandOver::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdOK) || DefaultForm::onKeyDown(key);
}

void frmHandOver::show(std::size_t respondents, const QDate& due) {
    entered.reset();
    ui->lblCount->setText(respondents == 1 ? u"1 respondent"_s : u"%1 respondents"_s.arg(respondents));
    ui->dtDue->setValue(due);
}

std::optional<HandOverDates> frmHandOver::ask(std::size_t respondents, int days) {
    frmHandOver& form = instance();
    form.daysToDue = days;
    form.show(respondents, form.ui->dtHandedOver->Value().addDays(days));
    form.ShowModal();
    return entered;
}

std::optional<HandOverDates> frmHandOver::askDue(std::size_t respondents, const QDate& shown) {
    frmHandOver& form = instance();
    form.setCaption(u"Due Date"_s);
    form.ui->lblHandedOver->hide();
    form.ui->dtHandedOver->hide();
    form.show(respondents, shown);
    form.ShowModal();
    return entered;
}

void frmHandOver::cmdOK_Click() {
    const bool isHandedOver = !ui->dtHandedOver->isHidden();
    if (!forms::DTPicker::requireDates({ui->dtHandedOver, ui->dtDue}))
        return;
    const QDate handedOver = isHandedOver ? ui->dtHandedOver->Value() : QDate();
    if (isHandedOver && ui->dtDue->Value() < handedOver) {
        forms::msgBox(u"The due date is before the day of handing over."_s, forms::style::information,
                      titleWithVersion);
        ui->dtDue->setFocus();
        return;
    }
    entered = {handedOver, ui->dtDue->Value()};
    Unload();
}
