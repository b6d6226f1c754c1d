// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/frmFeedBackObj.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "exchange/reading.h"
#include "exchange/setting.h"
#include "feedback/marks/markrules.h"
#include "platform/forms/msgbox.h"
#include "reference/grideditor.h"
#include "reference/gridtools.h"
#include "ui_frmFeedBackObj.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 6;
constexpr int topOnLoad = 750; // twips

} // namespace

frmFeedBackObj::frmFeedBackObj() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmFeedBackObj>()) {
    ui->setupUi(this);
    editor = new GridEditor(gridrules::feedback, ui->grdDtls, ui->txtDtls);
    connectEvents();
}

frmFeedBackObj::~frmFeedBackObj() = default;

QLineEdit* frmFeedBackObj::txtDtls() const {
    return ui->txtDtls;
}

void frmFeedBackObj::connectEvents() {
    connect(ui->cmbCusName, &forms::ComboBox::Click, this, &frmFeedBackObj::cmbCusName_Click);
    connect(ui->lstRespname, &forms::ListBox::Click, this, &frmFeedBackObj::lstRespname_Click);
    connect(ui->lstSurveyDates, &forms::ListBox::Click, this, &frmFeedBackObj::lstSurveyDates_Click);
    connect(ui->cmdRead, &QPushButton::clicked, this, &frmFeedBackObj::cmdRead_Click);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmFeedBackObj::cmdSave_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(&ReadReport::instance(), &ReadReport::answersStored, this,
            [this](const SurveyReader::Questionnaires& read) {
                if (read.contains({QString::number(shown.respondentid), shown.date}))
                    hasNewAnswers = true;
            });
    editor->onChange = [this](const QString& text) { txtDtls_Change(text); };
    editor->fit = [this](int row, int col, const QString& text) -> std::optional<QString> {
        const forms::MSHFlexGrid* grid = ui->grdDtls;
        switch (judgeChange(col, grid->TextMatrix(row, feedbackcolumn::type), text)) {
        case Judgement::Take:
            return text;
        case Judgement::Blank:
            return text.trimmed().isEmpty() ? std::optional(QString()) : std::nullopt;
        case Judgement::SetBack: // a block that was copied with its questions
            return text == grid->TextMatrix(row, col) ? std::optional(text) : std::nullopt;
        }
        return {};
    };
    editor->accepts = [this](QChar character) { return acceptsCharacter(ui->grdDtls->Col(), character); };
}

void frmFeedBackObj::onLoad() {
    setLeft(0);
    setTop(topOnLoad);
    toFillcmbCustomername();
    if (ui->cmbCusName->ListCount() > 0)
        ui->cmbCusName->setListIndex(0);
    toSetWidthForGrid();
    SetEditTextBox(1, 1);
    lstSurveyDates_Click();
}

void frmFeedBackObj::onActivate() {
    blnLog = false;
    blnBrowse = false;
    blnSetting = toGetSetting();
    if (std::exchange(blnSearchToFeedback, false))
        goToHit();
    showReadAnswers();
}

void frmFeedBackObj::goToHit() {
    const std::optional<SearchHit> hit = Shell::current()->hitToShow();
    if (!hit)
        return;
    const auto moveTo = [](auto* list, const QString& text) {
        for (int i = 0; i < list->ListCount(); ++i) {
            if (list->List(i) == text) {
                list->setListIndex(i);
                return true;
            }
        }
        return false;
    };
    if (!toFillcmbCustomername()) // the hit may be newer than the lists
        return;
    if (!moveTo(ui->cmbCusName, hit->customer) || !moveTo(ui->lstSurveyDates, hit->date))
        showHitGone();
}

void frmFeedBackObj::showHitGone() {
    ui->lstSurveyDates->Clear();
    if (ui->cmbCusName->ListIndex() == -1)
        ui->lstRespname->Clear();
    showNothing();
    forms::msgBox(u"The survey of this hit is no longer there."_s, style::information, u"Gaugewell v2.1"_s);
}

void frmFeedBackObj::toSetWidthForGrid() {
    setHeadsAndWidths(ui->grdDtls, {u"Question"_s, u"Weightage"_s, u"Score"_s, u"Description"_s},
                      {0.01, 0.56, 0.12, 0.06, 0.23, 0});
}

void frmFeedBackObj::SetEditTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { editor->setEdit(ColPos, RowPos); });
}

void frmFeedBackObj::txtDtls_Change(const QString& text) {
    forms::MSHFlexGrid* grid = ui->grdDtls;
    const int row = grid->Row();
    const int col = grid->Col();
    switch (judgeChange(col, grid->TextMatrix(row, feedbackcolumn::type), text)) {
    case Judgement::Take:
        grid->setTextMatrix(row, col, text);
        break;
    case Judgement::Blank:
        grid->setTextMatrix(row, col, {});
        ui->txtDtls->clear();
        break;
    case Judgement::SetBack:
        editor->copyCell();
        break;
    }
}

SurveyContext frmFeedBackObj::chosen() const {
    return {ui->cmbCusName->Text(), ui->lstRespname->Text(), ui->lstSurveyDates->Text()};
}

void frmFeedBackObj::requireShown() {
    const SurveyKey now = findSurveyKey(chosen());
    if (shown.respondentid == 0 || now.custid != shown.custid || now.respondentid != shown.respondentid)
        throw Refusal(
            u"The customer or respondent has changed meanwhile. Choose the respondent anew to see the "
            "answers as they are stored. Nothing has been saved."_s);
    shown.surveyid = now.surveyid;
}

bool frmFeedBackObj::toFillcmbCustomername() {
    return guarded([this] {
        ado::Recordset customer;
        customer.Open(u"select * from customer"_s, *cnnMain);
        ui->cmbCusName->Clear();
        for (; !customer.Eof(); customer.MoveNext())
            ui->cmbCusName->AddItem(customer["custname"].Text());
    });
}

void frmFeedBackObj::toFillListView() {
    guarded(u"Error :"_s, [this] {
        ui->lstSurveyDates->Clear();
        ado::Recordset survey;
        survey.Open(u"select distinct(sdate) as surveydate from responquery where custid="_s +
                        QString::number(findCustomer(ui->cmbCusName->Text())),
                    *cnnMain);
        for (; !survey.Eof(); survey.MoveNext())
            ui->lstSurveyDates->AddItem(survey["surveydate"].Text());
    });
}

void frmFeedBackObj::toFilllstRespondentName() {
    guarded([this] {
        ui->lstRespname->Clear();
        const int custid = findCustomer(ui->cmbCusName->Text());
        ado::Recordset respondent;
        respondent.Open(u"select * from respondent where custid="_s + QString::number(custid), *cnnMain);
        for (; !respondent.Eof(); respondent.MoveNext())
            ui->lstRespname->AddItem(respondent["respondentname"].Text());
    });
}

QString frmFeedBackObj::toGetQuestionID(const QString& question) const {
    ado::Recordset questions;
    questions.Open(u"select * from responquery where question='"_s + question + u"' and custid=" +
                       QString::number(shown.custid) + u" and sdate=#" + toSqlDate(shown.date) + u"#",
                   *cnnMain);
    return questions.Eof() ? QString() : questions["questionid"].Text();
}

void frmFeedBackObj::cmbCusName_Click() {
    const Busy busy(*this);
    if (ui->cmbCusName->ListCount() > 0) {
        toFillListView();
        toFilllstRespondentName();
        if (ui->lstRespname->ListCount() > 0)
            ui->lstRespname->setListIndex(0);
        else
            showNothing();
    }
}

void frmFeedBackObj::lstRespname_Click() {
    const Busy busy(*this);
    if (ui->lstSurveyDates->ListCount() == 0) {
        showNothing();
    } else if (ui->lstSurveyDates->SelCount() == 0) {
        ui->lstSurveyDates->setListIndex(0); // its click fills the grid
    } else {
        blankGrid();
        toFillGrid();
        tofillscoreandweightage();
    }
    showFileNameOfChoice();
}

void frmFeedBackObj::lstSurveyDates_Click() {
    const Busy busy(*this);
    if (ui->lstSurveyDates->ListCount() > 0) {
        toFillGrid();
        tofillscoreandweightage();
    }
    showFileNameOfChoice();
}

void frmFeedBackObj::blankGrid() {
    emptyGrid(ui->grdDtls);
    ui->txtDtls->clear();
}

void frmFeedBackObj::showNothing() {
    shown = {};
    blankGrid();
    ui->lblSDate->clear();
    showFileLabel({});
    SetEditTextBox(1, 1); // else the box stays over a row that is gone
}

void frmFeedBackObj::toFillGrid() {
    const bool filled = guarded([this] {
        const Busy busy(*this);
        ui->lblSDate->setText(ui->lstSurveyDates->Text());
        shown = findSurveyKey(chosen());
        if (shown.custid == 0) {
            blankGrid();
        } else {
            ado::Recordset questions;
            if (shown.respondentid != 0)
                questions.Open(u"select * from responquery where  respondentid="_s +
                                   QString::number(shown.respondentid) + u" and custid=" +
                                   QString::number(shown.custid) + u" and sdate=#" + toSqlDate(shown.date) +
                                   u"#",
                               *cnnMain);
            if (!questions.IsOpen() || questions.Eof())
                showNothing();
            else
                showQuestions(questions);
        }
        SetEditTextBox(1, 1);
    });
    if (!filled)
        showNothing(); // else a save would store one date's marks under another
}

void frmFeedBackObj::showQuestions(ado::Recordset& questions) {
    forms::MSHFlexGrid* grid = ui->grdDtls;
    grid->setRows(questions.RecordCount() + 1);
    for (int row = 1; !questions.Eof(); questions.MoveNext(), ++row) {
        grid->setTextMatrix(row, feedbackcolumn::question, questions["question"].Text());
        for (const int answer :
             {feedbackcolumn::weightage, feedbackcolumn::score, feedbackcolumn::description})
            grid->setTextMatrix(row, answer, {});
        grid->setTextMatrix(row, feedbackcolumn::type, questions["Type"].Text());
    }
}

bool frmFeedBackObj::isScoreRow(int row) const {
    return ui->grdDtls->TextMatrix(row, feedbackcolumn::type) == scoreType;
}

QString frmFeedBackObj::answerQuery(int row, const QString& questionid) const {
    return u"select * from "_s + (isScoreRow(row) ? u"feedbackobjective" : u"feedbackdescriptive") +
           u" where respondentid=" + QString::number(shown.respondentid) + u" and questionid=" + questionid +
           u" and surveydate=#" + toSqlDate(shown.date) + u"#";
}

void frmFeedBackObj::tofillscoreandweightage() {
    const bool filled = guarded([this] {
        const Busy busy(*this);
        const forms::MSHFlexGrid* grid = ui->grdDtls;
        for (int row = 1; row < grid->Rows(); ++row) {
            if (grid->TextMatrix(row, feedbackcolumn::question).trimmed().isEmpty())
                break;
            showAnswer(row);
        }
        hasNewAnswers = false;
    });
    if (!filled)
        showNothing(); // else a save would store blanks over the answers that could not be read
}

void frmFeedBackObj::showAnswer(int row) {
    forms::MSHFlexGrid* grid = ui->grdDtls;
    const bool isScore = isScoreRow(row);
    const QString questionid = toGetQuestionID(grid->TextMatrix(row, feedbackcolumn::question));
    ado::Recordset answer;
    if (!questionid.isEmpty())
        answer.Open(answerQuery(row, questionid), *cnnMain);
    if (!answer.IsOpen() || answer.Eof()) {
        if (isScore) {
            grid->setTextMatrix(row, feedbackcolumn::description, {});
        } else {
            grid->setTextMatrix(row, feedbackcolumn::weightage, {});
            grid->setTextMatrix(row, feedbackcolumn::score, {});
        }
        return;
    }
    grid->setTextMatrix(row, feedbackcolumn::weightage, shownMark(answer["weightage"].Text()));
    grid->setTextMatrix(row, feedbackcolumn::score, isScore ? shownMark(answer["score"].Text()) : QString());
    grid->setTextMatrix(row, feedbackcolumn::description, isScore ? QString() : answer["Description"].Text());
}

void frmFeedBackObj::cmdSave_Click() {
    Busy busy(*this);
    if (findBlank(ui->grdDtls, feedbackcolumn::question) > 0) {
        forms::msgBox(u"Cannot Save.....Question details are missing"_s, style::critical,
                      u"Gaugewell v2.1"_s);
    } else if (ui->lstRespname->ListCount() > 0) {
        busy.say(u"Saving....."_s);
        toSaveDtls();
    }
}

void frmFeedBackObj::toSaveDtls() {
    guarded([this] {
        requireShown();
        writeTogether([this] {
            for (int row = 1; row < ui->grdDtls->Rows(); ++row)
                saveRow(row);
        });
    });
}

void frmFeedBackObj::saveRow(int row) {
    const auto cell = [&](int column) { return ui->grdDtls->TextMatrix(row, column); };
    const QString questionid = toGetQuestionID(cell(feedbackcolumn::question));
    if (questionid.isEmpty() || shown.surveyid == 0)
        throw Refusal(u"“%1” has left this survey. The answers above it have been saved, this one and those "
                      "below have not."_s.arg(cell(feedbackcolumn::question)));
    ado::Recordset answer;
    answer.Open(answerQuery(row, questionid), *cnnMain, ado::Recordset::Lock::Optimistic);
    const bool isNew = answer.Eof();
    if (isNew)
        answer.AddNew();
    const auto write = [&](const char* field, const std::optional<QString>& text) {
        if (text)
            answer[field] = *text;
    };
    answer["respondentid"] = shown.respondentid;
    answer["questionid"] = questionid;
    answer["surveydate"] = shown.date;
    write("weightage", markForStore(cell(feedbackcolumn::weightage), isNew));
    if (isScoreRow(row))
        write("score", markForStore(cell(feedbackcolumn::score), isNew));
    else
        write("Description", descriptionForStore(cell(feedbackcolumn::description)));
    answer["surveyid"] = shown.surveyid;
    answer.Update();
}
