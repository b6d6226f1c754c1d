// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/readingundo.h"

#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "core/store/transaction.h"
#include "exchange/files/answerrecords.h"
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

const QString laterReadings =
    u"readingid>%1 and readingid in (select readingid from reading where undone is null)"_s;

std::set<QString> respondentsOf(const std::vector<File>& files) {
    std::set<QString> ids;
    for (const File& file : files)
        ids.insert(QString::number(file.respondentid));
    return ids;
}

std::set<QDate> datesOf(const std::vector<File>& files) {
    std::set<QDate> dates;
    for (const File& file : files) {
        if (file.surveydate.isValid())
            dates.insert(file.surveydate);
    }
    return dates;
}

/// The names whose mark was set by the reading.
QStringList namesToUnmark(const std::vector<File>& files) {
    QStringList names;
    for (const File& file : files) {
        if (!file.registered.isEmpty() && !file.statusBefore)
            names << file.registered;
    }
    return names;
}

class Planner {
public:
    Planner(int readingid, const std::vector<File>& undone)
        : files(undone), scores(true, respondentsOf(undone), datesOf(undone)),
          words(false, respondentsOf(undone), datesOf(undone)), registered(namesToUnmark(undone)),
          laterMarks(u"readingfile"_s, {"registered"},
                     laterReadings.arg(readingid) + u" order by readingfileid", "readingfileid") {
        plan.readingid = readingid;
        readLaterFiles();
        std::vector<QStringList> names;
        for (const QString& name : namesToUnmark(files))
            names.push_back({name});
        laterMarks.readAll(names);
    }

    ReadingUndo result() {
        for (const File& file : files)
            add(file);
        for (const auto& [key, states] : answers) {
            if (states.planned != states.stored)
                plan.changed[key] = states.planned;
        }
        return std::move(plan);
    }

private:
    using Questionnaire = std::pair<int, QDate>; // respondent
    struct Answer {
        State stored;
        State planned;
    };

    /// The files of later readings with answers of the same questionnaires, oldest first.
    void readLaterFiles() {
        std::set<Questionnaire> undone;
        for (const File& file : files)
            undone.insert({file.respondentid, file.surveydate});
        const std::set<QString> respondents = respondentsOf(files);
        if (respondents.empty())
            return;
        ado::Recordset records(u"select * from readingfile where "_s + laterReadings.arg(plan.readingid) +
                                   u" and respondentid in (" +
                                   QStringList(respondents.begin(), respondents.end()).join(u',') +
                                   u") order by readingfileid",
                               *cnnMain);
        for (; !records.Eof(); records.MoveNext()) {
            const Questionnaire of{records["respondentid"].Value().toInt(),
                                   records["surveydate"].Value().toDate()};
            if (!undone.contains(of))
                continue;
            const int id = records["readingfileid"].Value().toInt();
            laterFiles[of].push_back(id);
            plan.later[id].changes = changesFromJson(records["answers"].Text());
        }
    }

    void add(const File& file) {
        if (file.surveydate.isValid()) {
            const std::vector<int>& later = laterFiles[Questionnaire(file.respondentid, file.surveydate)];
            for (auto change = file.changes.rbegin(); change != file.changes.rend(); ++change)
                add(file, *change, later);
        }
        if (!file.registered.isEmpty() && !file.statusBefore)
            addToRegister(file);
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
        AnswerRecords& stored = key.isScore ? scores : words;
        const State state = stored.find(keysOf(key)) ? answerState(stored.answer(), key.isScore) : State();
        return answers.emplace(key, Answer{state, state}).first->second;
    }

    void addToRegister(const File& file) {
        const QString later = laterMarks.find({file.registered});
        if (!later.isEmpty())
            plan.statusBefore[later.toInt()] = false;
        else if (!plan.toBeReadAgain.contains(file.registered) && registered.isMarked(file.registered))
            plan.toBeReadAgain << file.registered;
    }

    const std::vector<File>& files;
    ReadingUndo plan;
    AnswerRecords scores;
    AnswerRecords words;
    RegisterRows registered;
    TextLookup laterMarks;
    std::map<Questionnaire, std::vector<int>> laterFiles; ///< readingfileid
    std::map<Key, Answer> answers;
};

void removeAnswers(bool isScore, const QStringList& ids) {
    constexpr qsizetype mostTogether = 5000;
    for (qsizetype first = 0; first < ids.size(); first += mostTogether)
        cnnMain->Execute((isScore ? u"delete * from feedbackobjective where feedbackobjid in ("_s
                                  : u"delete * from feedbackdescriptive where feedbackdescid in ("_s) +
                         ids.mid(first, mostTogether).join(u',') + u')');
}

void writeAnswers(const ReadingUndo& plan, bool isScore) {
    std::set<QString> respondents;
    std::set<QDate> dates;
    for (const auto& [key, state] : plan.changed) {
        if (key.isScore != isScore)
            continue;
        respondents.insert(QString::number(key.respondentid));
        dates.insert(key.surveydate);
    }
    AnswerRecords stored(isScore, respondents, dates);
    QStringList gone;
    for (const auto& [key, state] : plan.changed) {
        if (key.isScore != isScore || !stored.find(keysOf(key)))
            continue;
        ado::Recordset& answer = stored.answer();
        if (!state) {
            gone << answer[isScore ? "feedbackobjid" : "feedbackdescid"].Text();
            continue;
        }
        answer["surveyid"] = state->surveyid;
        answer["weightage"] = state->weightage;
        answer[isScore ? "score" : "Description"] = state->content;
        answer.Update();
    }
    removeAnswers(isScore, gone);
}

/// Files of readings that stay get what they would have met without the undone one.
void writeFiles(const ReadingUndo& plan) {
    QStringList ids;
    for (const auto& [id, file] : plan.later) {
        if (file.isTouched)
            ids << QString::number(id);
    }
    for (const auto& [id, status] : plan.statusBefore)
        ids << QString::number(id);
    if (ids.isEmpty())
        return;
    ado::Recordset file(u"select * from readingfile where readingfileid in ("_s + ids.join(u',') + u')',
                        *cnnMain, Lock::BatchOptimistic);
    for (; !file.Eof(); file.MoveNext()) {
        const int id = file["readingfileid"].Value().toInt();
        const auto later = plan.later.find(id);
        if (later != plan.later.end() && later->second.isTouched)
            file["answers"] = toJson(later->second.changes);
        if (const auto status = plan.statusBefore.find(id); status != plan.statusBefore.end())
            file["statusbefore"] = status->second;
        file.Update();
    }
}

void carryOut(const ReadingUndo& plan, const QDateTime& now) {
    for (const bool isScore : {true, false})
        writeAnswers(plan, isScore);
    writeFiles(plan);
    RegisterRows registered(plan.toBeReadAgain);
    for (const QString& fileName : plan.toBeReadAgain)
        registered.mark(fileName, false);
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
    const std::vector<File> files = filesOf(readingid);
    return Planner(readingid, files).result();
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
