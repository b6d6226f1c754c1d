// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmParameter.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "ui_frmParameter.h"

using namespace Qt::StringLiterals;
using forms::msgBox;
namespace style = forms::style;

namespace {

constexpr int helpContext = 2;
constexpr int typeColumn = 2;

/// Completes a type: s becomes Score, d Descriptive. Returns an empty text for anything that does not begin
/// with a capital S or D.
QString typeOf(const QString& text) {
    const QString letter = text.trimmed().toUpper();
    if (letter == u"S")
        return u"Score"_s;
    if (letter == u"D")
        return u"Descriptive"_s;
    return text.startsWith(u'D') || text.startsWith(u'S') ? text : QString();
}

} // namespace

frmParameter::frmParameter() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmParameter>()) {
    ui->setupUi(this);
    parameters = new CatalogueTable(*this, gridrules::parameter, ui->grdParameterDtls, ui->txtParameterDtls,
                                    "parameter", {"parametername", "paramid"});
    questions = new CatalogueTable(*this, gridrules::question, ui->grdQuestionDtls, ui->txtQuestionDtls,
                                   "questions", {"question", "Type", "questionid"});
    parameters->lower = questions;
    parameters->noun = u"parameter"_s;
    questions->noun = u"question"_s;
    questions->unsavedHint = ui->lblUnsaved;
    connectEvents();
}

frmParameter::~frmParameter() = default;

QLineEdit* frmParameter::txtParameterDtls() const {
    return ui->txtParameterDtls;
}

void frmParameter::focusParameter() {
    parameters->editFirst();
}

void frmParameter::connectEvents() {
    const auto onClick = [this](QPushButton* button, void (frmParameter::*command)()) {
        connect(button, &QPushButton::clicked, this, command);
    };
    onClick(ui->cmdAddParameter, &frmParameter::cmdAddParameter);
    onClick(ui->cmdSaveParameter, &frmParameter::cmdSaveParameter);
    onClick(ui->cmdDeleteParameter, &frmParameter::cmdDeleteParameter);
    onClick(ui->cmdAddQuestion, &frmParameter::cmdAddQuestion);
    onClick(ui->cmdSaveQuestion, &frmParameter::cmdSaveQuestion);
    onClick(ui->cmdDeleteQuestion, &frmParameter::cmdDeleteQuestion);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->grdParameterDtls, &forms::MSHFlexGrid::Click, this, &frmParameter::toRefreshQuestionDtls);
    parameters->selectFor = [this](int row) { return parameterSelect(row); };
    parameters->write = [this](int row, ado::Recordset& parameter) {
        parameter["parametername"] = toStoredText(parameters->cell(row, 1));
    };
    parameters->refresh = [this] { toRefreshPrameterDetails(); };
    parameters->refreshLower = [this] { toRefreshQuestionDtls(); };
    parameters->enterCommand = [this] { cmdAddParameter(); };
    parameters->onRowChange = [this](GridEditor::RowMove) { toRefreshQuestionDtls(); };
    questions->selectFor = [this](int row) { return questionSelect(row); };
    questions->write = [this](int row, ado::Recordset& question) { writeQuestion(row, question); };
    questions->refresh = [this] { toRefreshQuestionDtls(); };
    questions->displayText = [](int col, const QString& text) {
        return col != typeColumn ? text : text == ado::toText(true) ? u"Score"_s : u"Descriptive"_s;
    };
    questions->onChange = [this](const QString& text) { txtQuestionDtls_Change(text); };
    questions->fit = [](int, int col, const QString& text) -> std::optional<QString> {
        if (col != typeColumn || text.trimmed().isEmpty())
            return text;
        const QString type = typeOf(text);
        return type.isEmpty() ? std::nullopt : std::optional(type);
    };
}

void frmParameter::onLoad() {
    reconnect();
    setTop(0);
    setLeft(0);
    toSetWidthForParamGrid();
    toSetWidthForQuestionGrid();
    toRefreshPrameterDetails();
    SetEditParameterTextBox(ui->grdParameterDtls->Col(), 1);
    SetEditQuestionTextBox(1, 1);
    toRefreshQuestionDtls();
    SetEditParameterTextBox(1, 1);
    ui->cmbType->AddItem(u"Score"_s);
    ui->cmbType->AddItem(u"Descriptive"_s);
}

void frmParameter::toSetWidthForParamGrid() {
    setHeadsAndWidths(ui->grdParameterDtls, {u"Parameter Name"_s}, {0.1, 0.85, 0});
}

void frmParameter::toSetWidthForQuestionGrid() {
    setHeadsAndWidths(ui->grdQuestionDtls, {u"Question"_s, u"Type"_s}, {0.02, 0.84, 0.1, 0});
}

void frmParameter::SetEditParameterTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { parameters->setEdit(ColPos, RowPos); });
}

void frmParameter::SetEditQuestionTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { questions->setEdit(ColPos, RowPos); });
}

void frmParameter::txtQuestionDtls_Change(const QString& text) {
    forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    const QString taken = grid->Col() == typeColumn ? typeOf(text) : text;
    if (taken != text)
        ui->txtQuestionDtls->setText(taken);
    grid->setTextMatrix(grid->Row(), grid->Col(), taken);
}

void frmParameter::toRefreshPrameterDetails() {
    parameters->read(u"select * from parameter"_s);
}

void frmParameter::toRefreshQuestionDtls() {
    const QString paramid = parameters->key();
    questions->readOf(paramid, u"select * from questions where paramid ="_s + paramid);
}

void frmParameter::toSaveParameterDtls() {
    parameters->save();
}

QString frmParameter::parameterSelect(int row) const {
    if (!parameters->key(row).isEmpty())
        return {};
    return u"select * from parameter where parametername='"_s + toStoredText(parameters->cell(row, 1)) + u"'";
}

void frmParameter::toSaveQuestionDetails() {
    if (questions->owner() == parameters->key()) {
        questions->save();
        return;
    }
    msgBox(u"The questions of this parameter could not be read. Click the parameter to read them. Nothing "
           "has been saved."_s,
           style::information, titleWithVersion);
}

QString frmParameter::questionSelect(int row) const {
    const QString typed = questions->cell(row, 1);
    const QString text = toStoredText(typed);
    if (!questions->key(row).isEmpty() && typed == text)
        return {};
    // A stored question with a new apostrophe is looked up by its new text, so it is not found and is
    // skipped.
    return u"select * from questions where question='"_s + text + u"' and Paramid=" + parameters->key();
}

void frmParameter::writeQuestion(int row, ado::Recordset& question) const {
    question["question"] = toStoredText(questions->cell(row, 1));
    question["Type"] = questions->cell(row, typeColumn) == u"Score";
    question["paramid"] = parameters->key();
}

bool frmParameter::confirmDeletion(const QString& paramid) {
    return questions->key(1).isEmpty() ||
           (hasRecords(u"select * from questions where paramid="_s + paramid) &&
            msgBox(u"Deleting of parameter will delete all the Corresponding records"_s,
                   style::okCancel + style::secondButton, titleWithVersion) == forms::Answer::Ok);
}

void frmParameter::toDeleteparameter() {
    guarded([this] {
        forms::MSHFlexGrid* grid = ui->grdParameterDtls;
        const QString paramid = parameters->key();
        if (questions->owner() != paramid)
            toRefreshQuestionDtls();
        if (questions->owner() != paramid) // still unknown whether it has questions
            return;
        const bool removes = !paramid.isEmpty() && confirmDeletion(paramid);
        if (removes)
            parameters->remove(u"delete * from parameter where paramid="_s + paramid);
        if (grid->Rows() > 2) {
            // Stores the edits of the other rows. The last row comes back with the reload if it is still
            // stored.
            grid->setRows(grid->Rows() - 1);
            grid->setRow(grid->Rows() - 1);
            toRefreshQuestionDtls(); // the save may ask about it, over the form
            parameters->editCurrent();
            cmdSaveParameter();
            if (removes)
                parameters->showRemoved(); // and not what the save has written
        }
        toRefreshPrameterDetails();
        parameters->editCurrent();
        toRefreshQuestionDtls();
    });
}

void frmParameter::toDeleteQuestionDetails() {
    guarded([this] {
        ui->cmbType->hide();
        if (!questions->cell(ui->grdQuestionDtls->Row(), 1).isEmpty())
            questions->remove(u"delete * from Questions where questionid="_s + questions->key());
        toRefreshQuestionDtls();
    });
}

void frmParameter::cmdAddParameter() {
    if (!parameters->check(1, u"Parameter Name Cannot be left blank....Error"_s, titleWithVersion))
        return;
    const Busy busy(*this, u"Adding Parameter....."_s);
    cmdSaveParameter();
    parameters->append();
}

void frmParameter::cmdSaveParameter() {
    if (!parameters->check(1, u"Parameter Name cannot be left blank....Error"_s, titleWithVersion))
        return;
    const Busy busy(*this, u"Saving Parameter ....."_s);
    toSaveParameterDtls();
    parameters->editFirst();
}

void frmParameter::cmdDeleteParameter() {
    showStatus(u"Deleting Parameter...."_s);
    toDeleteparameter();
    parameters->editFirst();
    showStatus({});
}

void frmParameter::cmdAddQuestion() {
    if (!questions->check(1, u"Question Cannot be left blank....Error"_s, titleWithVersion))
        return;
    showStatus(u"Adding Question....."_s);
    cmdSaveQuestion();
    questions->append();
    showStatus({});
}

void frmParameter::cmdSaveQuestion() {
    if (!questions->check(1, u"Question name cannot be left blank...Error"_s, titleWithVersion))
        return;
    showStatus(u"Saving Question....."_s);
    toSaveQuestionDetails();
    questions->editFirst();
    showStatus({});
}

void frmParameter::cmdDeleteQuestion() {
    const Busy busy(*this, u"Deleting Question...."_s);
    toDeleteQuestionDetails();
    questions->editFirst();
}
