// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmPerson.h"

#include "core/MDIMain.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/frmErase.h"
#include "core/privacy/erasureprotocol.h"
#include "core/privacy/persontext.h"
#include "platform/desktop/ownerfile.h"
#include "platform/forms/clock.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/msgbox.h"
#include "platform/tables/tablefile.h"
#include "ui_frmPerson.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 222;

/// Replaces the entries by the records of a select of name and key; the chosen one stays, if it is there,
/// otherwise none is chosen.
void fill(forms::ComboBox& list, const QString& sql) {
    std::vector<std::pair<QString, int>> entries;
    ado::Recordset records(sql, *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        entries.emplace_back(records.FieldAt(0).Text(), records.FieldAt(1).Value().toInt());
    const QVariant chosen = list.currentData();
    const QSignalBlocker quiet(list);
    list.Clear();
    list.AddItems(entries);
    list.setListIndex(chosen.isValid() ? list.findData(chosen) : -1);
}

} // namespace

frmPerson::frmPerson() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmPerson>()) {
    ui->setupUi(this);
    ui->lsvParts->setColumns({{u"What"_s, 0.36}, {u"Rows"_s, 0.1}, {u"Searched"_s, 0.54}});
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, [this] {
        fillRespondents();
        fillParts();
    });
    connect(ui->cmbRespondent, &forms::ComboBox::Click, this, &frmPerson::fillParts);
    connect(ui->lsvParts, &forms::ListView::Click, this,
            [this] { ui->txtPage->scrollToAnchor(QString::number(ui->lsvParts->CurrentRow())); });
    connect(ui->cmdPage, &QPushButton::clicked, this, &frmPerson::cmdPage_Click);
    connect(ui->cmdTable, &QPushButton::clicked, this, &frmPerson::cmdTable_Click);
    connect(ui->cmdErase, &QPushButton::clicked, this, &frmPerson::cmdErase_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmPerson::~frmPerson() = default;

void frmPerson::onLoad() {
    toCenterForm(*this);
}

void frmPerson::onActivate() {
    if (isProtocolShown)
        return;
    fillCustomers();
    fillRespondents();
    fillParts();
}

void frmPerson::fillCustomers() {
    guarded([this] {
        fill(*ui->cmbCustomer, u"select custname, custid from customer order by custname, custid"_s);
        if (ui->cmbCustomer->ListIndex() < 0 && ui->cmbCustomer->ListCount() > 0) {
            const QSignalBlocker quiet(ui->cmbCustomer);
            ui->cmbCustomer->setListIndex(0);
        }
    });
}

void frmPerson::fillRespondents() {
    guarded([this] {
        fill(*ui->cmbRespondent, u"select respondentname, respondentid from respondent where custid="_s +
                                     QString::number(ui->cmbCustomer->currentData().toInt()) +
                                     u" order by respondentname, respondentid");
    });
}

void frmPerson::fillParts() {
    isProtocolShown = false;
    const Busy busy(*this);
    person = {};
    parts.clear();
    if (const int chosen = ui->cmbRespondent->currentData().toInt(); chosen != 0)
        guarded([&] {
            const Person found = requirePerson(chosen);
            parts = findPersonParts(found);
            person = found;
        });
    showParts();
}

void frmPerson::showParts() {
    std::vector<QStringList> rows;
    for (const PersonPart& part : parts)
        rows.push_back({part.title, QString::number(part.table.rows.size()), part.searched});
    ui->lsvParts->setItems(std::move(rows));
    ui->txtPage->setHtml(person.respondentid != 0 ? toPage(person, parts, forms::today())
                                                  : u"Choose a respondent."_s);
    ui->lblDone->clear();
    for (QPushButton* button : {ui->cmdPage, ui->cmdTable, ui->cmdErase})
        button->setEnabled(person.respondentid != 0);
}

void frmPerson::cmdPage_Click() {
    forms::CommonDialog dialog;
    dialog.Filter = u"Pages (*.html)|*.html"_s;
    const QString path = dialog.ShowSaveAs({u".html"_s});
    if (path.isEmpty())
        return;
    if (guardedWithDescription([&] { saveOwnersText(toPage(person, parts, forms::today()), path); }))
        ui->lblDone->setText(path.section(u'/', -1) + u" written. Only you can read it.");
}

void frmPerson::cmdTable_Click() {
    forms::CommonDialog dialog;
    dialog.Filter = u"Tables .csv and .xlsx|*.csv *.xlsx"_s;
    const QString path = dialog.ShowSaveAs({u".csv"_s, u".xlsx"_s});
    if (path.isEmpty())
        return;
    if (guardedWithDescription([&] {
            tables::save(toOneTable(parts), path);
            desktop::keepToOwner(path);
        }))
        ui->lblDone->setText(path.section(u'/', -1) + u" written. Only you can read it.");
}

void frmPerson::cmdErase_Click() {
    const bool isAlone = guarded([this] {
        if (!MDIMain::instance().isOnlyForm(*this))
            throw Refusal(u"Close the other windows first: they may show what is erased."_s);
    });
    if (!isAlone)
        return;
    const std::optional<ErasureOutcome> outcome = frmErase::erase(person);
    if (!outcome)
        return;
    fillRespondents();
    fillParts();
    const QDateTime now = forms::nowHook();
    const QString protocol = protocolOf(*outcome, now);
    QString path;
    guardedWithDescription([&] { path = saveProtocol(protocol, u"Erasure"_s, now); });
    isProtocolShown = true;
    ui->txtPage->setPlainText(protocol);
    ui->lblDone->setText(path.isEmpty() ? QString() : u"Protocol: "_s + path);
    if (const QString left = leftToDo(*outcome); !left.isEmpty())
        forms::msgBox(left, style::information, titleWithVersion);
}
