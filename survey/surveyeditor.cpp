// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/surveyeditor.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "core/base/shell.h"
#include "exchange/setting.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "ui_surveyeditor.h"

#include <QAbstractButton>
#include <QTextDocument>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int parameterColumn = 1;
constexpr int questionColumn = 2;
constexpr int rowsWithQuestions = 3; // head row, one question, the blank row
constexpr int rowsThatScroll = 8;

} // namespace

SurveyEditor::SurveyEditor(Kind windowKind)
    : Form(windowKind), editor(std::make_unique<Ui::SurveyEditor>()) {}

SurveyEditor::~SurveyEditor() = default;

void SurveyEditor::setUp(QWidget* head) {
    editor->setupUi(this);
    editor->layout->insertWidget(0, head);
    setObjectName(head->objectName());
    head->setObjectName(u"survey"_s);
    editor->cmdAdd->setIcon(picture(u"add"_s));
    editor->cmdRemove->setIcon(picture(u"remove"_s));
    editor->cmdUpward->setIcon(picture(u"up"_s));
    editor->cmdDownward->setIcon(picture(u"down"_s));
    connectTree();
    connectButtons();
    connect(editor->grdParamAndQuest, &forms::MSHFlexGrid::DblClick, this,
            &SurveyEditor::grdParamAndQuest_DblClick);
    connect(editor->grdParamAndQuest, &forms::MSHFlexGrid::DragDrop, this, [this] {
        blnNodeDragged = true;
        droppedOn = this;
    });
}

void SurveyEditor::connectTree() {
    using forms::TreeView;
    TreeView* tree = editor->trvParameter;
    connect(tree, &TreeView::DblClick, this, &SurveyEditor::trvParameter_DblClick);
    connect(tree, &TreeView::KeyDown, this, &SurveyEditor::trvParameter_KeyDown);
    connect(tree, &TreeView::OLECompleteDrag, this, &SurveyEditor::trvParameter_OLECompleteDrag);
    // What another program has let go over a grid is not the end of the drag that may begin here.
    connect(tree, &TreeView::itemPressed, this, [] { blnNodeDragged = false; });
    const auto showFolder = [](QTreeWidgetItem* node, const QString& name) {
        if (!node->parent()) // a question keeps the picture of its type
            node->setIcon(0, picture(name));
    };
    connect(tree, &TreeView::itemExpanded, this,
            [=](QTreeWidgetItem* node) { showFolder(node, u"folder-open"_s); });
    connect(tree, &TreeView::itemCollapsed, this,
            [=](QTreeWidgetItem* node) { showFolder(node, u"folder-closed"_s); });
}

void SurveyEditor::connectButtons() {
    const auto onClick = [this](QAbstractButton* button, const auto& command) {
        connect(button, &QAbstractButton::clicked, this, command);
    };
    onClick(editor->cmdAdd, [this] { cmdAdd(); });
    onClick(editor->cmdRemove, [this] { cmdRemove(); });
    onClick(editor->cmdUpward, [this] { cmdMove(&SurveyEditor::toMoveRowUpward); });
    onClick(editor->cmdDownward, [this] { cmdMove(&SurveyEditor::toMoveRowDownward); });
    onClick(editor->cmdSave, [this] { cmdSave(); });
    onClick(editor->cmdCopy, [this] { cmdCopy(); });
    onClick(editor->cmdExport, [this] { startExport(false); });
    onClick(editor->cmdmail, [this] { startExport(true); });
    onClick(editor->cmdPrint, [this] { cmdPrint(); });
    onClick(editor->cmdClose, [this] { Unload(); });
    onClick(editor->cmdHelp, [this] { showHelpTopic(helpContext()); });
}

void SurveyEditor::onLoad() {
    blnMail = false;
    strXLSFileName.clear();
    setLeft(0);
    setTop(0);
    setHeadsAndWidths(editor->grdParamAndQuest, {u"Parameter"_s, u"Question"_s}, {0.05, 0.2, 0.7}, false);
    buildTree();
}

void SurveyEditor::onActivate() {
    blnSetting = toGetSetting();
    showStored();
}

void SurveyEditor::buildTree() {
    guarded([this] {
        ado::Recordset param;
        param.Open(u"select distinct(parametername) from param"_s, *cnnMain);
        for (; !param.Eof(); param.MoveNext()) {
            strParam = param["parametername"].Text();
            auto* node = new QTreeWidgetItem(editor->trvParameter, {strParam});
            node->setIcon(0, picture(u"folder-closed"_s));
            node->setToolTip(0, Qt::convertFromPlainText(strParam));
            BuildNode();
        }
    });
}

void SurveyEditor::BuildNode() {
    guarded([this] {
        QTreeWidgetItem* parameter =
            editor->trvParameter->findItems(strParam, Qt::MatchExactly | Qt::MatchCaseSensitive).value(0);
        if (!parameter)
            return;
        ado::Recordset param;
        param.Open(u"select distinct(question),type from param where parametername='"_s + strParam + u"'",
                   *cnnMain);
        const QIcon score = picture(u"question-score"_s);
        const QIcon descriptive = picture(u"question-descriptive"_s);
        for (; !param.Eof(); param.MoveNext()) {
            auto* node = new QTreeWidgetItem(parameter, {param["question"].Text()});
            node->setIcon(0, param["type"].Value().toBool() ? score : descriptive);
            node->setToolTip(0, Qt::convertFromPlainText(node->text(0))); // the tree cuts long ones off
        }
    });
}

ChosenQuestion SurveyEditor::questionAt(int row) const {
    const forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    return {grid->TextMatrix(row, parameterColumn), grid->TextMatrix(row, questionColumn)};
}

std::vector<ChosenQuestion> SurveyEditor::chosenQuestions() const {
    std::vector<ChosenQuestion> questions;
    for (int row = 1; row <= editor->grdParamAndQuest->Rows() - 2; ++row)
        questions.push_back(questionAt(row));
    return questions;
}

bool SurveyEditor::hasQuestions() const {
    return editor->grdParamAndQuest->Rows() >= rowsWithQuestions;
}

bool SurveyEditor::isChosen(const ChosenQuestion& question) const {
    for (int row = 1; row < editor->grdParamAndQuest->Rows(); ++row) {
        if (questionAt(row) == question)
            return true;
    }
    return false;
}

void SurveyEditor::cmdAdd() {
    forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    const QTreeWidgetItem* nodCurrent = editor->trvParameter->SelectedItem();
    if (!nodCurrent) {
        forms::msgBox(u"Select a Question to add"_s, forms::style::critical, u"Gaugewell v2.1"_s);
        editor->trvParameter->setFocus();
        showStatus({});
        return;
    }
    if (!nodCurrent->parent())
        return;
    const ChosenQuestion question{nodCurrent->parent()->text(0), nodCurrent->text(0)};
    if (unread)
        toRefreshGrid();
    if (unread || question == ChosenQuestion() || isChosen(question) || !mayAdd())
        return;
    const Busy busy(*this, u"saving...."_s);
    insertAtCursor(question);
    cmdSave();
    if (grid->Rows() >= rowsThatScroll)
        grid->setTopRow(grid->Rows() - 2);
    grid->setFocus();
}

/// The rows from the cursor on move one down. On the blank row, which the cursor then leaves to the question,
/// there are none.
void SurveyEditor::insertAtCursor(const ChosenQuestion& question) {
    forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    const auto put = [grid](int row, const ChosenQuestion& chosen) {
        grid->setTextMatrix(row, questionColumn, chosen.question);
        grid->setTextMatrix(row, parameterColumn, chosen.parameter);
    };
    grid->setRows(grid->Rows() + 1);
    for (int row = grid->Rows() - 2; row > grid->Row(); --row)
        put(row, questionAt(row - 1));
    put(grid->Row(), question);
}

void SurveyEditor::cmdRemove() {
    const Busy busy(*this, u"Removing...."_s);
    forms::MSHFlexGrid* grid = editor->grdParamAndQuest;
    intDel = 1;
    if (hasQuestions()) {
        if (grid->Row() != grid->Rows() - 1) {
            grid->RemoveItem(grid->Row());
            cmdSave();
        }
    } else {
        emptyGrid(grid);
        if (hasSurveyDate())
            cmdSave();
    }
}

void SurveyEditor::cmdCopy() {
    const Busy busy(*this, u"Opening Form....."_s);
    importSurvey();
}

void SurveyEditor::cmdMove(void (SurveyEditor::*command)()) {
    if (!hasQuestions())
        return;
    const Busy busy(*this, u"Setting Priority...."_s);
    (this->*command)();
}

void SurveyEditor::trvParameter_DblClick() {
    const Busy busy(*this, u"saving...."_s);
    intDel = 0;
    cmdAdd();
}

void SurveyEditor::trvParameter_KeyDown(int key) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return;
    const Busy busy(*this, u"saving..."_s);
    cmdAdd();
}

void SurveyEditor::trvParameter_OLECompleteDrag() {
    const Busy busy(*this, u"saving...."_s);
    const bool isDropped = std::exchange(blnNodeDragged, false);
    if (isDropped && droppedOn == this)
        cmdAdd();
}

void SurveyEditor::grdParamAndQuest_DblClick() {
    cmdRemove();
}
