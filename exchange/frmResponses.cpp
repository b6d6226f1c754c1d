// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmResponses.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/fewlines.h"
#include "exchange/files/dispatch.h"
#include "exchange/frmHandOver.h"
#include "exchange/frmResponseSettings.h"
#include "exchange/reminding.h"
#include "exchange/responsesmodel.h"
#include "exchange/toggleticks.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmResponses.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 219;

/// Takes out those who have been handed a survey file, as a mail notes, unless the user replaces their dates.
/// Those of a single respondent are corrected without a question.
void askAboutNoted(std::vector<Response>& rows) {
    const auto noted = std::stable_partition(
        rows.begin(), rows.end(), [](const Response& response) { return !response.handedOver.isValid(); });
    const auto count = rows.end() - noted;
    if (rows.size() > 1 && count > 0 &&
        forms::msgBox(u"%1 of the %2 respondents %3 been handed a survey file already. Replace the dates "
                      "that are noted? No keeps them."_s.arg(count)
                          .arg(rows.size())
                          .arg(count == 1 ? u"has"_s : u"have"_s),
                      style::yesNo + style::information + style::secondButton,
                      titleWithVersion) != forms::Answer::Yes)
        rows.erase(noted, rows.end());
}

} // namespace

frmResponses::frmResponses()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmResponses>()),
      model(new ResponsesModel(this)) {
    ui->setupUi(this);
    setUpList();
}

frmResponses::~frmResponses() = default;

void frmResponses::setUpList() {
    ui->lsvResponses->setModel(model);
    QHeaderView* head = ui->lsvResponses->header();
    head->setSortIndicator(-1,
                           Qt::AscendingOrder); // by customer, date and respondent until a head is clicked
    ui->lsvResponses->setSortingEnabled(true);
    constexpr int margins = 26; // pixels, with the arrow of the sorted column
    constexpr int tickWidth = 26;
    const QString date = u"88/88/8888"_s;
    const std::pair<ResponsesModel::Column, QString> widest[] = {
        {ResponsesModel::Customer, u"Acme Trading Company Ltd"_s},
        {ResponsesModel::Respondent, u"Ann Mary Respondent"_s},
        {ResponsesModel::Date, u"Survey Date"_s},
        {ResponsesModel::HandedOver, u"Handed Over"_s},
        {ResponsesModel::Due, date},
        {ResponsesModel::State, u"partly answered"_s},
        {ResponsesModel::Reminders, u"Reminders"_s}};
    head->resizeSection(ResponsesModel::Tick, tickWidth);
    for (const auto& [column, text] : widest)
        head->resizeSection(column, fontMetrics().horizontalAdvance(text) + margins);
}

void frmResponses::onLoad() {
    toCenterForm(*this);
    setUpFilters();
    connectEvents();
    guarded([] {
        if (!hasDispatchTables())
            throw Refusal(
                u"This database could not be updated to this version of the program: it cannot keep "
                "what has been handed over and reminded. See the help, topic Responses."_s);
    });
}

void frmResponses::setUpFilters() {
    ui->cmbState->AddItem(u"All states"_s);
    for (const ResponseState state : allResponseStates)
        ui->cmbState->AddItem(wordOf(state));
    ui->cmbState->setListIndex(0);
    const QDate latest = lookedUp(latestSurveyDate);
    ui->dtTo->setValue(latest.isValid() ? latest : forms::today());
    ui->dtFrom->setValue(ui->dtTo->Value().addMonths(-12).addDays(1));
}

void frmResponses::connectEvents() {
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmResponses::fillRows);
    connect(ui->dtFrom, &forms::DTPicker::Change, this, &frmResponses::fillRows);
    connect(ui->dtTo, &forms::DTPicker::Change, this, &frmResponses::fillRows);
    connect(ui->cmbState, &forms::ComboBox::Click, this, &frmResponses::showRows);
    connect(ui->cmdHandedOver, &QPushButton::clicked, this, &frmResponses::cmdHandedOver_Click);
    connect(ui->cmdDue, &QPushButton::clicked, this, &frmResponses::cmdDue_Click);
    connect(ui->cmdRemind, &QPushButton::clicked, this, &frmResponses::cmdRemind_Click);
    connect(ui->cmdSettings, &QPushButton::clicked, this, [this] {
        frmResponseSettings::instance().ShowModal();
        fillRows();
    });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmResponses::onActivate() {
    if (fillCustomers())
        fillRows();
}

bool frmResponses::onKeyDown(int key) {
    if (key != Qt::Key_Space || !ui->lsvResponses->hasFocus())
        return DefaultForm::onKeyDown(key);
    toggleTicks(*ui->lsvResponses, ResponsesModel::Tick);
    return true;
}

/// Keeps the chosen customer if it still exists.
bool frmResponses::fillCustomers() {
    return guarded([this] {
        std::vector<std::pair<QString, int>> customers{{u"All customers"_s, 0}};
        ado::Recordset records(u"select custid, custname from customer order by custname"_s, *cnnMain);
        for (; !records.Eof(); records.MoveNext())
            customers.emplace_back(records["custname"].Text(), records["custid"].Value().toInt());
        const QVariant chosen = ui->cmbCustomer->currentData();
        const QSignalBlocker quiet(ui->cmbCustomer);
        ui->cmbCustomer->Clear();
        ui->cmbCustomer->AddItems(customers);
        ui->cmbCustomer->setListIndex(std::max(0, ui->cmbCustomer->findData(chosen)));
    });
}

bool frmResponses::fillRows() {
    const Busy busy(*this);
    const ResponseFilter wanted{.custid = ui->cmbCustomer->currentData().toInt(),
                                .from = ui->dtFrom->Value(),
                                .to = ui->dtTo->Value()};
    bool hasTables = false;
    const bool isRead = guarded([&] {
        hasTables = hasDispatchTables();
        settings = readResponseSettings();
        found = findResponses(wanted);
    });
    if (!isRead) {
        chooseListed();
        return false;
    }
    listed = wanted;
    for (QPushButton* button : {ui->cmdHandedOver, ui->cmdDue, ui->cmdRemind, ui->cmdSettings})
        button->setEnabled(hasTables);
    showRows();
    return true;
}

void frmResponses::chooseListed() {
    const QSignalBlocker customer(ui->cmbCustomer), from(ui->dtFrom), to(ui->dtTo);
    ui->cmbCustomer->setListIndex(std::max(0, ui->cmbCustomer->findData(listed.custid)));
    ui->dtFrom->setValue(listed.from);
    ui->dtTo->setValue(listed.to);
}

void frmResponses::showRows() {
    const QDate today = forms::today();
    std::vector<Response> rows;
    if (const int chosen = ui->cmbState->ListIndex(); chosen > 0)
        std::copy_if(found.begin(), found.end(), std::back_inserter(rows), [&](const Response& response) {
            return response.state(today) == allResponseStates[chosen - 1];
        });
    else
        rows = found;
    ui->lblFoot->setText(responseSummary(rows, settings.target));
    const int row = ui->lsvResponses->currentIndex().row();
    const auto key = model->keyAt(row);
    if (!model->put(std::move(rows), today))
        return;
    const int same = model->rowOf(key);
    const int next = same < 0 ? std::min(row, model->rowCount() - 1) : same;
    const QModelIndex kept = model->index(next, ResponsesModel::Customer);
    ui->lsvResponses->selectionModel()->setCurrentIndex(kept, QItemSelectionModel::NoUpdate);
    ui->lsvResponses->scrollTo(kept);
}

std::vector<Response> frmResponses::ticked() {
    std::vector<Response> rows = model->ticked();
    if (rows.empty())
        forms::msgBox(u"Tick one or more respondents first."_s, style::information, titleWithVersion);
    return rows;
}

void frmResponses::cmdHandedOver_Click() {
    std::vector<Response> rows = ticked();
    askAboutNoted(rows);
    if (rows.empty())
        return;
    const std::optional<HandOverDates> dates = frmHandOver::ask(rows, settings.days);
    if (dates && writeHandOver(rows, *dates))
        fillRows();
}

void frmResponses::cmdDue_Click() {
    std::vector<Response> handedOver;
    QStringList others;
    for (const Response& response : ticked()) {
        if (response.dispatchid != 0)
            handedOver.push_back(response);
        else
            others << response.name();
    }
    if (!others.isEmpty())
        forms::msgBox(u"These have not been handed a survey file and are left out:\r\n"_s + fewOf(others),
                      style::information, titleWithVersion);
    if (handedOver.empty())
        return;
    const std::optional<HandOverDates> dates = frmHandOver::askDue(handedOver, settings.days);
    if (dates && writeHandOver(handedOver, *dates))
        fillRows();
}

void frmResponses::cmdRemind_Click() {
    if (!fillRows()) // someone may have answered meanwhile
        return;
    const std::vector<Response> rows = ticked();
    if (rows.empty())
        return;
    const Reminded done = remind(*this, rows, settings);
    if (!done.leftOut.isEmpty())
        forms::msgBox(u"These have been left out:\r\n"_s + fewOf(done.leftOut), style::information,
                      titleWithVersion);
    if (done.dispatchids.empty())
        return;
    const QString question = done.dispatchids.size() == 1
                                 ? u"Does the respondent count as reminded?"_s
                                 : u"Do the %1 respondents count as reminded?"_s.arg(done.dispatchids.size());
    bool isCounted = false;
    while (!isCounted && // after a failure the question comes again: the mails are out
           forms::msgBox(question, style::yesNo + style::information + style::secondButton,
                         titleWithVersion) == forms::Answer::Yes)
        isCounted = guarded([&] { addReminders(done.dispatchids, forms::today()); });
    if (isCounted)
        fillRows();
}
