// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/frmChangedMeanwhile.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "ui_frmChangedMeanwhile.h"

#include <QTextDocument>

std::function<Keep(const ChangedRow&)> changedHook = frmChangedMeanwhile::ask;

namespace {

constexpr int helpContext = 212;

} // namespace

frmChangedMeanwhile::frmChangedMeanwhile()
    : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmChangedMeanwhile>()) {
    ui->setupUi(this);
    QHeaderView* head = ui->grdFields->horizontalHeader();
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    head->setSectionResizeMode(QHeaderView::Stretch);
    ui->grdFields->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(ui->cmdBack, &QPushButton::clicked, this, [this] { answer(Keep::Both); });
    connect(ui->cmdStored, &QPushButton::clicked, this, [this] { answer(Keep::Stored); });
    connect(ui->cmdMine, &QPushButton::clicked, this, [this] { answer(Keep::Mine); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmChangedMeanwhile::~frmChangedMeanwhile() = default;

void frmChangedMeanwhile::onLoad() {
    toCenterForm(*this);
    ui->cmdBack->setFocus();
}

bool frmChangedMeanwhile::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdBack) || DefaultForm::onKeyDown(key);
}

Keep frmChangedMeanwhile::ask(const ChangedRow& row) {
    Busy::endPointers();
    answered = Keep::Both;
    instance().show(row);
    instance().ShowModal();
    return answered;
}

void frmChangedMeanwhile::show(const ChangedRow& row) {
    ui->lblRow->setText(row.name);
    ui->grdFields->setRowCount(int(row.fields.size()));
    for (int i = 0; const ChangedField& field : row.fields) {
        for (int column = 0; const QString& text : {field.name, field.before, field.stored, field.mine}) {
            auto* item = new QTableWidgetItem(text);
            item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
            item->setToolTip(Qt::convertFromPlainText(text));
            ui->grdFields->setItem(i, column++, item);
        }
        ++i;
    }
}

void frmChangedMeanwhile::answer(Keep keep) {
    answered = keep;
    Unload();
}
