// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmParameter.h"

#include "core/base/backup.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "ui_frmParameter.h"

using namespace Qt::StringLiterals;
using forms::msgBox;
namespace style = forms::style;

namespace {

constexpr int helpContext = 2;
constexpr int paramidColumn = 2;
constexpr int typeColumn = 2;
constexpr int questionidColumn = 3;

/// In the Type column one key fills the word: S Score, D Descriptive. Whatever does not begin with one of
/// these capitals is wiped.
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
    parameters = new GridEditor(gridRules::parameter, ui->grdParameterDtls, ui->txtParameterDtls);
    questions = new GridEditor(gridRules::question, ui->grdQuestionDtls, ui->txtQuestionDtls);
    connectEvents();
}

frmParameter::~frmParameter() = default;

QLineEdit* frmParameter::txtParameterDtls() const {
    return ui->txtParameterDtls;
}

void frmParameter::toFocusParameter() {
    SetEditParameterTextBox(1, ui->grdParameterDtls->Row());
    parameters->focusBox();
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
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { toShowHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->grdParameterDtls, &forms::MSHFlexGrid::Click, this, &frmParameter::grdParameterDtls_Click);
    parameters->enterCommand = [this] { cmdAddParameter(); };
    parameters->onRowChange = [this](GridEditor::RowMove) { grdParameterDtls_Click(); };
    questions->onChange = [this](const QString& text) { txtQuestionDtls_Change(text); };
    questions->fit = [](int, int col, const QString& text) -> std::optional<QString> {
        if (col != typeColumn || text.trimmed().isEmpty())
            return text;
        const QString type = typeOf(text);
        return type.isEmpty() ? std::nullopt : std::optional(type);
    };
}

void frmParameter::onLoad() {
    toReconnect();
    setTop(0);
    setLeft(0);
    toSetWidthForParamGrid();
    toSetWidthForQuestionGrid();
    toRefreshPrameterDetails();
    SetEditParameterTextBox(ui->grdParameterDtls->Col(), 1);
    SetEditQuestionTextBox(1, 1);
    grdParameterDtls_Click();
    SetEditParameterTextBox(1, 1);
    ui->cmbType->AddItem(u"Score"_s);
    ui->cmbType->AddItem(u"Descriptive"_s);
}

void frmParameter::toSetWidthForParamGrid() {
    toSetHeadsAndWidths(ui->grdParameterDtls, {u"Parameter Name"_s}, {0.1, 0.85, 0});
}

void frmParameter::toSetWidthForQuestionGrid() {
    toSetHeadsAndWidths(ui->grdQuestionDtls, {u"Question"_s, u"Type"_s}, {0.02, 0.84, 0.1, 0});
}

void frmParameter::SetEditParameterTextBox(int ColPos, int RowPos) {
    guarded({.prefix = u"Error :"_s}, [&] { parameters->setEdit(ColPos, RowPos); });
}

void frmParameter::SetEditQuestionTextBox(int ColPos, int RowPos) {
    guarded({.prefix = u"Error :"_s}, [&] { questions->setEdit(ColPos, RowPos); });
}

QString frmParameter::currentParamID() const {
    return currentKey(ui->grdParameterDtls, paramidColumn);
}

void frmParameter::grdParameterDtls_Click() {
    toRefreshQuestionDtls();
}

void frmParameter::txtQuestionDtls_Change(const QString& text) {
    forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    const QString taken = grid->Col() == typeColumn ? typeOf(text) : text;
    if (taken != text)
        ui->txtQuestionDtls->setText(taken);
    grid->setTextMatrix(grid->Row(), grid->Col(), taken);
}

void frmParameter::toRefreshPrameterDetails() {
    guarded({.form = this}, [this] {
        toReconnect();
        const QString inHand = currentParamID();
        ado::Recordset parameter;
        parameter.Open(u"select * from parameter"_s, *cnnMain);
        if (parameter.Eof())
            toEmptyGrid(ui->grdParameterDtls);
        else
            toFillGridFrom(ui->grdParameterDtls, parameter, {"parametername", "paramid"});
        goToKey(ui->grdParameterDtls, paramidColumn, inHand);
    });
}

void frmParameter::toRefreshQuestionDtls() {
    forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    const QString paramid = currentParamID();
    const QString inHand = currentKey(grid, questionidColumn);
    if (questionsOf != paramid) { // also when they cannot be read
        questionsOf.reset();
        toEmptyGrid(grid);
        SetEditQuestionTextBox(grid->Col(), grid->Row());
    }
    const bool read = guarded({.form = this}, [&] {
        toReconnect();
        ado::Recordset question;
        if (!paramid.isEmpty())
            question.Open(u"select * from questions where paramid ="_s + paramid, *cnnMain);
        if (!question.IsOpen() || question.Eof()) {
            toEmptyGrid(grid);
        } else {
            grid->setRows(question.RecordCount() + 1);
            for (int row = 1; !question.Eof(); question.MoveNext(), ++row) {
                grid->setTextMatrix(row, 1, question["question"].Text());
                grid->setTextMatrix(row, typeColumn,
                                    question["Type"].Value().toBool() ? u"Score"_s : u"Descriptive"_s);
                grid->setTextMatrix(row, questionidColumn, question["questionid"].Text());
            }
        }
        goToKey(grid, questionidColumn, inHand);
        SetEditQuestionTextBox(grid->Col(), grid->Row());
    });
    if (read)
        questionsOf = paramid;
}

void frmParameter::toSaveParameterDtls() {
    setMousePointer(forms::Hourglass);
    forms::MSHFlexGrid* grid = ui->grdParameterDtls;
    QString inHand;
    const bool saved = guarded({.form = this}, [&] {
        toReconnect();
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString paramid = toSaveParameterRow(row);
            if (row == grid->Row())
                inHand = paramid;
        }
        transaction.Commit();
    });
    if (!saved)
        return;
    if (currentParamID().isEmpty() && questionsOf == QString() && !inHand.isEmpty())
        questionsOf = inHand; // typed for the new parameter
    grid->setTextMatrix(grid->Row(), paramidColumn, inHand);
    toRefreshPrameterDetails();
    if (questionsOf != currentParamID())
        grdParameterDtls_Click(); // the row in hand was not stored
    SetEditParameterTextBox(ui->grdParameterDtls->Col(), ui->grdParameterDtls->Row());
    setMousePointer(forms::DefaultPointer);
}

QString frmParameter::toSaveParameterRow(int row) {
    const QString name = toStoredText(ui->grdParameterDtls->TextMatrix(row, 1));
    const QString paramid = ui->grdParameterDtls->TextMatrix(row, paramidColumn);
    ado::Recordset parameter;
    if (!paramid.isEmpty()) {
        parameter.Open(u"select * from parameter where paramid="_s + paramid, *cnnMain,
                       ado::Recordset::Lock::Optimistic);
        if (parameter.Eof())
            return {};
    } else {
        parameter.Open(u"select * from parameter where parametername='"_s + name + u"'", *cnnMain,
                       ado::Recordset::Lock::Optimistic);
        if (!parameter.Eof())
            return {}; // a parameter of that name exists
        parameter.AddNew();
    }
    parameter["parametername"] = name;
    parameter.Update();
    return parameter["paramid"].Text();
}

void frmParameter::toSaveQuestionDetails() {
    if (questionsOf != currentParamID()) {
        msgBox(
            u"The questions of this parameter could not be read. Click the parameter to read them. Nothing "
            "has been saved."_s,
            style::information, u"Gaugewell v2.1"_s);
        return;
    }
    setMousePointer(forms::Hourglass);
    forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    QString inHand;
    const bool saved = guarded({.form = this}, [&] {
        toReconnect();
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString questionid = toSaveQuestionRow(row);
            if (row == grid->Row())
                inHand = questionid;
        }
        transaction.Commit();
    });
    if (saved) {
        grid->setTextMatrix(grid->Row(), questionidColumn, inHand);
        toRefreshQuestionDtls();
    }
    setMousePointer(forms::DefaultPointer);
}

QString frmParameter::toSaveQuestionRow(int row) {
    const forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    const QString typed = grid->TextMatrix(row, 1);
    const QString text = toStoredText(typed);
    QString questionid = grid->TextMatrix(row, questionidColumn);
    const QString byText =
        u"select * from questions where question='"_s + text + u"' and Paramid=" + currentParamID();
    // A stored question whose text has gained an apostrophe is looked up by that text, and so is not found.
    const bool byId = !questionid.isEmpty() && typed == text;
    ado::Recordset question;
    question.Open(byId ? u"select * from questions where questionid="_s + questionid : byText, *cnnMain,
                  ado::Recordset::Lock::Optimistic);
    if (questionid.isEmpty()) {
        if (!question.Eof())
            return {}; // the parameter has that question
        question.AddNew();
    } else if (question.Eof()) {
        return questionid;
    }
    question["question"] = text;
    question["Type"] = grid->TextMatrix(row, typeColumn) == u"Score";
    question["paramid"] = currentParamID();
    question.Update();
    return question["questionid"].Text();
}

bool frmParameter::toConfirmDeletion(const QString& paramid) {
    if (ui->grdQuestionDtls->TextMatrix(1, questionidColumn).isEmpty())
        return true;
    ado::Recordset question;
    question.Open(u"select * from questions where paramid="_s + paramid, *cnnMain);
    const bool hasQuestions = !question.Eof();
    question.Close(); // nothing stays locked while the question is on the screen
    return hasQuestions &&
           msgBox(u"Deleting of parameter will delete all the Corresponding records"_s,
                  style::okCancel + style::secondButton, u"Gaugewell v2.1"_s) == forms::Answer::Ok;
}

void frmParameter::toDeleteparameter() {
    guarded({.form = this}, [this] {
        toReconnect();
        forms::MSHFlexGrid* grid = ui->grdParameterDtls;
        const QString paramid = currentParamID();
        if (questionsOf != paramid)
            toRefreshQuestionDtls();
        if (questionsOf != paramid) // it is not known whether the parameter has any
            return;
        if (!paramid.isEmpty() && toConfirmDeletion(paramid)) {
            toBackupBeforeLoss();
            cnnMain->Execute(u"delete * from parameter where paramid="_s + paramid);
        }
        if (grid->Rows() > 2) {
            // Stores the edits of the rows that stay. The refresh brings the last row back if the database
            // still has it.
            grid->setRows(grid->Rows() - 1);
            grid->setRow(grid->Rows() - 1);
            cmdSaveParameter();
        }
        toRefreshPrameterDetails();
        SetEditParameterTextBox(grid->Col(), grid->Row());
        toRefreshQuestionDtls();
    });
}

void frmParameter::toDeleteQuestionDetails() {
    guarded({.form = this}, [this] {
        toReconnect();
        ui->cmbType->hide();
        const forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
        const QString questionid = grid->TextMatrix(grid->Row(), questionidColumn);
        if (!questionid.isEmpty() && !grid->TextMatrix(grid->Row(), 1).isEmpty()) {
            toBackupBeforeLoss();
            cnnMain->Execute(u"delete * from Questions where questionid="_s + questionid);
        }
        toRefreshQuestionDtls();
    });
}

bool frmParameter::toCheckParameters(const QString& message) {
    const int blank = toFindBlank(ui->grdParameterDtls, 1);
    if (blank == 0)
        return true;
    msgBox(message, style::critical, u"Gaugewell v2.1"_s);
    const bool moves = blank != ui->grdParameterDtls->Row();
    SetEditParameterTextBox(1, blank);
    if (moves)
        grdParameterDtls_Click(); // the questions in sight are those of the row in hand
    parameters->focusBox();
    return false;
}

bool frmParameter::toCheckQuestions(const QString& message) {
    const int blank = toFindBlank(ui->grdQuestionDtls, 1);
    if (blank == 0)
        return true;
    msgBox(message, style::critical, u"Gaugewell v2.1"_s);
    SetEditQuestionTextBox(1, blank);
    questions->focusBox();
    return false;
}

void frmParameter::cmdAddParameter() {
    if (!toCheckParameters(u"Parameter Name Cannot be left blank....Error"_s))
        return;
    toShowStatus(u"Adding Parameter....."_s);
    cmdSaveParameter();
    forms::MSHFlexGrid* grid = ui->grdParameterDtls;
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    grdParameterDtls_Click();
    SetEditParameterTextBox(1, grid->Row());
    parameters->focusBox();
    toShowStatus({});
}

void frmParameter::cmdSaveParameter() {
    if (!toCheckParameters(u"Parameter Name cannot be left blank....Error"_s))
        return;
    toShowStatus(u"Saving Parameter ....."_s);
    toSaveParameterDtls();
    SetEditParameterTextBox(1, ui->grdParameterDtls->Row());
    parameters->focusBox();
    toShowStatus({});
}

void frmParameter::cmdDeleteParameter() {
    toShowStatus(u"Deleting Parameter...."_s);
    toDeleteparameter();
    SetEditParameterTextBox(1, ui->grdParameterDtls->Row());
    parameters->focusBox();
    toShowStatus({});
}

void frmParameter::cmdAddQuestion() {
    if (!toCheckQuestions(u"Question Cannot be left blank....Error"_s))
        return;
    toShowStatus(u"Adding Question....."_s);
    cmdSaveQuestion();
    forms::MSHFlexGrid* grid = ui->grdQuestionDtls;
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    SetEditQuestionTextBox(1, grid->Row());
    questions->focusBox();
    toShowStatus({});
}

void frmParameter::cmdSaveQuestion() {
    if (!toCheckQuestions(u"Question name cannot be left blank...Error"_s))
        return;
    toShowStatus(u"Saving Question....."_s);
    toSaveQuestionDetails();
    SetEditQuestionTextBox(1, ui->grdQuestionDtls->Row());
    questions->focusBox();
    toShowStatus({});
}

void frmParameter::cmdDeleteQuestion() {
    toShowStatus(u"Deleting Question...."_s);
    toDeleteQuestionDetails();
    SetEditQuestionTextBox(1, ui->grdQuestionDtls->Row());
    questions->focusBox();
    toShowStatus({});
}
