// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmSelectSurvey.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "core/base/shell.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmPasteSurvey.h"
#include "ui_frmSelectSurvey.h"

#include <cmath>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 201;
constexpr double heightShare = 0.65; // of the screen, in the middle of which the form opens

} // namespace

frmSelectSurvey::frmSelectSurvey()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSelectSurvey>()) {
    ui->setupUi(this);
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmSelectSurvey::cmbCustomer_Click);
    connect(ui->cmdBlankSurvey, &QPushButton::clicked, this, &frmSelectSurvey::cmdBlankSurvey);
    connect(ui->cmdExistingSurvey, &QPushButton::clicked, this, &frmSelectSurvey::cmdExistingSurvey);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSelectSurvey::~frmSelectSurvey() = default;

forms::ComboBox* frmSelectSurvey::cmbCustomer() const {
    return ui->cmbCustomer;
}

forms::ListBox* frmSelectSurvey::lstRespondent() const {
    return ui->lstRespondent;
}

forms::DTPicker* frmSelectSurvey::dtSDate() const {
    return ui->dtSDate;
}

void frmSelectSurvey::onLoad() {
    setTop(static_cast<int>(std::nearbyint(ScreenHeight() * heightShare)) / 2 - Height() / 2);
    setLeft(ScreenWidth() / 2 - Width() / 2);
    ui->dtSDate->setValue(forms::today());
    toFillCustomerList();
    if (ui->cmbCustomer->ListCount() > 0)
        ui->cmbCustomer->setListIndex(0);
}

void frmSelectSurvey::toFillCustomerList() {
    guarded([this] {
        fillList(*ui->cmbCustomer, u"select custname from customer order by custid"_s, "custname");
    });
}

void frmSelectSurvey::cmbCustomer_Click() {
    if (ui->cmbCustomer->ListIndex() != -1)
        toFillRespondentList();
}

void frmSelectSurvey::toFillRespondentList() {
    const bool filled = guarded([this] {
        fillList(*ui->lstRespondent,
                 u"select * from custresp where custname='"_s + ui->cmbCustomer->Text() + u"'",
                 "respondentname");
        if (ui->lstRespondent->ListCount() > 0)
            ui->lstRespondent->setListIndex(0);
    });
    if (!filled)
        ui->lstRespondent->Clear(); // else another customer's respondents would stay
}

bool frmSelectSurvey::toIsSurveyNew(const QDate& date, const QString& customer, const QString& respondent) {
    bool isNew = false;
    guarded([&] {
        ado::Recordset existingsurvey(u"select * from existingsurvey where sdate=#"_s + toSqlDate(date) +
                                          u"# and custname='" + customer + u"' and respondentname='" +
                                          respondent + u"'",
                                      *cnnMain);
        isNew = existingsurvey.Eof();
    });
    return isNew;
}

SurveyContext frmSelectSurvey::chosen() const {
    return {ui->cmbCustomer->List(ui->cmbCustomer->ListIndex()), ui->lstRespondent->Text(),
            ado::toText(ui->dtSDate->Value())};
}

void frmSelectSurvey::cmdBlankSurvey() {
    if (!forms::DTPicker::requireDates({ui->dtSDate}))
        return;
    const Busy busy(*this);
    openSurvey(chosen());
}

void frmSelectSurvey::openSurvey(const SurveyContext& survey) {
    const auto open = [](const QString& caption, bool withQuestions) {
        frmNewSurvey& editor = frmNewSurvey::instance();
        if (!caption.isEmpty())
            editor.setCaption(caption);
        editor.Show();
        if (withQuestions)
            editor.toRefreshGrid();
    };
    if (toIsSurveyNew(toDate(survey.date), survey.customer, survey.respondent))
        open(u"New Survey"_s, false);
    else if (blnSurveyPasted)
        open({}, true); // the import has set the caption
    else if (forms::msgBox(u"Survey already exists for Selected Survey Date,Customer and Respondent....\r\n"
                           "Do you wish to Edit the same Survey....Press 'Yes' to continue"_s,
                           style::yesNo + style::information, titleWithVersion) == forms::Answer::Yes)
        open(u"Edit Selected Survey"_s, true);
    blnSurveyPasted = false;
}

void frmSelectSurvey::cmdExistingSurvey() {
    if (!forms::DTPicker::requireDates({ui->dtSDate}))
        return;
    const Busy busy(*this);
    blnExistingSurvey = true;
    frmPasteSurvey::copyInto(chosen());
}

/// An editor may have been open while other choices were made here.
void frmSelectSurvey::pick(const SurveyContext& survey) {
    const auto entryOf = [](const auto* list, const QString& text) {
        int entry = 0;
        while (entry < list->ListCount() && list->List(entry).trimmed() != text.trimmed())
            ++entry;
        return entry;
    };
    if (const int customer = entryOf(ui->cmbCustomer, survey.customer);
        customer < ui->cmbCustomer->ListCount())
        ui->cmbCustomer->setListIndex(customer);
    ui->lstRespondent->setListIndex(entryOf(ui->lstRespondent, survey.respondent));
    ui->dtSDate->setValue(toDate(survey.date));
}
