// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/answergrid.h"

#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "exchange/files/answerrecords.h"
#include "feedback/marks/markrules.h"
#include "platform/forms/flexgrid.h"
#include "reference/gridtools.h"
#include "survey/questionnaires/questionnaire.h"

using namespace Qt::StringLiterals;

/// What is stored beside the rows of the grid, read by three selects.
class AnswerGrid::Stored {
public:
    /// That of the rows before `rows`.
    Stored(const AnswerGrid& shownGrid, int rows);

    /// The question is found by its text within the customer's survey of that date, whoever the respondent
    /// is; of two questions with one text the first is used. Its id is empty for none.
    AnswerKeys keysOf(int row) const;
    AnswerRecords& answersFor(int row) { return owner.isScoreRow(row) ? scores : words; }
    /// The stored answer of the row; null for none.
    ado::Recordset* find(int row);

private:
    const AnswerGrid& owner;
    TextLookup ids;
    AnswerRecords scores, words;
};

AnswerGrid::AnswerGrid(forms::MSHFlexGrid* edited, QLineEdit* editor)
    : GridEditor(gridrules::feedback, edited, editor) {
    onChange = [this](const QString& text) { change(text); };
    fit = [this](int row, int col, const QString& text) { return fitting(row, col, text); };
    accepts = [this](QChar character) { return acceptsCharacter(grid->Col(), character); };
}

void AnswerGrid::setHeads() {
    setHeadsAndWidths(grid, {u"Question"_s, u"Weightage"_s, u"Score"_s, u"Description"_s},
                      {0.01, 0.56, 0.12, 0.06, 0.23, 0});
}

QString AnswerGrid::cell(int row, int col) const {
    return grid->TextMatrix(row, col);
}

void AnswerGrid::change(const QString& text) {
    const int row = grid->Row();
    const int col = grid->Col();
    switch (judgeChange(col, cell(row, feedbackcolumn::type), text)) {
    case Judgement::Take:
        grid->setTextMatrix(row, col, text);
        break;
    case Judgement::Blank:
        grid->setTextMatrix(row, col, {});
        box->clear();
        break;
    case Judgement::SetBack:
        copyCell();
        break;
    }
}

std::optional<QString> AnswerGrid::fitting(int row, int col, const QString& text) const {
    switch (judgeChange(col, cell(row, feedbackcolumn::type), text)) {
    case Judgement::Take:
        return text;
    case Judgement::Blank:
        return text.trimmed().isEmpty() ? std::optional(QString()) : std::nullopt;
    case Judgement::SetBack: // a block that was copied with its questions
        return text == cell(row, col) ? std::optional(text) : std::nullopt;
    }
    return {};
}

void AnswerGrid::clear() {
    asShown.clear();
    emptyGrid(grid);
    box->clear();
}

void AnswerGrid::showNothing() {
    shown = {};
    clear();
    setEdit(1, 1); // else the box would stay over a removed row
}

bool AnswerGrid::hasBlankQuestion() const {
    return findBlank(grid, feedbackcolumn::question) > 0;
}

void AnswerGrid::requireFor(const SurveyKey& current) {
    if (shown.respondentid == 0 || current.custid != shown.custid ||
        current.respondentid != shown.respondentid)
        throw Refusal(
            u"The customer or respondent has changed meanwhile. Choose the respondent anew to see the "
            "answers as they are stored. Nothing has been saved."_s);
    shown.surveyid = current.surveyid;
}

bool AnswerGrid::showQuestions(const SurveyKey& survey) {
    shown = survey;
    if (shown.respondentid == 0)
        return false;
    ado::Recordset questions(u"select * from responquery where  respondentid="_s +
                                 QString::number(shown.respondentid) + u" and custid=" +
                                 QString::number(shown.custid) + u" and sdate=#" + toSqlDate(shown.date) +
                                 u"#" + orderOfQuestions(),
                             *cnnMain);
    if (questions.Eof())
        return false;
    fill(questions);
    return true;
}

void AnswerGrid::fill(ado::Recordset& questions) {
    grid->setRows(questions.RecordCount() + 1);
    for (int row = 1; !questions.Eof(); questions.MoveNext(), ++row) {
        grid->setTextMatrix(row, feedbackcolumn::question, questions["question"].Text());
        for (const int answer :
             {feedbackcolumn::weightage, feedbackcolumn::score, feedbackcolumn::description})
            grid->setTextMatrix(row, answer, {});
        grid->setTextMatrix(row, feedbackcolumn::type, questions["Type"].Text());
    }
}

bool AnswerGrid::isScoreRow(int row) const {
    return cell(row, feedbackcolumn::type) == scoreType;
}

AnswerGrid::Stored::Stored(const AnswerGrid& shownGrid, int rows)
    : owner(shownGrid), ids(u"responquery"_s, {"question"},
                            u"custid="_s + QString::number(owner.shown.custid) + u" and sdate=#" +
                                toSqlDate(owner.shown.date) + u"# order by surveyid, respondentid, [Order]",
                            "questionid"),
      scores(true, {QString::number(owner.shown.respondentid)}, {owner.shown.date}),
      words(false, {QString::number(owner.shown.respondentid)}, {owner.shown.date}) {
    std::vector<QStringList> questions;
    for (int row = 1; row < rows; ++row)
        questions.push_back({owner.cell(row, feedbackcolumn::question)});
    ids.readAll(questions);
}

AnswerKeys AnswerGrid::Stored::keysOf(int row) const {
    return {.questionid = ids.find({owner.cell(row, feedbackcolumn::question)}),
            .respondentid = QString::number(owner.shown.respondentid),
            .surveydate = owner.shown.date,
            .surveyid = QString::number(owner.shown.surveyid)};
}

ado::Recordset* AnswerGrid::Stored::find(int row) {
    const AnswerKeys keys = keysOf(row);
    AnswerRecords& answers = answersFor(row);
    return !keys.questionid.isEmpty() && answers.find(keys) ? &answers.answer() : nullptr;
}

void AnswerGrid::showAnswers() {
    int rows = 1; // up to the first blank one
    while (rows < grid->Rows() && !cell(rows, feedbackcolumn::question).trimmed().isEmpty())
        ++rows;
    if (rows > 1) {
        Stored stored(*this, rows);
        for (int row = 1; row < rows; ++row)
            showAnswer(row, stored.find(row));
    }
    noteShown();
}

void AnswerGrid::noteShown() {
    asShown.assign(std::size_t(grid->Rows()), {});
    for (int row = 1; row < grid->Rows(); ++row) {
        for (int col = 0; col <= feedbackcolumn::description; ++col)
            asShown[std::size_t(row)] << cell(row, col);
    }
}

void AnswerGrid::showAnswer(int row, ado::Recordset* answer) {
    const bool isScore = isScoreRow(row);
    if (!answer) {
        if (isScore) {
            grid->setTextMatrix(row, feedbackcolumn::description, {});
        } else {
            grid->setTextMatrix(row, feedbackcolumn::weightage, {});
            grid->setTextMatrix(row, feedbackcolumn::score, {});
        }
        return;
    }
    for (const int col : {feedbackcolumn::weightage, feedbackcolumn::score, feedbackcolumn::description}) {
        const bool isOfOtherKind = col == (isScore ? feedbackcolumn::description : feedbackcolumn::score);
        grid->setTextMatrix(row, col, isOfOtherKind ? QString() : shownText(col, *answer));
    }
}

QString AnswerGrid::shownText(int col, ado::Recordset& answer) const {
    if (col == feedbackcolumn::description)
        return answer["Description"].Text();
    return shownMark(answer[col == feedbackcolumn::score ? "score" : "weightage"].Text());
}

bool AnswerGrid::isTouched(int row, int col) const {
    return std::size_t(row) >= asShown.size() || asShown[std::size_t(row)].value(col) != cell(row, col);
}

ChangedRow AnswerGrid::changedMeanwhile(int row, ado::Recordset& answer) const {
    ChangedRow changed{cell(row, feedbackcolumn::question), {}};
    if (std::size_t(row) >= asShown.size())
        return changed;
    for (const int col :
         {feedbackcolumn::weightage, isScoreRow(row) ? feedbackcolumn::score : feedbackcolumn::description})
        addIfChanged(changed, {grid->TextMatrix(0, col), asShown[std::size_t(row)].value(col),
                               shownText(col, answer), cell(row, col)});
    return changed;
}

void AnswerGrid::forEachStored(Stored& stored,
                               const std::function<void(const QString& key, const ChangedRow&)>& take) const {
    for (int row = 1; row < grid->Rows(); ++row) {
        if (ado::Recordset* answer = stored.find(row))
            take(QString::number(row), changedMeanwhile(row, *answer));
    }
}

void AnswerGrid::findChanges() {
    settlement.clear();
    Stored stored(*this, grid->Rows());
    forEachStored(stored, [this](const QString& key, const ChangedRow& row) { settlement.note(key, row); });
}

void AnswerGrid::save() {
    Stored stored(*this, grid->Rows());
    forEachStored(stored,
                  [this](const QString& key, const ChangedRow& row) { settlement.require(key, row); });
    for (int row = 1; row < grid->Rows(); ++row)
        saveRow(row, stored);
    cnnMain->UpdateBatch(); // what fails has not been saved, and is touched still
    if (settlement.leavesAny())
        showAnswers();
    else
        noteShown();
}

void AnswerGrid::saveRow(int row, Stored& stored) {
    const AnswerKeys keys = stored.keysOf(row);
    if (keys.questionid.isEmpty() || shown.surveyid == 0)
        throw Refusal(u"“%1” has left this survey. The answers above it have been saved, this one and those "
                      "below have not."_s.arg(cell(row, feedbackcolumn::question)));
    AnswerRecords& answers = stored.answersFor(row);
    const bool isNew = !answers.begin(keys);
    ado::Recordset& answer = answers.answer();
    const auto write = [&](int col, const char* field, const std::optional<QString>& text) {
        const bool isLeft = settlement.isLeft(QString::number(row), grid->TextMatrix(0, col));
        if (text && (isNew || (isTouched(row, col) && !isLeft)))
            answer[field] = *text;
    };
    write(feedbackcolumn::weightage, "weightage", markForStore(cell(row, feedbackcolumn::weightage), isNew));
    if (isScoreRow(row))
        write(feedbackcolumn::score, "score", markForStore(cell(row, feedbackcolumn::score), isNew));
    else
        write(feedbackcolumn::description, "Description",
              descriptionForStore(cell(row, feedbackcolumn::description)));
    answer.Update();
}
