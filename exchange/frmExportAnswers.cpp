// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmExportAnswers.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/shell.h"
#include "exchange/files/answerexport.h"
#include "exchange/files/responselist.h"
#include "platform/forms/clock.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/msgbox.h"
#include "platform/tables/tablefile.h"
#include "ui_frmExportAnswers.h"

#include <QLocale>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 217;

} // namespace

frmExportAnswers::frmExportAnswers()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmExportAnswers>()) {
    ui->setupUi(this);
    const auto forget = [this] { ui->lblDone->clear(); };
    connect(ui->lstCustomers, &forms::ListBox::Click, this, forget);
    connect(ui->dtFrom, &forms::DTPicker::Change, this, forget);
    connect(ui->dtTo, &forms::DTPicker::Change, this, forget);
    connect(ui->cmdAll, &QPushButton::clicked, this, &frmExportAnswers::cmdAll_Click);
    connect(ui->cmdExport, &QPushButton::clicked, this, &frmExportAnswers::cmdExport_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmExportAnswers::~frmExportAnswers() = default;

void frmExportAnswers::onLoad() {
    toCenterForm(*this);
    ui->dtFrom->setValue(forms::today());
    ui->dtTo->setValue(forms::today());
    guarded([this] {
        ui->dtTo->setValue(std::max(forms::today(), latestSurveyDate()));
        ado::Recordset customers(u"select custname, custid from customer order by custname, custid"_s,
                                 *cnnMain);
        for (; !customers.Eof(); customers.MoveNext()) {
            ui->lstCustomers->AddItem(customers["custname"].Text());
            ui->lstCustomers->item(ui->lstCustomers->count() - 1)
                ->setData(Qt::UserRole, customers["custid"].Value());
        }
        ado::Recordset first(u"select sdate from survey where sdate is not null order by sdate limit 1"_s,
                             *cnnMain);
        if (!first.Eof())
            ui->dtFrom->setValue(first["sdate"].Value().toDate());
    });
    ui->lstCustomers->selectAll();
}

bool frmExportAnswers::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdExport) || DefaultForm::onKeyDown(key);
}

void frmExportAnswers::cmdAll_Click() {
    ui->lstCustomers->selectAll();
    ui->lstCustomers->setFocus();
}

/// None when all are chosen, so that a customer added meanwhile is among them.
std::vector<int> frmExportAnswers::chosenCustomers() const {
    std::vector<int> custids;
    for (const QListWidgetItem* item : ui->lstCustomers->selectedItems())
        custids.push_back(item->data(Qt::UserRole).toInt());
    if (int(custids.size()) == ui->lstCustomers->ListCount())
        custids.clear();
    return custids;
}

void frmExportAnswers::cmdExport_Click() {
    ui->lblDone->clear();
    if (!forms::DTPicker::requireDates({ui->dtFrom, ui->dtTo}))
        return;
    if (ui->lstCustomers->SelCount() == 0) {
        forms::msgBox(u"Choose the customers whose answers are to be exported."_s, style::information,
                      titleWithVersion);
        return;
    }
    forms::CommonDialog dialog;
    dialog.Filter = u"Tables .xlsx and .csv|*.xlsx *.csv"_s;
    const QString path = dialog.ShowSaveAs(tables::suffixes());
    if (path.isEmpty())
        return;
    int written = -1;
    const bool isDone = guardedWithDescription([&] { written = exportTo(path); });
    if (isDone && written == 0)
        forms::msgBox(u"There are no answers of these customers in this period. Nothing has been written."_s,
                      style::information, titleWithVersion);
    else if (isDone && written < 0)
        ui->lblDone->setText(u"Cancelled. Nothing has been written."_s);
    if (!isDone || written <= 0)
        return;
    showDone(path.section(u'/', -1) + u" written", path);
    ui->lblDone->setText(u"%1 written to %2"_s.arg(
        written == 1 ? u"1 answer"_s : QLocale::c().toString(written) + u" answers", path.section(u'/', -1)));
}

int frmExportAnswers::exportTo(const QString& path) {
    const Busy busy(*this, u"Exporting answers......"_s);
    reconnect();
    const std::unique_ptr<tables::TableFile> file = tables::openTableFile(path, exportHeadings());
    Progress progress(*this, ui->lstCustomers->SelCount());
    const int written = exportAnswers({chosenCustomers(), ui->dtFrom->Value(), ui->dtTo->Value()}, *file,
                                      [&](const QString& customer, bool isNext) {
                                          return isNext ? progress.step(customer) : progress.goOn();
                                      });
    if (written > 0)
        file->finish();
    return written;
}
