// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/readingundo.h"

#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/transaction.h"
#include "exchange/files/surveylog.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using Key = ReadingUndo::Key;
using State = std::optional<AnswerState>;
using Lock = ado::Recordset::Lock;

namespace {

/// A file of the reading that is undone.
struct File {
    int id = 0;
    QString name;
    int respondentid = 0;
    QDate surveydate;
    QString registered;
    bool statusBefore = false;
    std::vector<AnswerChange> changes;
};

AnswerKeys keysOf(const Key& key) {
    return {.questionid = QString::number(key.questionid),
            .respondentid = QString::number(key.respondentid),
            .surveydate = key.surveydate,
            .surveyid = {}};
}

/// From the last to the first.
std::vector<File> filesOf(int readingid) {
    std::vector<File> files;
    ado::Recordset records(u"select * from readingfile where readingid="_s + QString::number(readingid) +
                               u" order by readingfileid desc",
                           *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        files.push_back({records["readingfileid"].Value().toInt(), records["filename"].Text(),
                         records["respondentid"].Value().toInt(), records["surveydate"].Value().toDate(),
                         records["registered"].Text(), records["statusbefore"].Value().toBool(),
                         changesFromJson(records["answers"].Text())});
    return files;
}

void requireUndoable(int readingid) {
    const QString id = QString::number(readingid);
    if (!hasRecords(u"select * from reading where undone is null and readingid="_s + id))
        throw Refusal(u"This reading has been undone already."_s);
    if (hasRecords(u"select * from readingfile where answers is null and readingid="_s + id))
        throw Refusal(u"This reading cannot be undone: what was stored before it has been thinned out."_s);
}

class Planner {
public:
    explicit Planner(int readingid) { plan.readingid = readingid; }

    void add(const File& file) {
        if (file.surveydate.isValid()) {
            const std::vector<int> later = laterFiles(file);
            for (auto change = file.changes.rbegin(); change != file.changes.rend(); ++change)
                add(file, *change, later);
        }
        if (!file.registered.isEmpty() && !file.statusBefore)
            addToRegister(file);
    }

    ReadingUndo result() {
        for (const auto& [key, states] : answers) {
            if (states.planned != states.stored)
                plan.changed[key] = states.planned;
        }
        return std::move(plan);
    }

private:
    struct Answer {
        State stored;
        State planned;
    };

    /// The files of later readings with answers of the same questionnaire, oldest first; their changes are
    /// loaded.
    std::vector<int> laterFiles(const File& file) {
        std::vector<int> ids;
        ado::Recordset records(
            u"select * from readingfile where respondentid="_s + QString::number(file.respondentid) +
                u" and surveydate=#" + toSqlDate(file.surveydate) + u"# and readingid>" +
                QString::number(plan.readingid) +
                u" and readingid in (select readingid from reading where undone is null) order by "
                u"readingfileid",
            *cnnMain);
        for (; !records.Eof(); records.MoveNext()) {
            const int id = records["readingfileid"].Value().toInt();
            ids.push_back(id);
            if (!plan.later.contains(id))
                plan.later[id].changes = changesFromJson(records["answers"].Text());
        }
        return ids;
    }

    void add(const File& file, const AnswerChange& change, const std::vector<int>& later) {
        const Key key{file.respondentid, file.surveydate, change.questionid, change.isScore};
        const bool isWrittenAgain = handOver(change, later);
        if (change.before == change.after)
            return;
        Answer& answer = load(key);
        if (!isWrittenAgain && answer.planned == change.after && !plan.kept.contains(key))
            answer.planned = change.before;
        else
            plan.kept.emplace(key, file.name);
    }

    /// Whether a later reading has written the answer too. Undoing that one later goes back to the state
    /// before this one.
    bool handOver(const AnswerChange& change, const std::vector<int>& later) {
        for (const int id : later) {
            ReadingUndo::LaterFile& file = plan.later[id];
            const auto found = std::find_if(file.changes.begin(), file.changes.end(),
                                            [&](const AnswerChange& other) { return other.isOf(change); });
            if (found == file.changes.end())
                continue;
            if (found->before == change.after && change.before != change.after) {
                found->before = change.before;
                file.isTouched = true;
            }
            return true;
        }
        return false;
    }

    Answer& load(const Key& key) {
        const auto found = answers.find(key);
        if (found != answers.end())
            return found->second;
        ado::Recordset stored(selectAnswer(keysOf(key), key.isScore), *cnnMain);
        const State state = stored.Eof() ? State() : answerState(stored, key.isScore);
        return answers.emplace(key, Answer{state, state}).first->second;
    }

    void addToRegister(const File& file) {
        ado::Recordset later(u"select * from readingfile where registered='"_s + file.registered +
                                 u"' and readingid>" + QString::number(plan.readingid) +
                                 u" and readingid in (select readingid from reading where undone is null) "
                                 u"order by readingfileid",
                             *cnnMain);
        if (!later.Eof())
            plan.statusBefore[later["readingfileid"].Value().toInt()] = false;
        else if (!plan.toBeReadAgain.contains(file.registered) && isMarkedReadIn(file.registered))
            plan.toBeReadAgain << file.registered;
    }

    ReadingUndo plan;
    std::map<Key, Answer> answers;
};

void writeAnswer(const Key& key, const State& state) {
    ado::Recordset answer(selectAnswer(keysOf(key), key.isScore), *cnnMain, Lock::Optimistic);
    if (!state) {
        cnnMain->Execute(key.isScore ? u"delete * from feedbackobjective where feedbackobjid="_s +
                                           answer["feedbackobjid"].Text()
                                     : u"delete * from feedbackdescriptive where feedbackdescid="_s +
                                           answer["feedbackdescid"].Text());
        return;
    }
    answer["surveyid"] = state->surveyid;
    answer["weightage"] = state->weightage;
    answer[key.isScore ? "score" : "Description"] = state->content;
    answer.Update();
}

void writeFile(int id, const char* field, const QVariant& value) {
    ado::Recordset file(u"select * from readingfile where readingfileid="_s + QString::number(id), *cnnMain,
                        Lock::Optimistic);
    file[field] = value;
    file.Update();
}

void carryOut(const ReadingUndo& plan, const QDateTime& now) {
    for (const auto& [key, state] : plan.changed)
        writeAnswer(key, state);
    for (const auto& [id, file] : plan.later) {
        if (file.isTouched)
            writeFile(id, "answers", toJson(file.changes));
    }
    for (const auto& [id, status] : plan.statusBefore)
        writeFile(id, "statusbefore", status);
    for (const QString& fileName : plan.toBeReadAgain)
        takeLogStatus(fileName);
    ado::Recordset reading(u"select * from reading where readingid="_s + QString::number(plan.readingid),
                           *cnnMain, Lock::Optimistic);
    reading["undone"] = now.toString(Qt::ISODate);
    reading.Update();
}

} // namespace

int ReadingUndo::removedCount() const {
    return int(
        std::count_if(changed.begin(), changed.end(), [](const auto& entry) { return !entry.second; }));
}

ReadingUndo planUndo(int readingid) {
    requireUndoable(readingid);
    Planner planner(readingid);
    for (const File& file : filesOf(readingid))
        planner.add(file);
    return planner.result();
}

ReadingUndo undoReading(int readingid, const QDateTime& now) {
    Transaction transaction;
    ReadingUndo plan = planUndo(readingid);
    carryOut(plan, now);
    transaction.Commit();
    return plan;
}

QString nameOf(const ReadingUndo::Key& answer) {
    const auto text = [](const QString& sql, int id) {
        ado::Recordset record(sql + QString::number(id), *cnnMain);
        return record.Eof() ? QString::number(id) : record.FieldAt(0).Text();
    };
    return text(u"select respondentname from respondent where respondentid="_s, answer.respondentid) + u", " +
           ado::toText(answer.surveydate) + u", " +
           text(u"select question from questions where questionid="_s, answer.questionid);
}
