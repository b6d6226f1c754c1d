// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmTargets.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/readernames.h"
#include "ui_frmTargets.h"

#include <QApplication>
#include <QHeaderView>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 218;
constexpr int narrowest = 90; // pixels of a column
enum Column { ParameterColumn, TargetColumn, ForAllColumn };

QTableWidgetItem* fixedItem(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

class NamedEditors : public QStyledItemDelegate {
public:
    explicit NamedEditors(QAbstractItemView& edited) : QStyledItemDelegate(&edited), view(edited) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        forms::nameEditor(*editor, view, index);
        return editor;
    }

private:
    QAbstractItemView& view;
};

} // namespace

frmTargets::frmTargets() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmTargets>()) {
    ui->setupUi(this);
    QHeaderView* head = ui->grdTargets->horizontalHeader();
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    head->setHighlightSections(false);
    head->setMinimumSectionSize(narrowest);
    head->setSectionResizeMode(QHeaderView::ResizeToContents);
    head->setSectionResizeMode(ParameterColumn, QHeaderView::Stretch);
    for (const int column : {TargetColumn, ForAllColumn})
        ui->grdTargets->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui->grdTargets->setItemDelegate(new NamedEditors(*ui->grdTargets));
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmTargets::cmbCustomer_Click);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmTargets::cmdSave_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmTargets::~frmTargets() = default;

void frmTargets::onLoad() {
    toCenterForm(*this);
    guarded([] {
        if (!hasTargetTable())
            throw Refusal(u"This database could not be updated to this version of the program: it takes no "
                          "targets. See the help, topic Targets."_s);
    });
}

/// Another form may have added customers and parameters.
void frmTargets::onActivate() {
    const bool isKept = isTyping() || isChanged();
    if (fillCustomers(isKept) && !isKept && ui->cmbCustomer->ListCount() > 0) {
        fill(ui->cmbCustomer->currentData().toInt());
        showCustomer();
    }
}

bool frmTargets::fillCustomers(bool isKept) {
    return guarded([&] {
        if (!hasTargetTable())
            return;
        std::vector<std::pair<QString, int>> customers{{u"All customers"_s, allCustomers}};
        ado::Recordset stored(u"select custid, custname from customer order by custid"_s, *cnnMain);
        for (; !stored.Eof(); stored.MoveNext())
            customers.emplace_back(stored["custname"].Text(), stored["custid"].Value().toInt());
        const QSignalBlocker quiet(ui->cmbCustomer);
        if (isKept && std::none_of(customers.begin(), customers.end(),
                                   [this](const auto& customer) { return customer.second == custid; }))
            customers.emplace_back(ui->cmbCustomer->Text(), custid);
        ui->cmbCustomer->Clear();
        ui->cmbCustomer->AddItems(customers);
        ui->cmbCustomer->setListIndex(qMax(0, ui->cmbCustomer->findData(custid)));
    });
}

/// While a target is typed, Esc takes it back and Enter ends it.
bool frmTargets::onKeyDown(int key) {
    return !isTyping() && DefaultForm::onKeyDown(key);
}

void frmTargets::onQueryUnload(bool& cancel) {
    cancel = !mayLose();
}

bool frmTargets::isTyping() const {
    const QWidget* focused = QApplication::focusWidget();
    return focused && ui->grdTargets->viewport()->isAncestorOf(focused);
}

void frmTargets::endTyping() {
    if (isTyping())
        ui->grdTargets->setFocus();
}

void frmTargets::cmbCustomer_Click() {
    const int wanted = ui->cmbCustomer->currentData().toInt();
    if (wanted != custid && mayLose())
        fill(wanted);
    showCustomer();
}

void frmTargets::showCustomer() {
    const QSignalBlocker quiet(ui->cmbCustomer);
    ui->cmbCustomer->setListIndex(ui->cmbCustomer->findData(custid));
}

void frmTargets::fill(int wanted) {
    const Busy busy(*this);
    guarded([this, wanted] {
        const int kept = ui->grdTargets->currentRow();
        const std::map<int, double> own = readTargets(wanted);
        const std::map<int, double> forAll =
            wanted == allCustomers ? std::map<int, double>() : readTargets(allCustomers);
        const auto in = [](const std::map<int, double>& targets, int paramid) {
            const auto found = targets.find(paramid);
            return found == targets.end() ? Target() : found->second;
        };
        ado::Recordset parameters(u"select * from parameter order by parametername, paramid"_s, *cnnMain);
        custid = wanted;
        rows.clear();
        ui->grdTargets->setRowCount(0);
        ui->grdTargets->setColumnHidden(ForAllColumn, custid == allCustomers);
        for (; !parameters.Eof(); parameters.MoveNext()) {
            const int paramid = parameters["paramid"].Value().toInt();
            const Target target = in(own, paramid);
            addRow({paramid, parameters["parametername"].Text(), target, target}, in(forAll, paramid));
        }
        ui->grdTargets->setCurrentCell(qMax(0, kept), TargetColumn);
    });
}

void frmTargets::addRow(const TargetChange& target, const Target& forAll) {
    const int row = ui->grdTargets->rowCount();
    ui->grdTargets->insertRow(row);
    ui->grdTargets->setItem(row, ParameterColumn, fixedItem(target.parameter));
    auto* typed = new QTableWidgetItem(targetText(target.before));
    typed->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui->grdTargets->setItem(row, TargetColumn, typed);
    auto* other = fixedItem(targetText(forAll));
    other->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui->grdTargets->setItem(row, ForAllColumn, other);
    rows.push_back(target);
}

bool frmTargets::isChanged() const {
    for (int row = 0; row < ui->grdTargets->rowCount(); ++row) {
        const std::optional<Target> typed = targetOf(ui->grdTargets->item(row, TargetColumn)->text());
        if (!typed || *typed != rows[std::size_t(row)].before)
            return true;
    }
    return false;
}

std::optional<std::vector<TargetChange>> frmTargets::changes() {
    std::vector<TargetChange> changed;
    for (int row = 0; row < ui->grdTargets->rowCount(); ++row) {
        TargetChange target = rows[std::size_t(row)];
        const QString text = ui->grdTargets->item(row, TargetColumn)->text();
        const std::optional<Target> typed = targetOf(text);
        if (!typed) {
            forms::msgBox(u"“%1” is no target of %2: a target is a number from 0 to 10 with two decimals at "
                          "most. Nothing has been saved."_s.arg(text, target.parameter),
                          style::critical, titleWithVersion);
            ui->grdTargets->setCurrentCell(row, TargetColumn);
            ui->grdTargets->setFocus();
            return std::nullopt;
        }
        target.mine = *typed;
        if (target.mine != target.before)
            changed.push_back(target);
    }
    return changed;
}

bool frmTargets::mayLose() {
    endTyping();
    return !isChanged() || forms::msgBox(u"Targets have been changed and not saved. Give up these changes?"_s,
                                         style::yesNo + style::information + style::secondButton,
                                         titleWithVersion) == forms::Answer::Yes;
}

void frmTargets::cmdSave_Click() {
    endTyping();
    const std::optional<std::vector<TargetChange>> changed = changes();
    if (!changed || changed->empty())
        return;
    const Busy busy(*this, u"Saving......"_s);
    Settlement settlement;
    if (!guarded([&] { findChangedTargets(custid, *changed, settlement); }) || !settlement.ask())
        return;
    if (!guarded([&] { saveTargets(custid, *changed, settlement); }))
        return;
    showDone(u"Targets saved"_s);
    fill(custid);
}
