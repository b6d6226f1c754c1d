// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmNewSurvey.h"

#include "core/base/gblGlobal.h"
#include "survey/frmPasteSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "ui_frmNewSurvey.h"
#include "ui_surveyeditor.h"

using namespace Qt::StringLiterals;

frmNewSurvey::frmNewSurvey() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmNewSurvey>()) {
    auto* head = new QWidget(this);
    ui->setupUi(head);
    setUp(head);
    editor->lblAvailable->setObjectName(u"Label4"_s);
    editor->lblSelected->setObjectName(u"Label5"_s);
    editor->lblAssign->setObjectName(u"Label6"_s);
    editor->lblRemove->setObjectName(u"Label7"_s);
    setCaption(u"New Survey"_s);
    resize(1080, 520);
}

frmNewSurvey::~frmNewSurvey() = default;

void frmNewSurvey::onLoad() {
    const frmSelectSurvey& selection = frmSelectSurvey::instance();
    ui->lblSurveyDate->setText(ado::toText(selection.dtSDate()->Value()));
    ui->lblCustomerName->setText(selection.cmbCustomer()->List(selection.cmbCustomer()->ListIndex()));
    ui->lblRespondentName->setText(selection.lstRespondent()->Text());
    SurveyEditor::onLoad();
}

SurveyContext frmNewSurvey::context() const {
    return {ui->lblCustomerName->text(), ui->lblRespondentName->text(), ui->lblSurveyDate->text()};
}

int frmNewSurvey::helpContext() const {
    return 201;
}

void frmNewSurvey::importSurvey() {
    blnExistingSurvey = true;
    frmPasteSurvey::copyInto(context());
}

QString frmNewSurvey::toGetRespondentID(const QString& /*respondent*/) const {
    return SurveyEditor::toGetRespondentID(ui->lblRespondentName->text());
}
