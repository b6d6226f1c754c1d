// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/aidpanel.h"

#include "core/base/gblGlobal.h"
#include "platform/desktop/windowstate.h"
#include "ui_aidpanel.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto namesSwitch = "frmPerformanceMatrix/chkNames";
constexpr auto gapsSwitch = "frmPerformanceMatrix/chkGaps";
constexpr auto diagonalSwitch = "frmPerformanceMatrix/chkDiagonal";
constexpr auto crossHairChoice = "frmPerformanceMatrix/cmbCrossHair"; // kind, own score, own weightage

} // namespace

AidPanel::AidPanel(QWidget* parent) : QGroupBox(parent), ui(std::make_unique<Ui::AidPanel>()) {
    ui->setupUi(this);
    setFocusProxy(ui->chkNames); // so that the tab order of the form keeps that of the boxes
    restore();
    ui->cmbCompared->addItem(u"(no other date)"_s);
    for (QCheckBox* box : {ui->chkNames, ui->chkGaps, ui->chkDiagonal})
        connect(box, &QCheckBox::toggled, this, &AidPanel::change);
    for (QComboBox* box : {ui->cmbCrossHair, ui->cmbCompared})
        connect(box, &QComboBox::activated, this, &AidPanel::change);
    for (QDoubleSpinBox* box : {ui->spnOwnScore, ui->spnOwnWeightage})
        connect(box, &QDoubleSpinBox::valueChanged, this, &AidPanel::change);
}

AidPanel::~AidPanel() = default;

void AidPanel::restore() {
    ui->chkNames->setChecked(desktop::isSwitchedOn(namesSwitch));
    ui->chkGaps->setChecked(desktop::isSwitchedOn(gapsSwitch));
    ui->chkDiagonal->setChecked(desktop::isSwitchedOn(diagonalSwitch));
    const QStringList parts = desktop::rememberedChoice(crossHairChoice).split(u' ');
    if (parts.size() == 3) {
        ui->cmbCrossHair->setCurrentIndex(qBound(0, parts[0].toInt(), ui->cmbCrossHair->count() - 1));
        ui->spnOwnScore->setValue(parts[1].toDouble());
        ui->spnOwnWeightage->setValue(parts[2].toDouble());
    }
    ui->ownValues->setVisible(choice().crossHair == CrossHair::Own);
}

void AidPanel::change() {
    ui->ownValues->setVisible(choice().crossHair == CrossHair::Own);
    desktop::rememberSwitch(namesSwitch, ui->chkNames->isChecked());
    desktop::rememberSwitch(gapsSwitch, ui->chkGaps->isChecked());
    desktop::rememberSwitch(diagonalSwitch, ui->chkDiagonal->isChecked());
    desktop::rememberChoice(crossHairChoice,
                            u"%1 %2 %3"_s.arg(QString::number(ui->cmbCrossHair->currentIndex()),
                                              QString::number(ui->spnOwnScore->value()),
                                              QString::number(ui->spnOwnWeightage->value())));
    Q_EMIT Changed();
}

AidChoice AidPanel::choice() const {
    return {.hasNames = ui->chkNames->isChecked(),
            .hasGaps = ui->chkGaps->isChecked(),
            .hasDiagonal = ui->chkDiagonal->isChecked(),
            .crossHair = static_cast<CrossHair>(ui->cmbCrossHair->currentIndex()),
            .own = {.weightage = ui->spnOwnWeightage->value(), .score = ui->spnOwnScore->value()},
            .compared =
                ui->cmbCompared->currentIndex() > 0 ? toDate(ui->cmbCompared->currentText()) : QDate()};
}

void AidPanel::setDates(const QStringList& dates, const QString& shown) {
    const QString compared = ui->cmbCompared->currentText();
    while (ui->cmbCompared->count() > 1)
        ui->cmbCompared->removeItem(1);
    for (const QString& date : dates) {
        if (date != shown && ui->cmbCompared->findText(date) < 0)
            ui->cmbCompared->addItem(date);
    }
    ui->cmbCompared->setCurrentIndex(qMax(0, ui->cmbCompared->findText(compared)));
}
