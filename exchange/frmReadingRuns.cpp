// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmReadingRuns.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/fewlines.h"
#include "exchange/files/readingrecord.h"
#include "exchange/files/readingundo.h"
#include "exchange/reading.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmReadingRuns.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 210;

QString shown(const QDateTime& moment) {
    return moment.toString(u"dd/MM/yyyy hh:mm");
}

QStringList counts(const AnswerCounts& answers) {
    return {QString::number(answers.added), QString::number(answers.changed), QString::number(answers.same)};
}

QString stateOf(const RecordedReading& reading) {
    if (reading.undone.isValid())
        return u"Undone "_s + shown(reading.undone);
    return reading.isThinned ? u"Thinned out"_s : QString();
}

QString counted(int number, const QString& one, const QString& many) {
    return number == 1 ? one : QString::number(number) + u' ' + many;
}

/// The answers that stay as they are, the first ones if there are many; empty for none.
QString keptText(const ReadingUndo& plan) {
    if (plan.kept.empty())
        return {};
    QStringList lines;
    for (const auto& [answer, fileName] : plan.kept)
        lines << fileName + u": "_s + nameOf(answer);
    return u"\r\n\r\nThese have been changed since, or read again, and stay as they are:\r\n"_s +
           fewOf(lines);
}

QString planText(const ReadingUndo& plan) {
    QStringList effects;
    if (plan.removedCount() > 0)
        effects << counted(plan.removedCount(), u"1 answer that it added is"_s,
                           u"answers that it added are"_s) +
                       u" taken out."_s;
    if (plan.restoredCount() > 0)
        effects << counted(plan.restoredCount(), u"1 answer that it changed gets"_s,
                           u"answers that it changed get"_s) +
                       u" back what was stored before."_s;
    if (!plan.toBeReadAgain.isEmpty())
        effects << counted(int(plan.toBeReadAgain.size()), u"1 file is"_s, u"files are"_s) +
                       u" marked as not read in."_s;
    if (effects.isEmpty())
        effects << u"No answer and no mark in the register changes."_s;
    return effects.join(u"\r\n"_s) + keptText(plan);
}

} // namespace

frmReadingRuns::frmReadingRuns() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmReadingRuns>()) {
    ui->setupUi(this);
    ui->lsvRuns->setColumns({{u"Read"_s, 0.18},
                             {u"By"_s, 0.18},
                             {u"Files"_s, 0.09},
                             {u"New"_s, 0.1},
                             {u"Changed"_s, 0.1},
                             {u"Same"_s, 0.1},
                             {u"State"_s, 0.25}});
    ui->lsvFiles->setColumns({{u"File"_s, 0.18},
                              {u"Customer"_s, 0.17},
                              {u"Respondent"_s, 0.17},
                              {u"Survey Date"_s, 0.13},
                              {u"New"_s, 0.07},
                              {u"Changed"_s, 0.09},
                              {u"Same"_s, 0.07},
                              {u"SHA-256"_s, 0.12}});
    connect(ui->lsvRuns, &forms::ListView::Click, this, &frmReadingRuns::fillFiles);
    connect(ui->cmdUndo, &QPushButton::clicked, this, &frmReadingRuns::cmdUndo_Click);
    connect(ui->cmdThin, &QPushButton::clicked, this, &frmReadingRuns::cmdThin_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmReadingRuns::~frmReadingRuns() = default;

void frmReadingRuns::onLoad() {
    toCenterForm(*this);
    guarded([] {
        if (!hasReadingTables())
            throw Refusal(u"This database could not be updated to this version of the program: readings are "
                          "not recorded in it and cannot be undone. See the help, topic Readings."_s);
    });
}

void frmReadingRuns::onActivate() {
    fillRuns();
}

void frmReadingRuns::fillRuns() {
    const RecordedReading* before = chosen();
    const int kept = before ? before->readingid : 0;
    std::vector<RecordedReading> read;
    if (!guarded([&] { read = hasReadingTables() ? findReadings() : read; }))
        return;
    readings = std::move(read);
    std::vector<QStringList> rows;
    int row = 0; // the newest
    for (const RecordedReading& reading : readings) {
        if (reading.readingid == kept)
            row = int(rows.size());
        rows.push_back(QStringList{shown(reading.started), reading.login, QString::number(reading.files)} +
                       counts(reading.answers) + QStringList{stateOf(reading)});
    }
    ui->lsvRuns->setItems(std::move(rows));
    ui->lsvRuns->setCurrentRow(row);
    ui->lsvRuns->setSelected(row, true);
    fillFiles();
}

void frmReadingRuns::fillFiles() {
    const RecordedReading* reading = chosen();
    std::vector<QStringList> rows;
    guarded([&] {
        if (!reading)
            return;
        for (const RecordedFile& file : findFilesOf(reading->readingid))
            rows.push_back(
                QStringList{file.name, file.customer, file.respondent, ado::toText(file.surveydate)} +
                counts(file.answers) + QStringList{file.sha256});
    });
    ui->lsvFiles->setItems(std::move(rows));
    ui->cmdUndo->setEnabled(!reading || reading->canBeUndone());
}

const RecordedReading* frmReadingRuns::chosen() const {
    const std::vector<int> rows = ui->lsvRuns->SelectedRows();
    return rows.empty() || std::size_t(rows.front()) >= readings.size()
               ? nullptr
               : &readings[std::size_t(rows.front())];
}

void frmReadingRuns::cmdUndo_Click() {
    const RecordedReading* reading = chosen();
    if (!reading)
        forms::msgBox(u"Choose the reading to undo."_s, style::information, titleWithVersion);
    else if (askUndo(*reading))
        undo(reading->readingid);
}

bool frmReadingRuns::askUndo(const RecordedReading& reading) {
    QString question;
    const bool isPlanned = guarded([&] {
        const Busy planning(*this);
        question = u"Undo the reading of %1, %2?\r\n\r\n"_s.arg(
                       shown(reading.started), counted(reading.files, u"1 file"_s, u"files"_s)) +
                   planText(planUndo(reading.readingid));
    });
    return isPlanned && forms::msgBox(question, style::yesNo + style::information + style::secondButton,
                                      titleWithVersion) == forms::Answer::Yes;
}

void frmReadingRuns::undo(int readingid) {
    guarded([&] {
        const Busy undoing(*this, u"Undoing the reading......"_s);
        copyStore(*cnnMain, strDatabasePath);
        SurveyReader::Questionnaires changed;
        for (const auto& [answer, state] : undoReading(readingid, forms::nowHook()).changed)
            changed.emplace(QString::number(answer.respondentid), answer.surveydate);
        Q_EMIT ReadReport::instance().answersStored(changed);
        showDone(u"Reading undone"_s);
    });
    fillRuns();
}

void frmReadingRuns::cmdThin_Click() {
    const QDateTime moment = forms::nowHook().addYears(-1);
    const int count = lookedUp([&] { return hasReadingTables() ? countReadingsBefore(moment) : 0; });
    if (count == 0) {
        forms::msgBox(u"No reading is older than a year."_s, style::information, titleWithVersion);
    } else if (forms::msgBox(counted(count, u"1 reading is"_s, u"readings are"_s) +
                                 u" older than a year. Remove what was stored before and after, to make the "
                                 "database smaller? They stay in this list and cannot be undone any more.",
                             style::yesNo + style::information + style::secondButton,
                             titleWithVersion) == forms::Answer::Yes) {
        guarded([&] { thinOutReadingsBefore(moment); });
        fillRuns();
    }
}
