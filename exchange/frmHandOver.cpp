// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmHandOver.h"

#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/fewlines.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmHandOver.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 219;

} // namespace

frmHandOver::frmHandOver() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmHandOver>()) {
    ui->setupUi(this);
    connect(ui->dtHandedOver, &forms::DTPicker::Change, this, &frmHandOver::dtHandedOver_Change);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmHandOver::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmHandOver::~frmHandOver() = default;

void frmHandOver::onLoad() {
    toCenterForm(*this);
}

bool frmHandOver::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdOK) || DefaultForm::onKeyDown(key);
}

void frmHandOver::show(const std::vector<Response>& asked, const QDate& handedOver, int days) {
    entered.reset();
    respondents = asked;
    daysToDue = days;
    const std::size_t count = respondents.size();
    ui->lblCount->setText(count == 1 ? u"1 respondent"_s : u"%1 respondents"_s.arg(count));
    ui->dtHandedOver->setValue(handedOver.isValid() ? handedOver : forms::today());
    ui->dtDue->setValue(ui->dtHandedOver->Value().addDays(days));
}

std::optional<HandOverDates> frmHandOver::ask(const std::vector<Response>& respondents, int days) {
    frmHandOver& form = instance();
    const Response& first = respondents.front();
    const bool isSingle = respondents.size() == 1;
    form.show(respondents, isSingle ? first.handedOver : QDate(), days);
    if (isSingle)
        form.ui->dtDue->setValue(first.due);
    form.ShowModal();
    return entered;
}

std::optional<HandOverDates> frmHandOver::askDue(const std::vector<Response>& respondents, int days) {
    frmHandOver& form = instance();
    form.setCaption(u"Due Date"_s);
    form.ui->lblHandedOver->hide();
    form.ui->dtHandedOver->hide();
    form.show(respondents, respondents.front().handedOver, days);
    form.ui->dtDue->setValue(respondents.front().due);
    form.ShowModal();
    return entered;
}

/// A due date that was chosen on its own stays.
void frmHandOver::dtHandedOver_Change() {
    const QDate before = std::exchange(lastHandedOver, ui->dtHandedOver->Value());
    if (ui->dtDue->Value() == before.addDays(daysToDue))
        ui->dtDue->setValue(lastHandedOver.addDays(daysToDue));
}

QString frmHandOver::objectionTo(const HandOverDates& dates) const {
    const QString objection = u"The due date is before the day of handing over"_s;
    if (dates.handedOver.isValid())
        return dates.due < dates.handedOver ? objection + u'.' : QString();
    QStringList names;
    for (const Response& respondent : respondents) {
        if (dates.due < respondent.handedOver)
            names << respondent.name() + u": handed over on " + ado::toText(respondent.handedOver);
    }
    return names.isEmpty() ? QString() : objection + u" of:\r\n" + fewOf(names);
}

void frmHandOver::cmdOK_Click() {
    const bool isHandedOver = !ui->dtHandedOver->isHidden();
    if (!forms::DTPicker::requireDates({ui->dtHandedOver, ui->dtDue}))
        return;
    const HandOverDates dates{isHandedOver ? ui->dtHandedOver->Value() : QDate(), ui->dtDue->Value()};
    if (const QString objection = objectionTo(dates); !objection.isEmpty()) {
        forms::msgBox(objection, forms::style::information, titleWithVersion);
        ui->dtDue->setFocus();
        return;
    }
    entered = dates;
    Unload();
}
