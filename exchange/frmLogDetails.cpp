// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmLogDetails.h"

#include "core/base/busy.h"
#include "core/base/changedrow.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "exchange/files/homefile.h"
#include "exchange/frmMessage.h"
#include "exchange/registerdeletion.h"
#include "exchange/viewer.h"
#include "ui_frmLogDetails.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 203;

QString readInWord(const QVariant& status) {
    if (!status.isValid())
        return {};
    return status.toBool() ? u"Yes"_s : u"No"_s;
}

} // namespace

frmLogDetails::frmLogDetails() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmLogDetails>()) {
    ui->setupUi(this);
    ui->lsvDtls->setColumns({{u"Survey File"_s, 0.36},
                             {u"Survey Date"_s, 0.16},
                             {u"Respondent Name"_s, 0.34},
                             {u"File ReadIN"_s, 0.14}});
    connectEvents();
    frmMessage::read = [this] { return messageAsRead = toGetStandardMessage(chosenCustomer()); };
    frmMessage::write = [this] { return toWriteStandardMessage(); };
}

frmLogDetails::~frmLogDetails() {
    if (loaded() && loaded() != this)
        return; // this one was closed earlier; the dialog belongs to the new one
    frmMessage::read = {};
    frmMessage::write = {};
}

void frmLogDetails::connectEvents() {
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmLogDetails::cmbCustomer_Click);
    connect(ui->lsvDtls, &forms::ListView::DblClick, this, &frmLogDetails::openFiles);
    connect(ui->lsvDtls, &forms::ListView::KeyDown, this, [this](int key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            openFiles();
    });
    connect(ui->cmdmail, &QPushButton::clicked, this, &frmLogDetails::cmdmail_Click);
    connect(ui->cmdStandardMessage, &QPushButton::clicked, this, [] { frmMessage::instance().ShowModal(); });
    connect(ui->cmdDelete, &QPushButton::clicked, this, &frmLogDetails::cmdDelete_Click);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &frmLogDetails::cmdPrint_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmLogDetails::onLoad() {
    toCenterForm(*this);
    toFillCustomerList();
    if (ui->cmbCustomer->ListCount() > 0)
        ui->cmbCustomer->setListIndex(0);
}

void frmLogDetails::onActivate() {
    QStringList chosen;
    for (const int row : ui->lsvDtls->SelectedRows())
        chosen << ui->lsvDtls->Text(row);
    const QString cursor = ui->lsvDtls->Text(ui->lsvDtls->CurrentRow());
    const QString customer = chosenCustomer();
    toFillCustomerList();
    if (ui->cmbCustomer->ListIndex() < 0)
        ui->lsvDtls->Clear();
    else
        toFillListView();
    if (chosenCustomer() != customer)
        return;
    for (int row = 0; row < ui->lsvDtls->ListCount(); ++row) {
        if (ui->lsvDtls->Text(row) == cursor)
            ui->lsvDtls->setCurrentRow(row);
        ui->lsvDtls->setSelected(row, chosen.contains(ui->lsvDtls->Text(row)));
    }
}

QString frmLogDetails::chosenCustomer() const {
    return ui->cmbCustomer->Text();
}

void frmLogDetails::toFillCustomerList() {
    guarded([this] {
        const QString chosen = chosenCustomer();
        QStringList names;
        ado::Recordset customer(u"select custname from customer order by custid"_s, *cnnMain);
        for (; !customer.Eof(); customer.MoveNext())
            names << customer["custname"].Text();
        QStringList listed;
        for (int i = 0; i < ui->cmbCustomer->ListCount(); ++i)
            listed << ui->cmbCustomer->List(i);
        if (listed == names)
            return;
        ui->cmbCustomer->Clear();
        ui->cmbCustomer->AddItems(names);
        ui->cmbCustomer->setListIndex(int(names.indexOf(chosen))); // its click fills the list of files
    });
}

void frmLogDetails::cmbCustomer_Click() {
    if (ui->cmbCustomer->ListIndex() >= 0)
        toFillListView();
}

void frmLogDetails::toFillListView() {
    guarded(u"Error :"_s, [this] {
        ui->lsvDtls->Clear();
        std::vector<QStringList> files;
        ado::Recordset log(u"select * from log where custname='"_s + chosenCustomer() + u"'", *cnnMain);
        for (; !log.Eof(); log.MoveNext()) {
            files.push_back({log["xlsfilename"].Text(), log["sdate"].Text(), log["respname"].Text(),
                             readInWord(log["Status"].Value())});
        }
        ui->lsvDtls->setItems(std::move(files));
    });
}

QString frmLogDetails::toGetStandardMessage(const QString& customerName) const {
    return mailer.toGetStandardMessage(customerName);
}

bool frmLogDetails::toWriteStandardMessage() {
    const QString text = frmMessage::instance().txtMessage()->toPlainText();
    const QString select = u"select * from standardmessage where customerid="_s;
    const auto changedMeanwhile = [&](ado::Recordset& standard) {
        ChangedRow changed{u"Standard Message of "_s + chosenCustomer(), {}};
        if (!standard.Eof())
            addIfChanged(changed, {u"Message"_s, messageAsRead, standard["standardmessage"].Text().trimmed(),
                                   text.trimmed()});
        return changed;
    };
    Settlement settlement;
    const bool isRead = guarded([&] {
        ado::Recordset standard(select + QString::number(findCustomer(chosenCustomer())), *cnnMain);
        settlement.note({}, changedMeanwhile(standard));
    });
    if (isRead && !settlement.ask())
        return false;
    if (!isRead || settlement.leavesAny() || text.trimmed() == messageAsRead)
        return true;
    guarded([&] {
        Transaction transaction;
        const QString custid = QString::number(requireCustomers({chosenCustomer()}).front());
        ado::Recordset standard(select + custid, *cnnMain, ado::Recordset::Lock::Optimistic);
        settlement.require({}, changedMeanwhile(standard));
        if (standard.Eof())
            standard.AddNew();
        standard["customerid"] = custid;
        standard["standardmessage"] = toFilterApostrophe(text).value_or(text.trimmed());
        standard.Update();
        transaction.Commit();
    });
    return true;
}

void frmLogDetails::cmdmail_Click() {
    const Busy busy(*this);
    sendmail();
}

void frmLogDetails::sendmail() {
    constexpr int dateColumn = 1;
    constexpr int respondentColumn = 2;
    std::vector<RegisteredFile> files;
    for (const int row : ui->lsvDtls->SelectedRows())
        files.push_back({ui->lsvDtls->Text(row), ui->lsvDtls->Text(row, respondentColumn),
                         ui->lsvDtls->Text(row, dateColumn)});
    mailer.mail(chosenCustomer(), files);
}

void frmLogDetails::cmdDelete_Click() {
    if (ui->lsvDtls->ListCount() == 0)
        return;
    StatusWord word(u"Deleting Survey File...."_s);
    QStringList fileNames;
    for (const int row : ui->lsvDtls->SelectedRows())
        fileNames << ui->lsvDtls->Text(row);
    if (deleteSurveyFiles(fileNames, cmnDlg, word))
        toFillListView();
}

void frmLogDetails::openFiles() {
    Busy busy(*this);
    guardedWithDescription([&] {
        for (const int row : ui->lsvDtls->SelectedRows()) {
            busy.say(u"Generating XLS File....."_s);
            viewWorkbook(surveyFilePath(ui->lsvDtls->Text(row)));
        }
    });
}

void frmLogDetails::cmdPrint_Click() {
    if (ui->lsvDtls->ListCount() == 0)
        return;
    const Busy busy(*this, u"Generating Report....."_s);
    guarded([this] {
        startReport(crptReport, u"log.rpt"_s, u"CompanyName"_s, u"Log Details"_s,
                    u"{log.custname}='"_s + chosenCustomer() + u'\'');
    });
}
