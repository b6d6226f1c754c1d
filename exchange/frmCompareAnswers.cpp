// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmCompareAnswers.h"

#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/checkmarks.h"
#include "platform/ado/value.h"
#include "ui_frmCompareAnswers.h"

#include <QTextDocument>

using namespace Qt::StringLiterals;
using AnswerKind = CheckedAnswer::Kind;

namespace {

constexpr int helpContext = 211;

enum Column { Question, Stored, InFile, Difference };

QString wordOf(AnswerKind kind) {
    switch (kind) {
    case AnswerKind::New:
        return u"new"_s;
    case AnswerKind::Same:
        return u"same"_s;
    case AnswerKind::Changed:
        return u"changed"_s;
    case AnswerKind::LeftOut:
        return u"left out"_s;
    }
    return {};
}

/// A dash for an answer that is not there or blank.
QString textOf(const std::optional<Answer>& answer, bool isScore) {
    if (!answer || answer->isBlank())
        return u"-"_s;
    const QString weightage = u"Weightage %1"_s.arg(answer->weightage);
    if (isScore)
        return u"Score %1, "_s.arg(answer->score) + weightage;
    return answer->words.trimmed().isEmpty() ? weightage : answer->words.trimmed() + u"\n" + weightage;
}

} // namespace

frmCompareAnswers::frmCompareAnswers()
    : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmCompareAnswers>()) {
    ui->setupUi(this);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    ui->grdAnswers->setIconSize({markSize, markSize});
    QHeaderView* head = ui->grdAnswers->horizontalHeader();
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    head->setSectionResizeMode(QHeaderView::Stretch);
    head->setSectionResizeMode(Difference, QHeaderView::ResizeToContents);
    rowHeights.setSingleShot(true);
    rowHeights.setInterval(0); // after the last column has its width
    connect(head, &QHeaderView::sectionResized, &rowHeights, qOverload<>(&QTimer::start));
    connect(&rowHeights, &QTimer::timeout, ui->grdAnswers, &QTableWidget::resizeRowsToContents);
}

frmCompareAnswers::~frmCompareAnswers() = default;

void frmCompareAnswers::onLoad() {
    toCenterForm(*this);
}

void frmCompareAnswers::compare(const CheckedFile& file) {
    ui->lblFile->setText(file.title());
    ui->lblCustName->setText(file.customer);
    ui->lblRespName->setText(file.respondent);
    ui->lblSDate->setText(file.date.toString(ado::dateTextFormat));
    ui->grdAnswers->setRowCount(int(file.answers.size()));
    int firstChanged = 0;
    for (int row = int(file.answers.size()) - 1; row >= 0; --row) {
        const CheckedAnswer& answer = file.answers[std::size_t(row)];
        fillRow(row, answer);
        if (answer.kind() == AnswerKind::Changed)
            firstChanged = row;
    }
    rowHeights.start();
    ui->grdAnswers->setCurrentCell(firstChanged, Question);
}

void frmCompareAnswers::fillRow(int row, const CheckedAnswer& answer) {
    constexpr qsizetype longest = 400; // characters shown in a cell
    const QString texts[] = {answer.question, textOf(answer.stored, answer.isScore),
                             textOf(answer.inFile, answer.isScore), wordOf(answer.kind())};
    for (int column = Question; column <= Difference; ++column) {
        const QString& text = texts[column];
        auto* item = new QTableWidgetItem(text.size() > longest ? text.left(longest) + u'\u2026' : text);
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        item->setToolTip(Qt::convertFromPlainText(text.left(longest * 5)));
        if (column == Difference)
            item->setData(Qt::DecorationRole, markOf(answer.kind()));
        ui->grdAnswers->setItem(row, column, item);
    }
}
