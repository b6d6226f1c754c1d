// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmEditExistingSurvey.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "exchange/files/dispatch.h"
#include "platform/forms/msgbox.h"
#include "survey/frmPasteSurvey.h"
#include "ui_frmEditExistingSurvey.h"
#include "ui_surveyeditor.h"

using namespace Qt::StringLiterals;
using forms::msgBox;
namespace style = forms::style;

frmEditExistingSurvey::frmEditExistingSurvey()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmEditExistingSurvey>()) {
    auto* head = new QWidget(this);
    ui->setupUi(head);
    setUp(head);
    setCaption(u"Edit Survey"_s);
    resize(1080, 530);
    editor->grdParamAndQuest->setMinimumHeight(160);
    editor->lblAssign->setObjectName(u"Label2"_s);
    editor->lblRemove->setObjectName(u"Label5"_s);
    editor->lblRemove->setText(u"'Double Click'  to remove the selected Row"_s);
    lists = {this, ui->cmbCustomer, ui->lstRespondent, ui->lstSurvetDates};
    using Self = frmEditExistingSurvey;
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &Self::cmbCustomer_Click);
    connect(ui->lstRespondent, &forms::ListBox::Click, this, &Self::lstRespondent_Click);
    connect(ui->lstSurvetDates, &forms::ListBox::Click, this, &Self::lstSurvetDates_Click);
    connect(ui->lstSurvetDates, &forms::ListBox::KeyDown, this, &Self::lstSurvetDates_KeyDown);
}

frmEditExistingSurvey::~frmEditExistingSurvey() = default;

void frmEditExistingSurvey::onLoad() {
    SurveyEditor::onLoad();
    toFillCustomerList();
    lists.pickFirstCustomer();
    lists.pickFirstDate();
}

int frmEditExistingSurvey::helpContext() const {
    return 202;
}

QString frmEditExistingSurvey::reportTitle() const {
    return u"Customer Satisfaction Survey Report"_s;
}

void frmEditExistingSurvey::cmbCustomer_Click() {
    if (ui->cmbCustomer->ListIndex() == -1)
        return;
    toFillRespondentList();
    if (ui->lstRespondent->ListCount() == 0)
        toRefreshGrid();
}

void frmEditExistingSurvey::lstRespondent_Click() {
    if (ui->lstRespondent->ListCount() == 0)
        return;
    toFillSurveyDateList();
    lists.pickFirstDate();
    toRefreshGrid();
}

void frmEditExistingSurvey::lstSurvetDates_Click() {
    if (ui->lstSurvetDates->ListCount() > 0)
        toRefreshGrid();
}

bool frmEditExistingSurvey::mayAdd() {
    if (ui->lstSurvetDates->ListCount() == 0)
        msgBox(u"No Survey Date available......"_s, style::noIcon, titleWithVersion);
    else if (ui->lstSurvetDates->SelCount() == 0)
        msgBox(u"No Survey Date selected......Select one and proceed....."_s, style::noIcon,
               titleWithVersion);
    else
        return true;
    return false;
}

/// Runs once for each chosen respondent, each time on the first of them.
std::vector<ChosenQuestion> frmEditExistingSurvey::rewrite() {
    std::vector<ChosenQuestion> leftOut;
    for (int i = 0; i < ui->lstRespondent->ListCount(); ++i) {
        if (ui->lstRespondent->Selected(i))
            leftOut = SurveyEditor::rewrite();
    }
    return leftOut;
}

void frmEditExistingSurvey::importSurvey() {
    if (ui->lstRespondent->ListCount() > 0 && ui->lstSurvetDates->ListCount() > 0) {
        blnExistingSurvey = false;
        frmPasteSurvey::copyInto(context());
    } else if (ui->lstRespondent->ListCount() == 0) {
        msgBox(u"No Respondent name present to Edit Survey"_s, style::critical, titleWithVersion);
    } else {
        msgBox(u"No Survey Date available for the Selected Respondent...Import from other survey cannot be "
               "performed.."_s,
               style::critical, titleWithVersion);
    }
}

void frmEditExistingSurvey::lstSurvetDates_KeyDown(int key) {
    if (key != Qt::Key_Delete)
        return;
    StatusWord word(u"Deletion in Progress...."_s);
    if (ui->lstSurvetDates->SelCount() == 1)
        toRefreshGrid(); // another form may have changed the questions counted below
    if (ui->lstSurvetDates->SelCount() == 1 && showsStore()) {
        const SurveyContext survey = context();
        if (msgBox(u"You are about to delete the survey dated "_s + survey.date + u" for Customer - " +
                       survey.customer + u"\r\nAre you sure you want to delete...?",
                   style::yesNo + style::secondButton, titleWithVersion) == forms::Answer::No) {
            word.say(u"Deletion Cancelled...."_s);
        } else if (hasQuestions()) {
            toDeleteSurvey();
            lists.pickFirstDate();
            toRefreshGrid();
        } else {
            toDeleteEmptySurvey();
        }
    }
}

void frmEditExistingSurvey::toDeleteSurvey() {
    if (!showsStore()) // the rows of the grid are not those of the store
        return;
    guarded([this] {
        const SurveyKey survey = requireSurveyKey(context()); // before the copy
        backUpBeforeLoss();
        Transaction transaction;
        ado::Recordset responquery(u"select * from responquery where sdate=#"_s + toSqlDate(survey.date) +
                                       u"# and custid=" + QString::number(survey.custid) +
                                       u" order by surveyid",
                                   *cnnMain);
        if (!responquery.Eof())
            deleteQuestionnaire(survey, responquery["surveyid"].Text(),
                                responquery.RecordCount() == grid().count());
        transaction.Commit();
        showDone(u"Survey of "_s + context().respondent + u" deleted");
        toFillSurveyDateList();
    });
}

/// The questionnaire of one respondent with all that belongs to it, and the survey itself when no one else
/// has a questionnaire on that date.
void frmEditExistingSurvey::deleteQuestionnaire(const SurveyKey& survey, const QString& surveyid,
                                                bool isLastOfDate) {
    const QString respondentid = QString::number(survey.respondentid);
    const QString date = u"#"_s + toSqlDate(survey.date) + u"#";
    const QString ofRespondent = u" where surveyid="_s + surveyid + u" and respondentid=" + respondentid;
    const QString ofAnswers = ofRespondent + u" and surveydate=" + date;
    if (isLastOfDate)
        cnnMain->Execute(u"delete * from Survey where sdate="_s + date + u" and custid=" +
                         QString::number(survey.custid) + u" and surveyid=" + surveyid);
    cnnMain->Execute(u"delete * from responquesindex"_s + ofRespondent);
    cnnMain->Execute(u"delete * from reportlinktable where sdate="_s + date + u" and respondentid=" +
                     respondentid);
    cnnMain->Execute(u"delete * from feedbackobjective"_s + ofAnswers);
    cnnMain->Execute(u"delete * from feedbackdescriptive"_s + ofAnswers);
    cnnMain->Execute(u"delete * from log where surveyid="_s + surveyid + u" and respid=" + respondentid);
    deleteDispatch(surveyid, respondentid);
}

/// For a date without questions: deletes all surveys of the customer if none has questions any more. A
/// questionnaire whose questions have all left the catalogue is in the list of dates but not in the grid; it
/// is deleted alone.
void frmEditExistingSurvey::toDeleteEmptySurvey() {
    guarded([this] {
        const SurveyKey survey = requireSurveyKey(context());
        const QString respondentid = QString::number(survey.respondentid);
        const QString custid = QString::number(survey.custid);
        const QString surveyid = QString::number(survey.surveyid);
        const bool isCustomerEmpty = !hasRecords(u"select * from responquery where custid="_s + custid);
        const QString ofSurvey = u"select * from responquesindex where surveyid="_s + surveyid;
        const bool isUnseen =
            survey.surveyid != 0 && hasRecords(ofSurvey + u" and respondentid=" + respondentid);
        if (isCustomerEmpty || isUnseen) {
            backUpBeforeLoss(); // which cannot be done within a transaction
            Transaction transaction;
            if (!isCustomerEmpty) {
                deleteQuestionnaire(survey, surveyid,
                                    !hasRecords(ofSurvey + u" and respondentid<>" + respondentid));
            } else {
                if (survey.surveyid != 0)
                    cnnMain->Execute(u"delete * from feedbackobjective where surveyid="_s + surveyid +
                                     u" and respondentid=" + respondentid);
                cnnMain->Execute(u"delete * from survey where custid="_s + custid);
            }
            transaction.Commit();
        }
        toFillSurveyDateList();
    });
}
