// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/surveyeditor.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "core/base/shell.h"
#include "core/store/textlookup.h"
#include "core/store/transaction.h"
#include "exchange/setting.h"
#include "platform/forms/msgbox.h"
#include "ui_surveyeditor.h"

#include <QAbstractButton>
#include <QTextDocument>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int questionsThatScroll = 6;

/// The questions of one list that the other lacks, each after a sign.
QStringList without(const std::vector<ChosenQuestion>& list, const std::vector<ChosenQuestion>& other,
                    const QString& sign) {
    QStringList names;
    for (const ChosenQuestion& chosen : list) {
        if (std::find(other.begin(), other.end(), chosen) == other.end())
            names << sign + chosen.question + u" (" + chosen.parameter + u")";
    }
    return names;
}

/// What has become of the questions, such as "+ On time? (Delivery)".
QString differences(const std::vector<ChosenQuestion>& before, const std::vector<ChosenQuestion>& now) {
    const QStringList names = without(now, before, u"+ "_s) + without(before, now, u"\u2212 "_s);
    return names.isEmpty() ? u"another order"_s : names.join(u'\n');
}

/// The questions of each parameter. They are read together unless parameters differ in a way that is none to
/// the store.
std::map<QString, SurveyEditor::Questions> readCatalogue(const QStringList& parameters) {
    std::map<QString, SurveyEditor::Questions> questions;
    QStringList names = parameters;
    ado::Recordset param(u"select distinct parametername,question,type from param"_s, *cnnMain);
    for (; !param.Eof(); param.MoveNext()) {
        names << param["parametername"].Text();
        questions[names.last()].emplace_back(param["question"].Text(), param["type"].Value().toBool());
    }
    const bool isClear = !areConfusable(names);
    for (const QString& parameter : parameters) {
        if (isClear)
            continue;
        param.Open(u"select distinct(question),type from param where parametername='"_s + parameter + u"'",
                   *cnnMain);
        for (questions[parameter].clear(); !param.Eof(); param.MoveNext())
            questions[parameter].emplace_back(param["question"].Text(), param["type"].Value().toBool());
    }
    return questions;
}

} // namespace

SurveyEditor::SurveyEditor(Kind windowKind)
    : SurveyForm(windowKind), editor(std::make_unique<Ui::SurveyEditor>()) {}

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
    editor->grdParamAndQuest->setMarksRow(true);
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
    // A drop from another program does not end the drag that may begin here.
    connect(tree, &TreeView::itemPressed, this, [] { blnNodeDragged = false; });
    const auto showFolder = [](QTreeWidgetItem* node, const QString& name) {
        if (!node->parent()) // a question keeps its type's picture
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
    grid().setHeads();
    buildTree();
}

void SurveyEditor::onActivate() {
    blnSetting = toGetSetting();
    showStored();
}

void SurveyEditor::buildTree() {
    guarded([this] {
        QStringList names;
        ado::Recordset param(u"select distinct(parametername) from param order by parametername"_s, *cnnMain);
        for (; !param.Eof(); param.MoveNext())
            names << param["parametername"].Text();
        std::map<QString, Questions> catalogue = readCatalogue(names);
        for (const QString& name : names) {
            auto* node = new QTreeWidgetItem(editor->trvParameter, {name});
            node->setIcon(0, picture(u"folder-closed"_s));
            node->setToolTip(0, Qt::convertFromPlainText(name));
            buildNode(node, catalogue[name]);
        }
    });
}

void SurveyEditor::buildNode(QTreeWidgetItem* parameter, const Questions& questions) {
    const QIcon score = picture(u"question-score"_s);
    const QIcon descriptive = picture(u"question-descriptive"_s);
    for (const auto& [question, isScore] : questions) {
        auto* node = new QTreeWidgetItem(parameter, {question});
        node->setIcon(0, isScore ? score : descriptive);
        node->setToolTip(0, Qt::convertFromPlainText(question)); // the tree elides long ones
    }
}

QuestionGrid SurveyEditor::grid() const {
    return QuestionGrid(editor->grdParamAndQuest);
}

void SurveyEditor::cmdAdd() {
    const QTreeWidgetItem* nodCurrent = editor->trvParameter->SelectedItem();
    if (!nodCurrent) {
        forms::msgBox(u"Select a Question to add"_s, forms::style::critical, titleWithVersion);
        editor->trvParameter->setFocus();
        showStatus({});
        return;
    }
    if (!nodCurrent->parent())
        return;
    const ChosenQuestion question{nodCurrent->parent()->text(0), nodCurrent->text(0)};
    if (unread)
        toRefreshGrid();
    if (unread || question == ChosenQuestion() || grid().contains(question) || !mayAdd())
        return;
    const StatusWord saving(u"saving...."_s);
    grid().insertAtCursor(question);
    cmdSave();
    if (grid().count() >= questionsThatScroll)
        editor->grdParamAndQuest->setTopRow(grid().count());
    editor->grdParamAndQuest->setFocus();
}

void SurveyEditor::cmdRemove() {
    Busy busy(*this, u"Removing...."_s);
    intDel = 1;
    if (hasQuestions()) {
        if (!grid().isOnBlankRow()) {
            grid().removeAtCursor();
            cmdSave();
        }
    } else {
        grid().clear();
        if (hasSurveyDate())
            cmdSave();
        else
            busy.keep();
    }
}

void SurveyEditor::cmdCopy() {
    const Busy busy(*this, u"Opening Form....."_s);
    importSurvey();
}

void SurveyEditor::cmdMove(void (SurveyEditor::*command)()) {
    if (!hasQuestions())
        return;
    const StatusWord moving(u"Setting Priority...."_s);
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
    const StatusWord saving(u"saving...."_s);
    const bool isDropped = std::exchange(blnNodeDragged, false);
    if (isDropped && droppedOn == this)
        cmdAdd();
}

void SurveyEditor::grdParamAndQuest_DblClick() {
    cmdRemove();
}

void SurveyEditor::toSaveSurveyID() {
    guarded([this] { addSurvey(context()); });
}

std::vector<ChosenQuestion> SurveyEditor::rewrite() {
    return rewriteQuestionnaire(requireSurveyKey(context()), grid().questions());
}

void SurveyEditor::toSaveParamAndQuest() {
    if (unread) { // the grid does not show what is stored, so it must not be stored instead
        toRefreshGrid();
        return;
    }
    if (!settleChanges())
        return;
    if (settlement.leavesAny() || isOvertaken) {
        showStored();
        return;
    }
    std::vector<ChosenQuestion> leftOut;
    const bool saved = guarded([&] {
        Transaction transaction;
        settlement.require({}, changedMeanwhile());
        toSaveSurveyID();
        leftOut = rewrite();
        transaction.Commit();
        intDel = 1;
    });
    if (!saved) {
        showStored();
        return;
    }
    toRefreshGrid();
    showDone(u"Questionnaire saved with "_s + counted(qsizetype(grid().questions().size()), u"question"_s));
    if (leftOut.empty())
        return;
    QString sentence = u"No longer in the catalogue and not added:"_s;
    for (const ChosenQuestion& chosen : leftOut)
        sentence += u"\r\n"_s + chosen.question + u" (" + chosen.parameter + u")";
    forms::msgBox(sentence, forms::style::critical, titleWithVersion);
}

void SurveyEditor::noteAsRead() {
    asRead = grid().questions();
    idsAsRead = readQuestionIds(findSurveyKey(context()));
}

bool SurveyEditor::isChangedElsewhere() const {
    const SurveyKey survey = findSurveyKey(shown);
    return shown == context() && survey.respondentid != 0 && readQuestionIds(survey) != idsAsRead;
}

ChangedRow SurveyEditor::changedMeanwhile() const {
    const std::vector<ChosenQuestion> mine = grid().questions();
    if (mine == asRead || !isChangedElsewhere())
        return {};
    const std::vector<ChosenQuestion> stored = readQuestionnaire(findSurveyKey(shown));
    if (mine == stored)
        return {};
    return {u"Questionnaire of "_s + shown.respondent + u", " + shown.date,
            {{u"Questions"_s, u"%1 questions"_s.arg(asRead.size()), differences(asRead, stored),
              differences(asRead, mine)}}};
}

bool SurveyEditor::settleChanges() {
    settlement.clear();
    const bool isRead = guarded([this] {
        isOvertaken = grid().questions() == asRead && isChangedElsewhere();
        settlement.note({}, changedMeanwhile());
    });
    return isRead && settlement.ask();
}

void SurveyEditor::toRefreshGrid() {
    unread = !guarded([this] {
        grid().show(context());
        noteAsRead();
    });
    if (unread && shown != context())
        grid().clear(); // else another questionnaire would stay
    shown = context();
}

/// Shows the questionnaire as it is stored. A failure is not shown here, since the one that led here was: the
/// next command reads again and shows it.
void SurveyEditor::showStored() {
    unread = true;
    try {
        reconnect();
        const std::vector<ChosenQuestion> stored = readQuestionnaire(findSurveyKey(context()));
        unread = false;
        if (stored != grid().questions())
            grid().showKeepingCursor(stored);
        noteAsRead();
    } catch (const Failure&) {
        cnnMain->Errors().Clear();
    }
}

void SurveyEditor::moveRow(int step) {
    const int row = grid().cursor();
    const bool ended = guarded([&] {
        Transaction transaction;
        moveQuestion(requireSurveyKey(context()), grid().at(row), row, step);
        transaction.Commit();
        toRefreshGrid();
        editor->grdParamAndQuest->setRow(row + step);
    });
    if (!ended)
        showStored();
}

void SurveyEditor::toMoveRowUpward() {
    if (unread)
        toRefreshGrid();
    else if (grid().cursor() != 1 && !grid().isOnBlankRow())
        moveRow(-1);
}

/// On the blank row the store refuses the search for a question.
void SurveyEditor::toMoveRowDownward() {
    if (unread)
        toRefreshGrid();
    else if (grid().cursor() != grid().count())
        moveRow(1);
}
