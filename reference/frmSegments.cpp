// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmSegments.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/forms/msgbox.h"
#include "reference/segmentmodel.h"
#include "ui_frmSegments.h"

#include <algorithm>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 220;

/// A typed name as it is stored, without blanks around it.
QString nameOf(const QComboBox& box) {
    return toStoredText(box.currentText().simplified());
}

void fill(QComboBox& box, const QStringList& texts, const QString& shown) {
    const QSignalBlocker silent(box);
    box.clear();
    box.addItems(texts);
    box.setCurrentIndex(int(texts.indexOf(shown)));
    box.setEditText(shown);
}

} // namespace

frmSegments::frmSegments()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSegments>()),
      rows(new SegmentModel(edits, this)) {
    using This = frmSegments;
    ui->setupUi(this);
    setUpList();
    for (QComboBox* box : {ui->cboKind, ui->cboGroup}) {
        box->setCompleter(nullptr); // it would turn the new name "North" into the known "North East"
        box->lineEdit()->setMaxLength(longestSegmentText);
    }
    connect(ui->cboKind, &forms::ComboBox::Click, this, &This::takeKind);
    connect(ui->cboKind->lineEdit(), &QLineEdit::editingFinished, this, &This::takeKind);
    connect(ui->txtFind, &QLineEdit::textChanged, this, [this](const QString& text) {
        rows->search(text.simplified());
        ui->lblSummary->setText(rows->summary());
    });
    connect(ui->cmdSet, &QPushButton::clicked, this, &This::cmdSet_Click);
    connect(ui->cmdTakeOut, &QPushButton::clicked, this, &This::cmdTakeOut_Click);
    connect(ui->cmdRename, &QPushButton::clicked, this, &This::cmdRename_Click);
    connect(ui->cmdSave, &QPushButton::clicked, this, &This::cmdSave_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmSegments::~frmSegments() = default;

void frmSegments::setUpList() {
    ui->lsvRows->setModel(rows);
    QHeaderView* head = ui->lsvRows->header();
    head->setStretchLastSection(true);
    head->resizeSection(SegmentModel::Customer, fontMetrics().averageCharWidth() * 40);
    head->resizeSection(SegmentModel::Respondent, fontMetrics().averageCharWidth() * 30);
}

void frmSegments::onLoad() {
    toCenterForm(*this);
    guarded([] {
        if (!hasSegmentTable())
            throw Refusal(u"This database could not be updated to this version of the program: it has no "
                          "groups. See the help, topic Segments."_s);
    });
}

void frmSegments::onActivate() {
    showKind(rows->kind());
}

void frmSegments::onQueryUnload(bool& cancel) {
    cancel = !edits.isEmpty() &&
             forms::msgBox(u"The changes of groups have not been saved. Close the window without them?"_s,
                           style::yesNo + style::information + style::secondButton,
                           titleWithVersion) == forms::Answer::No;
}

bool frmSegments::onKeyDown(int key) {
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (ui->lsvRows->hasFocus() && isEnter)
        ui->cboGroup->setFocus(Qt::ShortcutFocusReason);
    else if (ui->lsvRows->hasFocus() && key == Qt::Key_Delete)
        cmdTakeOut_Click();
    else if (ui->cboGroup->hasFocus() && isEnter)
        cmdSet_Click();
    else if (ui->txtFind->hasFocus() && (isEnter || key == Qt::Key_Down))
        ui->lsvRows->setFocus(Qt::ShortcutFocusReason);
    else
        return DefaultForm::onKeyDown(key);
    return true;
}

/// Without a kind yet, the first in use is shown.
bool frmSegments::showKind(const QString& wanted) {
    const Busy busy(*this);
    const bool isShown = guarded([&] {
        if (!hasSegmentTable())
            return;
        const QStringList used = readSegmentKinds();
        const QString shown = !wanted.isEmpty() ? wanted : used.value(0, u"Region"_s);
        rows->put(shown, readSegmentRows(shown));
        fillKinds(used, shown);
    });
    showChanges();
    return isShown;
}

void frmSegments::fillKinds(const QStringList& used, const QString& shown) {
    QStringList kinds = used + edits.kinds() + QStringList{u"Region"_s, u"Branch"_s, u"Role"_s};
    fill(*ui->cboKind, sortedOnce(kinds << shown), shown);
}

bool frmSegments::takeKind() {
    const QString typed = nameOf(*ui->cboKind);
    const int known = ui->cboKind->findText(typed, Qt::MatchFixedString);
    const QString chosen = known >= 0 ? ui->cboKind->itemText(known) : typed;
    ui->cboKind->setEditText(rows->kind()); // before a message takes the focus and the box is taken again
    return chosen.isEmpty() || chosen == rows->kind() || showKind(chosen);
}

void frmSegments::showChanges() {
    fill(*ui->cboGroup, rows->groups(), ui->cboGroup->currentText());
    ui->lblSummary->setText(rows->summary());
}

std::vector<int> frmSegments::chosenRows() const {
    std::vector<int> chosen;
    for (const QModelIndex& index : ui->lsvRows->selectionModel()->selectedRows())
        chosen.push_back(index.row());
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

QString frmSegments::typedGroup() const {
    const QString typed = nameOf(*ui->cboGroup);
    const int known = ui->cboGroup->findText(typed, Qt::MatchFixedString);
    return known >= 0 ? ui->cboGroup->itemText(known) : typed;
}

void frmSegments::cmdSet_Click() {
    if (!takeKind()) // a press of an access key leaves it in its box
        return;
    if (chosenRows().empty()) {
        forms::msgBox(u"Choose customers or respondents first."_s, style::information, titleWithVersion);
        return;
    }
    rows->setGroup(chosenRows(), typedGroup());
    showChanges();
}

void frmSegments::cmdTakeOut_Click() {
    if (!takeKind())
        return;
    rows->setGroup(chosenRows(), {});
    showChanges();
}

void frmSegments::cmdRename_Click() {
    if (!takeKind())
        return;
    const std::vector<int> chosen = chosenRows();
    const QString from = chosen.empty() ? QString() : rows->groupAt(chosen.front());
    if (from.isEmpty() || typedGroup().isEmpty()) {
        forms::msgBox(u"Choose a row of the group and type its new name."_s, style::information,
                      titleWithVersion);
        return;
    }
    rows->renameGroup(from, nameOf(*ui->cboGroup));
    showChanges();
}

void frmSegments::cmdSave_Click() {
    bool isSettled = true;
    const bool isSaved = guarded([&] {
        const Busy busy(*this, u"Saving the groups......"_s);
        isSettled = edits.save();
    });
    if (isSaved && isSettled)
        showDone(u"Groups saved"_s);
    if (isSettled)
        showKind(rows->kind());
}
